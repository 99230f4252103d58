#include "tests/support/ScratchFolder.h"

#include "tests/support/Patience.h"

#include <QDir>
#include <QProcess>
#include <QTest>

class LocaleSetupTest : public QObject {
    Q_OBJECT

private slots:
    void aJapaneseNameReachesTheDisk_data();
    void aJapaneseNameReachesTheDisk();
};

void LocaleSetupTest::aJapaneseNameReachesTheDisk_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QByteArray>("afterwards");
    const auto row = [](const char *name, const QStringList &variables, const char *afterwards) {
        QTest::newRow(name) << variables << QByteArray(afterwards);
    };
    row("nothing set", {}, "LC_ALL=\nLC_CTYPE=C.UTF-8\nLANG=\n");
    row("LANG is C", {QStringLiteral("LANG=C")}, "LC_ALL=\nLC_CTYPE=C.UTF-8\nLANG=C\n");
    row("LANG is POSIX", {QStringLiteral("LANG=POSIX")}, "LC_ALL=\nLC_CTYPE=C.UTF-8\nLANG=POSIX\n");
    row("LC_ALL is C", {QStringLiteral("LC_ALL=C"), QStringLiteral("LANG=C.UTF-8")},
        "LC_ALL=C.UTF-8\nLC_CTYPE=\nLANG=C.UTF-8\n");
    row("LC_CTYPE is C", {QStringLiteral("LC_CTYPE=C"), QStringLiteral("LANG=C.UTF-8")},
        "LC_ALL=\nLC_CTYPE=C.UTF-8\nLANG=C.UTF-8\n");
    row("a locale that is not there", {QStringLiteral("LANG=xx_XX.UTF-8")},
        "LC_ALL=C.UTF-8\nLC_CTYPE=\nLANG=xx_XX.UTF-8\n");
    row("UTF-8 already", {QStringLiteral("LANG=C.UTF-8")}, "LC_ALL=\nLC_CTYPE=\nLANG=C.UTF-8\n");
}

void LocaleSetupTest::aJapaneseNameReachesTheDisk()
{
    QFETCH(QStringList, variables);
    QFETCH(QByteArray, afterwards);
    const ScratchFolder folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : environment.keys()) {
        if (name.startsWith(QLatin1String("LC_")) || name.startsWith(QLatin1String("LANG")))
            environment.remove(name);
    }
    for (const QString &variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LOCALE_PROBE), {folder.path()});
    QVERIFY(process.waitForFinished(kPatienceMilliseconds));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), afterwards);
    // This process's own locale is UTF-8.
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("検索.txt")});
}

QTEST_GUILESS_MAIN(LocaleSetupTest)
#include "LocaleSetupTest.moc"
