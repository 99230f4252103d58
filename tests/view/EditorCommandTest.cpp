#include "view/EditorCommand.h"

#include "tests/support/ScratchFolder.h"

#include <QtTest>

Q_DECLARE_METATYPE(PathStyle)

class EditorCommandTest : public QObject {
    Q_OBJECT

private slots:
    void thePathIsQuotedWithBackslashes();
    void everyMacroIsReplaced();
    void macrosAreCaseSensitive();
    void everyOccurrenceIsReplaced();
    void aFileThatTheTemplateQuotesGetsNoFurtherQuotes_data();
    void aFileThatTheTemplateQuotesGetsNoFurtherQuotes();
    void otherPercentSignsStay();
    void macrosInAFileNameStay();
    void theTemplateIsTakenApartAtItsBlanks_data();
    void theTemplateIsTakenApartAtItsBlanks();
    void noFileNameBecomesTwoArguments_data();
    void noFileNameBecomesTwoArguments();
    void theCompanionEditorLiesBesideTheProgram();
    void onlyTheBareNameMeansTheCompanion();
    void theCompanionMayHaveItsWholeNameOnUnix();
    void aRelativeEditorIsMadeWhole();
    void anotherEditorKeepsItsName();
    void anEditorWithABlankIsQuotedOnTheCommandLine();
    void theEditorsFolderIsEntered();
    void nothingStartsWithoutEditorOrFile();
    void anEmptyTemplateStartsTheEditorAlone();
    void aRelativeFileNameIsMadeWhole();
    void aNameThatLooksLikeAnOptionIsMadeWhole();
    void onWindowsANameThatCouldLeaveItsQuotesStartsNothing_data();
    void onWindowsANameThatCouldLeaveItsQuotesStartsNothing();
    void onWindowsABatchFileGetsNoPercentSign();
    void onUnixANullCharacterStartsNothing();
};

namespace {

const PathStyle windowsStyle = PathStyle::Windows;
const PathStyle unixStyle = PathStyle::Unix;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

EditorCommand::Request request(const QString &editor, const QString &fileName)
{
    EditorCommand::Request request;
    request.editor = editor;
    request.parameterTemplate = text("-l%l -c%c -b%b %f");
    request.fileName = fileName;
    request.line = 12;
    request.column = 7;
    request.applicationDirectory = text("/opt/sarvik");
    request.startDirectory = text("/home/user");
    return request;
}

} // namespace

void EditorCommandTest::thePathIsQuotedWithBackslashes()
{
    for (const PathStyle style : {windowsStyle, unixStyle}) {
        QCOMPARE(EditorCommand::parameters(text("%f"), text("C:/a/b.txt"), 12, 7, style),
                 text("\"C:\\a\\b.txt\""));
    }
}

void EditorCommandTest::everyMacroIsReplaced()
{
    QCOMPARE(EditorCommand::parameters(text("-l%l -c%c -b%b %f"), text("C:/a/b.txt"), 3, 5,
                                       windowsStyle),
             text("-l3 -c5 -b5 \"C:\\a\\b.txt\""));
    const QStringList expected{text("-l3"), text("-c5"), text("-b5"), text("C:\\a\\b.txt")};
    QCOMPARE(
        EditorCommand::arguments(text("-l%l -c%c -b%b %f"), text("C:/a/b.txt"), 3, 5, unixStyle),
        expected);
}

void EditorCommandTest::macrosAreCaseSensitive()
{
    QCOMPARE(EditorCommand::parameters(text("%L %C %B %F"), text("C:/a"), 3, 5, windowsStyle),
             text("%L %C %B %F"));
}

void EditorCommandTest::everyOccurrenceIsReplaced()
{
    QCOMPARE(EditorCommand::parameters(text("%l%l %f%f"), text("C:/a"), 3, 5, windowsStyle),
             text("33 \"C:\\a\"\"C:\\a\""));
}

void EditorCommandTest::aFileThatTheTemplateQuotesGetsNoFurtherQuotes_data()
{
    QTest::addColumn<QString>("parameterTemplate");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("parameters");
    const auto row = [](const char *name, const char *parameterTemplate, const char *path,
                        const char *parameters) {
        QTest::newRow(name) << text(parameterTemplate) << text(path) << text(parameters);
    };
    const char *const file = "C:/my dir/a -x b.txt";
    row("quoted", R"(-l%l "%f")", file, R"(-l3 "C:\my dir\a -x b.txt")");
    row("in a quoted option", R"("--file=%f:%l" %f)", file,
        R"("--file=C:\my dir\a -x b.txt:3" "C:\my dir\a -x b.txt")");
    row("after quotes that are closed", R"("a b" %f)", file, R"("a b" "C:\my dir\a -x b.txt")");
    row("after an escaped quote", R"(\" %f)", file, R"(\" "C:\my dir\a -x b.txt")");
    row("after an escaped backslash", R"(\\"%f")", file, R"(\\"C:\my dir\a -x b.txt")");
    row("an escaped quote between quotes", R"("\"%f")", file, R"("\"C:\my dir\a -x b.txt")");
    row("quotes that are never closed", R"("%f)", file, R"("C:\my dir\a -x b.txt)");
    row("a folder", R"("%f")", "C:/my dir/", R"("C:\my dir\\")");
    row("a folder and a number", R"("%f%l")", "C:/my dir/", R"("C:\my dir\3")");
    row("a folder before an escaped quote", R"("%f\" -x")", "C:/", R"("C:\\\" -x")");
    row("a root twice", R"("%f%f")", "/", R"("\\\\")");
    row("a backslash before the file", R"(\%f)", file, R"(\\"C:\my dir\a -x b.txt")");
    row("a backslash before a root", R"("\%f")", "/", R"("\\\\")");
}

void EditorCommandTest::aFileThatTheTemplateQuotesGetsNoFurtherQuotes()
{
    QFETCH(QString, parameterTemplate);
    QFETCH(QString, path);
    QTEST(EditorCommand::parameters(parameterTemplate, path, 3, 5, windowsStyle), "parameters");
}

void EditorCommandTest::otherPercentSignsStay()
{
    QCOMPARE(EditorCommand::parameters(text("%% %x 5% %"), text("C:/a"), 3, 5, windowsStyle),
             text("%% %x 5% %"));
    // A percent sign before a macro is no escape.
    QCOMPARE(EditorCommand::parameters(text("%%l"), text("C:/a"), 3, 5, windowsStyle), text("%3"));
}

void EditorCommandTest::macrosInAFileNameStay()
{
    QCOMPARE(EditorCommand::parameters(text("%f %l"), text("C:/%l%f%c.txt"), 3, 5, windowsStyle),
             text("\"C:\\%l%f%c.txt\" 3"));
    const QStringList expected{text("/tmp/%l%f%c.txt"), text("3")};
    QCOMPARE(EditorCommand::arguments(text("%f %l"), text("/tmp/%l%f%c.txt"), 3, 5, unixStyle),
             expected);
}

void EditorCommandTest::theTemplateIsTakenApartAtItsBlanks_data()
{
    QTest::addColumn<QString>("parameterTemplate");
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *name, const char *parameterTemplate,
                        const QStringList &arguments) {
        QTest::newRow(name) << text(parameterTemplate) << arguments;
    };
    row("empty", "", {});
    row("file", "%f", {text("/a b.txt")});
    row("line and file", "+%l %f", {text("+3"), text("/a b.txt")});
    row("several blanks", "  +%l   %f ", {text("+3"), text("/a b.txt")});
    row("file quoted in the template", "+%l \"%f\"", {text("+3"), text("/a b.txt")});
    row("joined to an option", "--file=%f:%l", {text("--file=/a b.txt:3")});
    row("quoted blank", "\"go to %l\" %f", {text("go to 3"), text("/a b.txt")});
}

void EditorCommandTest::theTemplateIsTakenApartAtItsBlanks()
{
    QFETCH(QString, parameterTemplate);
    QTEST(EditorCommand::arguments(parameterTemplate, text("/a b.txt"), 3, 5, unixStyle),
          "arguments");
}

void EditorCommandTest::noFileNameBecomesTwoArguments_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("blanks") << text("/tmp/a b  c.txt");
    QTest::newRow("quotes") << text("/tmp/a\" -x \"b.txt");
    QTest::newRow("three quotes") << text("/tmp/\"\"\" x");
    QTest::newRow("apostrophes") << text("/tmp/a' ; touch x '.txt");
    QTest::newRow("semicolon") << text("/tmp/a;touch x;.txt");
    QTest::newRow("dollar") << text("/tmp/$(touch x)$HOME`touch y`.txt");
    QTest::newRow("macros") << text("/tmp/%f%l %b %c.txt");
    QTest::newRow("line feeds") << text("/tmp/a\n-x\r\nb.txt");
    QTest::newRow("backslash at the end") << text("/tmp/a\\");
    QTest::newRow("redirection") << text("/tmp/a > b | c & d < e *?[a] ~");
    QTest::newRow("bytes that are no text") << text("/tmp/") + QChar(0xDC82) + QChar(0xDCFF);
    QTest::newRow("Japanese") << QStringLiteral("/tmp/表示　能力.txt");
}

void EditorCommandTest::noFileNameBecomesTwoArguments()
{
    QFETCH(QString, fileName);
    const auto command = EditorCommand::build(request(text("/usr/bin/ed"), fileName), unixStyle);
    QVERIFY(command.has_value());
    QCOMPARE(command->program, text("/usr/bin/ed"));
    const QStringList expected{text("-l12"), text("-c7"), text("-b7"), fileName};
    QCOMPARE(command->arguments, expected);
}

void EditorCommandTest::theCompanionEditorLiesBesideTheProgram()
{
    const EditorCommand::Request companion = request(text("sarvedit.exe"), text("C:/a"));
    QCOMPARE(EditorCommand::build(companion, windowsStyle)->program,
             text("/opt/sarvik/sarvedit.exe"));
    QCOMPARE(EditorCommand::build(companion, unixStyle)->program, text("/opt/sarvik/sarvedit"));
}

void EditorCommandTest::onlyTheBareNameMeansTheCompanion()
{
    for (const char *editor : {"Sarvedit.exe", "sarvedit", " sarvedit.exe"}) {
        const auto command = EditorCommand::build(request(text(editor), text("C:/a")), unixStyle);
        QCOMPARE(command->program, text(editor));
    }
}

void EditorCommandTest::theCompanionMayHaveItsWholeNameOnUnix()
{
    const ScratchFolder folder;
    folder.write(text("sarvedit.exe"), "#!/bin/sh\n");
    EditorCommand::Request companion = request(text("sarvedit.exe"), text("/a"));
    companion.applicationDirectory = folder.path().chopped(1);
    QCOMPARE(EditorCommand::build(companion, unixStyle)->program,
             folder.path() + text("sarvedit.exe"));
}

/// The folder of an editor becomes the current one before it is started.
void EditorCommandTest::aRelativeEditorIsMadeWhole()
{
    const auto build = [](const char *editor, const char *start, PathStyle style) {
        EditorCommand::Request relative = request(text(editor), text("C:/a"));
        relative.startDirectory = text(start);
        return *EditorCommand::build(relative, style);
    };
    QCOMPARE(build("tools/ed.sh", "/home/me", unixStyle).program, text("/home/me/tools/ed.sh"));
    QCOMPARE(build("tools/ed.sh", "/home/me", unixStyle).directory, text("/home/me/tools"));
    QCOMPARE(build("./ed.sh", "/", unixStyle).program, text("/./ed.sh"));
    QCOMPARE(build("tools\\ed.exe", "C:/me", windowsStyle).program, text("C:/me/tools\\ed.exe"));
    QCOMPARE(build("ed", "/home/me", unixStyle).program, text("ed"));
}

void EditorCommandTest::anotherEditorKeepsItsName()
{
    const auto command =
        EditorCommand::build(request(text("/opt/wine/ed.exe"), text("/a")), unixStyle);
    QCOMPARE(command->program, text("/opt/wine/ed.exe"));
}

void EditorCommandTest::anEditorWithABlankIsQuotedOnTheCommandLine()
{
    const auto command = EditorCommand::build(
        request(text("C:/Program Files/ed.exe"), text("C:/a/b.txt")), windowsStyle);
    QCOMPARE(command->program, text("C:/Program Files/ed.exe"));
    const QString line = text("\"C:/Program Files/ed.exe\" -l12 -c7 -b7 \"C:\\a\\b.txt\"");
    QCOMPARE(LaunchRules::commandLine(*command), line);

    // Somebody may have quoted it in the settings.
    const auto quoted = EditorCommand::build(
        request(text("\"C:/Program Files/ed.exe\""), text("C:/a/b.txt")), windowsStyle);
    QCOMPARE(LaunchRules::commandLine(*quoted), line);
}

void EditorCommandTest::theEditorsFolderIsEntered()
{
    const auto directory = [](const char *editor, PathStyle style) {
        return EditorCommand::build(request(text(editor), text("C:/a")), style)->directory;
    };
    QCOMPARE(directory("C:/Program Files/ed.exe", windowsStyle), text("C:/Program Files"));
    QCOMPARE(directory("/usr/bin/ed", unixStyle), text("/usr/bin"));
    QCOMPARE(directory("ed", unixStyle), QString());
    QCOMPARE(directory("sarvedit.exe", unixStyle), text("/opt/sarvik"));
}

void EditorCommandTest::nothingStartsWithoutEditorOrFile()
{
    QVERIFY(!EditorCommand::build(request(QString(), text("/a")), unixStyle));
    QVERIFY(!EditorCommand::build(request(text("ed"), QString()), unixStyle));
}

void EditorCommandTest::anEmptyTemplateStartsTheEditorAlone()
{
    EditorCommand::Request bare = request(text("ed.exe"), text("C:/a"));
    bare.parameterTemplate.clear();
    const auto command = EditorCommand::build(bare, windowsStyle);
    QVERIFY(command->arguments.isEmpty());
    QCOMPARE(LaunchRules::commandLine(*command), text("ed.exe "));
}

void EditorCommandTest::aRelativeFileNameIsMadeWhole()
{
    const auto command = EditorCommand::build(request(text("ed"), text("src/a.c")), unixStyle);
    QCOMPARE(command->arguments.last(), text("/home/user/src/a.c"));

    EditorCommand::Request atRoot = request(text("ed"), text("a.c"));
    atRoot.startDirectory = text("C:/");
    QCOMPARE(EditorCommand::build(atRoot, windowsStyle)->arguments.last(), text("C:\\a.c"));
}

void EditorCommandTest::aNameThatLooksLikeAnOptionIsMadeWhole()
{
    const auto command = EditorCommand::build(request(text("ed"), text("-c!touch x")), unixStyle);
    QCOMPARE(command->arguments.last(), text("/home/user/-c!touch x"));
}

void EditorCommandTest::onWindowsANameThatCouldLeaveItsQuotesStartsNothing_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("quote") << text("C:/a\" /x \"b.txt");
    QTest::newRow("line feed") << text("C:/a\nb.txt");
    QTest::newRow("carriage return") << text("C:/a\rb.txt");
    QTest::newRow("null") << text("C:/a") + QChar(QChar::Null) + text("b.txt");
}

void EditorCommandTest::onWindowsANameThatCouldLeaveItsQuotesStartsNothing()
{
    QFETCH(QString, fileName);
    QVERIFY(!EditorCommand::build(request(text("ed.exe"), fileName), windowsStyle));
}

void EditorCommandTest::onWindowsABatchFileGetsNoPercentSign()
{
    const QString fileName = text("C:/a%CMDCMDLINE:~-1%&calc.txt");
    for (const char *editor : {"C:/ed.bat", "C:/ed.CMD", "\"C:/e d.cmd\""})
        QVERIFY(!EditorCommand::build(request(text(editor), fileName), windowsStyle));
    QVERIFY(EditorCommand::build(request(text("C:/ed.exe"), fileName), windowsStyle));
    QVERIFY(EditorCommand::build(request(text("C:/ed.bat"), text("C:/a&b.txt")), windowsStyle));
}

void EditorCommandTest::onUnixANullCharacterStartsNothing()
{
    const QString fileName = text("/etc/passwd") + QChar(QChar::Null) + text(".txt");
    QVERIFY(!EditorCommand::build(request(text("ed"), fileName), unixStyle));
}

QTEST_GUILESS_MAIN(EditorCommandTest)

#include "EditorCommandTest.moc"
