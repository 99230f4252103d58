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
    void theTimeZoneIsNamed_data();
    void theTimeZoneIsNamed();
};

namespace {

/// What the probe tells of its environment, which has these variables for the locale
/// and the time zone and no others.
QByteArray environmentAfterStart(const QStringList &variables, const QString &folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : environment.keys()) {
        if (name.startsWith(QLatin1String("LC_")) || name.startsWith(QLatin1String("LANG")))
            environment.remove(name);
    }
    environment.remove(QStringLiteral("TZ"));
    for (const QString &variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LOCALE_PROBE), {folder});
    if (!process.waitForFinished(kPatienceMilliseconds) || process.exitCode() != 0)
        return QByteArrayLiteral("no probe");
    return process.readAllStandardOutput();
}

} // namespace

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
    const QByteArray told = environmentAfterStart(variables, folder.path());
    QCOMPARE(told.left(told.indexOf("TZ=")), afterwards);
    // This process's own locale is UTF-8.
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("検索.txt")});
}

void LocaleSetupTest::theTimeZoneIsNamed_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QByteArray>("afterwards");
    const QString zones = QStringLiteral("/zoneinfo/");
    const QString file = QFile::symLinkTarget(QStringLiteral("/etc/localtime"));
    if (file.contains(zones))
        QTest::newRow("nothing set")
            << QStringList() << "TZ=" + QFile::encodeName(file.section(zones, 1)) + '\n';
    QTest::newRow("set") << QStringList{QStringLiteral("TZ=Asia/Tokyo")}
                         << QByteArray("TZ=Asia/Tokyo\n");
    QTest::newRow("set to nothing, which is UTC")
        << QStringList{QStringLiteral("TZ=")} << QByteArray("TZ=\n");
}

void LocaleSetupTest::theTimeZoneIsNamed()
{
    QFETCH(QStringList, variables);
    const ScratchFolder folder;
    const QByteArray told = environmentAfterStart(variables, folder.path());
    QTEST(told.mid(told.indexOf("TZ=")), "afterwards");
}

QTEST_GUILESS_MAIN(LocaleSetupTest)
#include "LocaleSetupTest.moc"
