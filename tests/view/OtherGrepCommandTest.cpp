#include "view/OtherGrepCommand.h"

#include <QtTest>

class OtherGrepCommandTest : public QObject {
    Q_OBJECT

private slots:
    void theProgramLiesInItsOwnDirectory();
    void theProgramWithABlankIsQuotedInBackslashes();
    void theParametersArePathAndEscapedText();
    void aQuoteInTheTextStaysInItsArgument();
    void onUnixBothAreArgumentsAsTheyStand();
};

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

LaunchCommand build(const char *appDir, const char *path, const char *selection, PathStyle style)
{
    return OtherGrepCommand::build(text(appDir), text(path), text(selection), style);
}

} // namespace

void OtherGrepCommandTest::theProgramLiesInItsOwnDirectory()
{
    const LaunchCommand onUnix = build("/opt/sarvik", "/src/", "a", PathStyle::Unix);
    QCOMPARE(onUnix.program, text("/opt/sarvik/sarvik"));
    QCOMPARE(onUnix.directory, text("/opt/sarvik"));
    const LaunchCommand onWindows = build("C:/tools", "C:/src/", "a", PathStyle::Windows);
    QCOMPARE(onWindows.program, text("C:\\tools\\sarvik.exe"));
    QCOMPARE(onWindows.directory, text("C:/tools"));
}

void OtherGrepCommandTest::theProgramWithABlankIsQuotedInBackslashes()
{
    const LaunchCommand command = build("C:/my tools", "C:/src/", "a", PathStyle::Windows);
    QCOMPARE(LaunchRules::quotedIfBlank(command.program), text("\"C:\\my tools\\sarvik.exe\""));
}

void OtherGrepCommandTest::theParametersArePathAndEscapedText()
{
    const LaunchCommand command = build("C:/t", "C:/src/", "a.b(c)", PathStyle::Windows);
    QCOMPARE(command.parameters, text("\"C:/src/\" \"a\\.b\\(c\\)\""));
}

void OtherGrepCommandTest::aQuoteInTheTextStaysInItsArgument()
{
    const LaunchCommand quote =
        build("C:/t", "C:/src/", "x\" -platformpluginpath y \"", PathStyle::Windows);
    QCOMPARE(quote.parameters, text("\"C:/src/\" \"x\\\" -platformpluginpath y \\\"\""));
    const LaunchCommand backslash = build("C:/t", "C:/src/", "x\\", PathStyle::Windows);
    QCOMPARE(backslash.parameters, text("\"C:/src/\" \"x\\\\\""));
}

void OtherGrepCommandTest::onUnixBothAreArgumentsAsTheyStand()
{
    const LaunchCommand command =
        build("/opt/sarvik", "/my src/", "a \" $(x) ; b.c", PathStyle::Unix);
    const QStringList expected{text("/my src/"), text("a \" \\$\\(x\\) ; b\\.c")};
    QCOMPARE(command.arguments, expected);
}

QTEST_GUILESS_MAIN(OtherGrepCommandTest)

#include "OtherGrepCommandTest.moc"
