#include "view/LaunchCommand.h"

#include <QtTest>

class LaunchCommandTest : public QObject {
    Q_OBJECT

private slots:
    void separatorsFollowThePlatformAndTheDrive_data();
    void separatorsFollowThePlatformAndTheDrive();
    void aPathTellsWhetherItIsWhole_data();
    void aPathTellsWhetherItIsWhole();
    void theDirectoryIsWhatStandsBeforeTheLastSeparator_data();
    void theDirectoryIsWhatStandsBeforeTheLastSeparator();
    void programsOfTheSuiteLoseTheirSuffixOnUnix();
    void aProgramWithABlankIsQuoted_data();
    void aProgramWithABlankIsQuoted();
    void aWindowsArgumentCannotBeLeft_data();
    void aWindowsArgumentCannotBeLeft();
    void theCommandLineIsProgramBlankParameters();
};

namespace {

const PathStyle windowsStyle = PathStyle::Windows;
const PathStyle unixStyle = PathStyle::Unix;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

Q_DECLARE_METATYPE(PathStyle)

void LaunchCommandTest::separatorsFollowThePlatformAndTheDrive_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<PathStyle>("style");
    QTest::addColumn<QString>("native");
    const auto row = [](const char *name, const char *path, PathStyle style, const char *native) {
        QTest::newRow(name) << text(path) << style << text(native);
    };
    row("drive on Windows", "C:/a/b.txt", windowsStyle, "C:\\a\\b.txt");
    row("drive on Unix", "C:/a/b.txt", unixStyle, "C:\\a\\b.txt");
    row("small drive letter on Unix", "d:/b", unixStyle, "d:\\b");
    row("root on Windows", "/a/b", windowsStyle, "\\a\\b");
    row("root on Unix", "/a/b", unixStyle, "/a/b");
    row("share on Windows", "//server/a", windowsStyle, "\\\\server\\a");
    row("relative on Windows", "a/b", windowsStyle, "a\\b");
    row("relative on Unix", "a/b", unixStyle, "a/b");
    row("a backslash in a Unix name stays", "/a\\b", unixStyle, "/a\\b");
    row("a digit is no drive", "1:/a", unixStyle, "1:/a");
    row("a drive needs its separator", "C:a/b", unixStyle, "C:a/b");
}

void LaunchCommandTest::separatorsFollowThePlatformAndTheDrive()
{
    QFETCH(QString, path);
    QFETCH(PathStyle, style);
    QTEST(LaunchRules::withNativeSeparators(path, style), "native");
}

void LaunchCommandTest::aPathTellsWhetherItIsWhole_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("onWindows");
    QTest::addColumn<bool>("onUnix");
    QTest::newRow("drive") << text("C:/a") << true << true;
    QTest::newRow("drive with backslash") << text("C:\\a") << true << true;
    QTest::newRow("root") << text("/a") << true << true;
    QTest::newRow("share") << text("//server/a") << true << true;
    QTest::newRow("backslash") << text("\\\\server\\a") << true << false;
    QTest::newRow("name") << text("a/b") << false << false;
    QTest::newRow("option") << text("-c") << false << false;
    QTest::newRow("empty") << QString() << false << false;
}

void LaunchCommandTest::aPathTellsWhetherItIsWhole()
{
    QFETCH(QString, path);
    QTEST(LaunchRules::isAbsolute(path, windowsStyle), "onWindows");
    QTEST(LaunchRules::isAbsolute(path, unixStyle), "onUnix");
}

void LaunchCommandTest::theDirectoryIsWhatStandsBeforeTheLastSeparator_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<PathStyle>("style");
    QTest::addColumn<QString>("directory");
    const auto row = [](const char *name, const char *path, PathStyle style, const char *dir) {
        QTest::newRow(name) << text(path) << style << text(dir);
    };
    row("none", "ed", unixStyle, "");
    row("none with suffix", "ed.exe", windowsStyle, "");
    row("folder", "/usr/bin/ed", unixStyle, "/usr/bin");
    row("root", "/ed", unixStyle, "/");
    row("blank in the folder", "C:/Program Files/ed.exe", windowsStyle, "C:/Program Files");
    row("backslashes", "C:\\tools\\ed.exe", windowsStyle, "C:\\tools");
    row("mixed", "C:/tools\\ed.exe", windowsStyle, "C:/tools");
    row("root of a drive", "C:/ed.exe", windowsStyle, "C:/");
    row("a backslash in a Unix name", "a\\ed", unixStyle, "");
}

void LaunchCommandTest::theDirectoryIsWhatStandsBeforeTheLastSeparator()
{
    QFETCH(QString, path);
    QFETCH(PathStyle, style);
    QTEST(LaunchRules::directoryPart(path, style), "directory");
}

void LaunchCommandTest::programsOfTheSuiteLoseTheirSuffixOnUnix()
{
    QCOMPARE(LaunchRules::suiteProgram(text("sarvik.exe"), windowsStyle), text("sarvik.exe"));
    QCOMPARE(LaunchRules::suiteProgram(text("sarvik.exe"), unixStyle), text("sarvik"));
    QCOMPARE(LaunchRules::suiteProgram(text("sarvik"), unixStyle), text("sarvik"));
}

void LaunchCommandTest::aProgramWithABlankIsQuoted_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("quoted");
    QTest::newRow("blank") << text("C:/Program Files/ed.exe")
                           << text("\"C:/Program Files/ed.exe\"");
    QTest::newRow("no blank") << text("C:/tools/ed.exe") << text("C:/tools/ed.exe");
    QTest::newRow("quoted already") << text("\"C:/a b/ed.exe\"") << text("\"C:/a b/ed.exe\"");
    QTest::newRow("one quote only") << text("\"a b") << text("\"\"a b\"");
}

void LaunchCommandTest::aProgramWithABlankIsQuoted()
{
    QFETCH(QString, program);
    QTEST(LaunchRules::quotedIfBlank(program), "quoted");
}

void LaunchCommandTest::aWindowsArgumentCannotBeLeft_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("argument");
    const auto row = [](const char *name, const char *value, const char *argument) {
        QTest::newRow(name) << text(value) << text(argument);
    };
    row("plain", "C:\\a\\b.txt", "\"C:\\a\\b.txt\"");
    row("empty", "", "\"\"");
    row("blanks", "a  b", "\"a  b\"");
    row("quote", "a\"b", "\"a\\\"b\"");
    row("backslash and quote", "a\\\"b", "\"a\\\\\\\"b\"");
    row("backslash at the end", "a\\", "\"a\\\\\"");
    row("two backslashes at the end", "a\\\\", "\"a\\\\\\\\\"");
    row("backslashes inside", "a\\\\b", "\"a\\\\b\"");
}

void LaunchCommandTest::aWindowsArgumentCannotBeLeft()
{
    QFETCH(QString, value);
    QTEST(LaunchRules::windowsArgument(value), "argument");
}

void LaunchCommandTest::theCommandLineIsProgramBlankParameters()
{
    LaunchCommand command;
    command.program = text("C:/Program Files/ed.exe");
    command.parameters = text("-l3 \"C:\\a.txt\"");
    QCOMPARE(LaunchRules::commandLine(command),
             text("\"C:/Program Files/ed.exe\" -l3 \"C:\\a.txt\""));
    command.program = text("ed.exe");
    command.parameters.clear();
    QCOMPARE(LaunchRules::commandLine(command), text("ed.exe "));
}

QTEST_GUILESS_MAIN(LaunchCommandTest)

#include "LaunchCommandTest.moc"
