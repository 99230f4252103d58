#include "cli/ManPage.h"

#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include "cli/HelpText.h"
#include "cli/ManTopics.h"
#include "cli/OptionParser.h"
#include "cli/OptionTable.h"
#include "engine/EngineOptions.h"
#include "settings/AppSettings.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

namespace {

QString page()
{
    return ManPage::text(QStringLiteral("5.00"));
}

/// What a reader sees of roff text, as one run of words.
QString shown(QString roff)
{
    roff.remove(QRegularExpression(QStringLiteral("^\\.br$"), QRegularExpression::MultilineOption));
    roff.remove(QRegularExpression(QStringLiteral("\\\\f[BIR]|\\\\&")));
    roff.replace(QLatin1String("\\-"), QLatin1String("-"));
    roff.replace(QLatin1String("\\(aq"), QLatin1String("'"));
    roff.replace(QLatin1String("\\(ha"), QLatin1String("^"));
    roff.replace(QLatin1String("\\e"), QLatin1String("\\"));
    return roff.simplified();
}

} // namespace

class ManPageTest : public QObject {
    Q_OBJECT

private slots:
    void everyOptionStandsWithItsValueAndItsHelp();
    void theTextsOfTheHelpStandInIt();
    void theTopicsStandInIt();
    void everyExampleIsACommandThatIsTaken_data();
    void everyExampleIsACommandThatIsTaken();
    void everySettingThatItNamesIsRead();
    void charactersThatRoffTakesForItselfAreEscaped_data();
    void charactersThatRoffTakesForItselfAreEscaped();
    void theFormatterHasNothingToWarnOf();
};

void ManPageTest::everyOptionStandsWithItsValueAndItsHelp()
{
    const QString text = shown(page());
    for (const OptionTable::Option &option : OptionTable::all()) {
        QString entry = QStringLiteral(".TP ") + option.forms().join(QStringLiteral(", "));
        if (option.takesValue())
            entry += QLatin1Char(' ') + QLatin1String(option.valueName);
        entry += QLatin1Char(' ') + option.wholeHelp().simplified();
        QVERIFY2(text.contains(entry), qPrintable(entry));
    }
}

void ManPageTest::theTextsOfTheHelpStandInIt()
{
    const QString text = shown(page());
    for (const QString &part :
         {HelpText::synopsis().join(QLatin1Char(' ')), HelpText::description(),
          HelpText::passedOver(), HelpText::exitStatus()})
        QVERIFY2(text.contains(part.simplified()), qPrintable(part));
    QVERIFY(text.startsWith(QStringLiteral(".TH SARVIK-CLI 1 \"\" \"sarvik 5.00\"")));
}

void ManPageTest::theTopicsStandInIt()
{
    const QString text = shown(page());
    for (const char *title : {".SH KEYWORDS", ".SH MASKS", ".SH EXAMPLES", ".SH FILES"})
        QVERIFY2(text.contains(QLatin1String(title)), title);
    for (const QString &topic : {ManTopics::keywords(), ManTopics::masks()})
        QVERIFY2(text.contains(topic.simplified()), qPrintable(topic));
    for (const ManTopics::Entry &entry : ManTopics::examples() + ManTopics::files()) {
        const QString shownEntry = QString(entry.term + QLatin1Char(' ') + entry.text).simplified();
        QVERIFY2(text.contains(shownEntry), qPrintable(shownEntry));
    }
}

void ManPageTest::everyExampleIsACommandThatIsTaken_data()
{
    QTest::addColumn<QString>("command");
    for (const ManTopics::Entry &example : ManTopics::examples())
        QTest::newRow(qPrintable(example.term)) << example.term;
}

void ManPageTest::everyExampleIsACommandThatIsTaken()
{
    QFETCH(QString, command);
    const QString bash = QStandardPaths::findExecutable(QStringLiteral("bash"));
    if (bash.isEmpty())
        QSKIP("bash is not installed");
    QProcess shell;
    // The shell's own reading of the quotes, an argument a line.
    shell.start(
        bash,
        {QStringLiteral("-c"),
         QStringLiteral("less() { cat; }; sarvik-cli() { printf '%s\\n' \"$@\"; }; ") + command});
    QVERIFY(shell.waitForFinished(kPatienceMilliseconds));
    const QStringList arguments = QString::fromUtf8(shell.readAllStandardOutput())
                                      .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY(!arguments.isEmpty());
    QCOMPARE(OptionParser::parse(arguments).error, QString());
}

/// Each is changed in a settings file, and the limits of a search follow.
void ManPageTest::everySettingThatItNamesIsRead()
{
    const QString text = ManTopics::files().constFirst().text;
    for (const char *key :
         {"bigsize", "codechksize", "tabcolm", "excusiondir", "excusionfile", "detectsize"})
        QVERIFY2(text.contains(QLatin1String(key)), key);
    const ScratchFolder folder;
    folder.write(QStringLiteral("sarvik.ini"),
                 "[General]\nbigsize=7\ncodechksize=8\ntabcolm=9\nexcusiondir=a, b\n"
                 "excusionfile=c\n[newfile]\ndetectsize=10\n");
    AppSettings::instance().load(folder.path());
    const SearchLimits limits = SearchLimits::fromSettings(AppSettings::instance());
    QCOMPARE(limits.bigsize, 7);
    QCOMPARE(limits.codechksize, 8);
    QCOMPARE(limits.tabcolm, 9);
    QCOMPARE(limits.detectsize, 10);
    QCOMPARE(limits.excludedFolders, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(limits.excludedFiles, QStringList{QStringLiteral("c")});
}

void ManPageTest::charactersThatRoffTakesForItselfAreEscaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("roff");
    QTest::newRow("hyphen") << QStringLiteral("a-b") << QStringLiteral("a\\-b");
    QTest::newRow("backslash") << QStringLiteral("a\\b") << QStringLiteral("a\\eb");
    QTest::newRow("dot at the start") << QStringLiteral(".a") << QStringLiteral("\\&.a");
    QTest::newRow("quote at the start of a line")
        << QStringLiteral("a\n'b") << QStringLiteral("a\n\\(aqb");
    QTest::newRow("circumflex") << QStringLiteral("^a") << QStringLiteral("\\(haa");
    QTest::newRow("dot in the text") << QStringLiteral("a.b") << QStringLiteral("a.b");
}

void ManPageTest::charactersThatRoffTakesForItselfAreEscaped()
{
    QFETCH(QString, text);
    QTEST(ManPage::escaped(text), "roff");
}

void ManPageTest::theFormatterHasNothingToWarnOf()
{
    const QString groff = QStandardPaths::findExecutable(QStringLiteral("groff"));
    if (groff.isEmpty())
        QSKIP("groff is not installed");
    const ScratchFolder folder;
    const QString file = folder.write(QStringLiteral("sarvik-cli.1"), page().toUtf8());
    QProcess process;
    process.start(groff,
                  {QStringLiteral("-man"), QStringLiteral("-Tutf8"), QStringLiteral("-ww"), file});
    QVERIFY(process.waitForFinished(kPatienceMilliseconds));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
    QVERIFY(process.readAllStandardOutput().contains("KEYWORD2"));
}

QTEST_GUILESS_MAIN(ManPageTest)
#include "ManPageTest.moc"
