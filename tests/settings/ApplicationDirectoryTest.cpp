#include "settings/ApplicationDirectory.h"

#include "tests/support/ScratchFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>

class ApplicationDirectoryTest : public QObject {
    Q_OBJECT

private slots:
    void itHoldsTheExecutableAndEndsInASlash();
    void oneSlashIsEnough();
    void whetherFilesCanBeMadeIsTriedAndLeavesNone();
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

void ApplicationDirectoryTest::whetherFilesCanBeMadeIsTriedAndLeavesNone()
{
    const ScratchFolder folder;
    QVERIFY(ApplicationDirectory::canBeWritten(folder.path()));
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    QVERIFY(!ApplicationDirectory::canBeWritten(folder.path() + QStringLiteral("missing")));
#ifdef Q_OS_LINUX
    // There not even root makes one.
    QVERIFY(!ApplicationDirectory::canBeWritten(QStringLiteral("/proc")));
#endif
}

QTEST_GUILESS_MAIN(ApplicationDirectoryTest)
#include "ApplicationDirectoryTest.moc"
