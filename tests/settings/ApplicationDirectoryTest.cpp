#include "settings/ApplicationDirectory.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

class ApplicationDirectoryTest : public QObject {
    Q_OBJECT

private slots:
    void itHoldsTheExecutableAndEndsInASlash();
    void oneSlashIsEnough();
};

void ApplicationDirectoryTest::itHoldsTheExecutableAndEndsInASlash()
{
    const QString path = ApplicationDirectory::path();
    QVERIFY(path.endsWith(QLatin1Char('/')));
    QVERIFY(!path.endsWith(QLatin1String("//")));
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    QVERIFY(QFileInfo::exists(path + program));
}

void ApplicationDirectoryTest::oneSlashIsEnough()
{
    QCOMPARE(ApplicationDirectory::withSlash(QStringLiteral("/opt/x")), QStringLiteral("/opt/x/"));
    QCOMPARE(ApplicationDirectory::withSlash(QStringLiteral("C:/")), QStringLiteral("C:/"));
    QCOMPARE(ApplicationDirectory::withSlash(QStringLiteral("/")), QStringLiteral("/"));
}

QTEST_GUILESS_MAIN(ApplicationDirectoryTest)
#include "ApplicationDirectoryTest.moc"
