#include "cli/ManPage.h"

#include "tests/support/ScratchFolder.h"

#include "cli/HelpText.h"
#include "cli/OptionTable.h"

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
    roff.replace(QLatin1String("\\e"), QLatin1String("\\"));
    return roff.simplified();
}

} // namespace

class ManPageTest : public QObject {
    Q_OBJECT

private slots:
    void everyOptionStandsWithItsValueAndItsHelp();
    void theTextsOfTheHelpStandInIt();
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

void ManPageTest::charactersThatRoffTakesForItselfAreEscaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("roff");
    QTest::newRow("hyphen") << QStringLiteral("a-b") << QStringLiteral("a\\-b");
    QTest::newRow("backslash") << QStringLiteral("a\\b") << QStringLiteral("a\\eb");
    QTest::newRow("dot at the start") << QStringLiteral(".a") << QStringLiteral("\\&.a");
    QTest::newRow("quote at the start of a line")
        << QStringLiteral("a\n'b") << QStringLiteral("a\n\\&'b");
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
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
    QVERIFY(process.readAllStandardOutput().contains("KEYWORD2"));
}

QTEST_GUILESS_MAIN(ManPageTest)
#include "ManPageTest.moc"
