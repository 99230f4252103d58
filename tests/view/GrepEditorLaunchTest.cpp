#include "view/GrepEditor.h"

#include "engine/HitString.h"
#include "engine/LineCountReport.h"
#include "engine/NativePath.h"
#include "settings/AppSettings.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/RecordingLauncher.h"
#include "tests/support/RecordingProgram.h"

#include <QTextBlock>
#include <QtTest>

/// The start of the external editor and of a second instance from the view.
class GrepEditorLaunchTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aHitOpensAtItsLineAndColumn();
    void everyKeyAndClickThatOpensDoes_data();
    void everyKeyAndClickThatOpensDoes();
    void returnInTheResultViewGoesNoFurther();
    void returnHeldDownStartsNoEditor();
    void returnInThePreviewIsTyped();
    void theFileLineOpensAtLineOneColumnOne();
    void anotherLineOpensNothing_data();
    void anotherLineOpensNothing();
    void aHitWithoutNumbersOpensAtZero_data();
    void aHitWithoutNumbersOpensAtZero();
    void aLineOfALineCountOpensNothing();
    void aLineThatBeginsWithALetterHeadsAHit();
    void theLocationIsThatOfTheOpenedHit();
    void thePreviewOpensAtTheCursor();
    void thePreviewCountsDisplayColumns();
    void aDoubleClickInThePreviewOpensAtTheClick();
    void withoutAnEditorNothingStarts();
    void withoutAFileNothingStarts();
    void theWindowsCommandLineIsWhole();
    void anEditorThatDoesNotStartIsLogged();
    void aRelativeNameStartsWhereTheProgramStarted();

    void aSelectionStartsASecondInstance_data();
    void aSelectionStartsASecondInstance();
    void withoutASelectionNoSecondInstanceStarts();
    void theFirstSearchPathIsHandedOver();
    void aSecondInstanceThatDoesNotStartIsLogged();

    void theEditorGetsThisOneFileWhateverItsName_data();
    void theEditorGetsThisOneFileWhateverItsName();
};

namespace {

/// Keeps the keys that a view in it passes on.
class KeyKeeper : public QWidget {
public:
    QVector<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        keys.append(event->key());
        event->accept();
    }
};

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

void place(GrepEditor &view, int line, int column)
{
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(view.document()->findBlockByNumber(line).position() + column);
    view.setTextCursor(cursor);
}

const QStringList &result()
{
    static const QStringList lines{
        text("::C:/a/b.txt"),
        HitString::format(12, 7, text("foo: bar")),
        HitString::format(345, 1, text("foo")),
        text("::/x/y"),
        HitString::format(1, 2, text("foo")),
    };
    return lines;
}

} // namespace

void GrepEditorLaunchTest::init()
{
    AppSettings &settings = AppSettings::instance();
    settings.editor = text("ed");
    settings.editor_para = text("%l %c %b %f");
    settings.tabcolm = 4;
}

void GrepEditorLaunchTest::aHitOpensAtItsLineAndColumn()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("::C:/a/b.txt"), text("  12:7:text")});
    place(view, 1, 3);
    view.openInEditor();
    QCOMPARE(launcher.started.size(), 1);
    const LaunchCommand &command = launcher.started.first();
    QCOMPARE(command.program, text("ed"));
    QCOMPARE(command.parameters, text("12 7 7 \"C:\\a\\b.txt\""));
    QCOMPARE(command.arguments,
             QStringList({text("12"), text("7"), text("7"), text("C:\\a\\b.txt")}));
}

void GrepEditorLaunchTest::everyKeyAndClickThatOpensDoes_data()
{
    QTest::addColumn<bool>("isResultView");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("opens");
    const auto row = [](const char *name, bool isResultView, Qt::Key key,
                        Qt::KeyboardModifiers modifiers, bool opens) {
        QTest::newRow(name) << isResultView << int(key) << int(modifiers) << opens;
    };
    row("Return in the result view", true, Qt::Key_Return, Qt::NoModifier, true);
    row("Enter in the result view", true, Qt::Key_Enter, Qt::KeypadModifier, true);
    row("Shift+Return in the result view", true, Qt::Key_Return, Qt::ShiftModifier, true);
    row("Return in the preview", false, Qt::Key_Return, Qt::NoModifier, false);
    row("Enter in the preview", false, Qt::Key_Enter, Qt::KeypadModifier, false);
    row("Shift+Return in the preview", false, Qt::Key_Return, Qt::ShiftModifier, true);
    row("Shift+Enter in the preview", false, Qt::Key_Enter, Qt::ShiftModifier, true);
    row("another key", true, Qt::Key_X, Qt::NoModifier, false);
    row("double-click in the result view", true, Qt::Key_unknown, Qt::NoModifier, true);
    row("double-click in the preview", false, Qt::Key_unknown, Qt::NoModifier, true);
}

void GrepEditorLaunchTest::everyKeyAndClickThatOpensDoes()
{
    QFETCH(bool, isResultView);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, opens);
    RecordingLauncher launcher;
    GrepEditor view(isResultView);
    view.setLauncher(&launcher);
    view.appendLines(result());
    view.setLocation(text("C:/a/b.txt"), 1, 1);
    if (key == Qt::Key_unknown)
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    else
        QTest::keyClick(&view, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(launcher.started.size(), opens ? 1 : 0);
}

void GrepEditorLaunchTest::returnInTheResultViewGoesNoFurther()
{
    RecordingLauncher launcher;
    KeyKeeper parent;
    GrepEditor view(true, &parent);
    view.setLauncher(&launcher);
    view.appendLines(result());
    const QString before = view.toPlainText();
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(view.toPlainText(), before);
    QCOMPARE(parent.keys, QVector<int>());
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(parent.keys, QVector<int>{Qt::Key_F5});

    GrepEditor preview(false, &parent);
    preview.setLauncher(&launcher);
    QTest::keyClick(&preview, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(preview.toPlainText(), QString());
    QVERIFY(!parent.keys.contains(Qt::Key_Return));
}

void GrepEditorLaunchTest::returnHeldDownStartsNoEditor()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines(result());
    place(view, 1, 0);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&view, &repeat);
    QVERIFY(launcher.started.isEmpty());
    QVERIFY(repeat.isAccepted());
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(launcher.started.size(), 1);
}

void GrepEditorLaunchTest::returnInThePreviewIsTyped()
{
    GrepEditor view(false);
    view.setPlainText(text("ab"));
    place(view, 0, 1);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(view.toPlainText(), text("a\nb"));
}

void GrepEditorLaunchTest::theFileLineOpensAtLineOneColumnOne()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines(result());
    place(view, 3, 0);
    view.openInEditor();
    QCOMPARE(launcher.started.first().parameters, text("1 1 1 \"/x/y\""));
}

void GrepEditorLaunchTest::anotherLineOpensNothing_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("empty") << QString();
    QTest::newRow("summary") << QStringLiteral("該当行数 12");
    QTest::newRow("hyphens") << text("------");
    QTest::newRow("tab") << text("\t12:7:x");
    QTest::newRow("file line without a path") << text("::");
}

void GrepEditorLaunchTest::anotherLineOpensNothing()
{
    QFETCH(QString, line);
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("::/a"), text("  1:1:x"), line});
    view.setLocation(text("/a"), 1, 1);
    place(view, 2, 0);
    view.openInEditor();
    QVERIFY(launcher.started.isEmpty());
}

void GrepEditorLaunchTest::aHitWithoutNumbersOpensAtZero_data()
{
    QTest::addColumn<QString>("hit");
    QTest::addColumn<QString>("place");
    QTest::newRow("no number of a line") << text("  x:7:text") << text("0 7");
    QTest::newRow("no number of a column") << text("  12:y:text") << text("12 0");
    QTest::newRow("no colon") << text("  12") << text("12 0");
    QTest::newRow("nothing but blanks") << text("  ") << text("0 0");
    QTest::newRow("a number that is too large") << text("  99999999999:7:text") << text("0 7");
}

void GrepEditorLaunchTest::aHitWithoutNumbersOpensAtZero()
{
    QFETCH(QString, hit);
    QFETCH(QString, place);
    AppSettings::instance().editor_para = text("%l %c");
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("::/a/b.txt"), hit});
    ::place(view, 1, 0);
    QTest::keyClick(&view, Qt::Key_Return);
    QCOMPARE(launcher.started.size(), 1);
    QCOMPARE(launcher.started.first().parameters, place);
    QCOMPARE(view.fileName(), text("/a/b.txt"));
}

void GrepEditorLaunchTest::aLineOfALineCountOpensNothing()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.setListsHits(false);
    LineCountReport report;
    view.appendLines(report.addFile(text("/a/12:7:b.txt"), 4));
    view.appendLines(report.addFile(text("C:/a/b.txt"), 12));
    view.appendLines(report.finish(false));
    for (int line = 0; line < view.document()->blockCount(); ++line) {
        place(view, line, 0);
        view.openInEditor();
    }
    QVERIFY(launcher.started.isEmpty());
    QCOMPARE(view.fileName(), QString());
}

void GrepEditorLaunchTest::aLineThatBeginsWithALetterHeadsAHit()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("ab/x/y"), text("  12:7:text")});
    place(view, 1, 0);
    view.openInEditor();
    QCOMPARE(launcher.started.size(), 1);
    QCOMPARE(view.fileName(), text("/x/y"));
}

void GrepEditorLaunchTest::theLocationIsThatOfTheOpenedHit()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines(result());
    // What an earlier search left behind must not be opened.
    view.setLocation(text("/old"), 99, 98);
    QCOMPARE(view.fileName(), text("/old"));
    QCOMPARE(view.line(), 99);
    QCOMPARE(view.column(), 98);
    place(view, 2, 0);
    view.openInEditor();
    QCOMPARE(launcher.started.first().parameters, text("345 1 1 \"C:\\a\\b.txt\""));
    QCOMPARE(view.fileName(), text("C:/a/b.txt"));
    QCOMPARE(view.line(), 345);
    QCOMPARE(view.column(), 1);
}

void GrepEditorLaunchTest::thePreviewOpensAtTheCursor()
{
    RecordingLauncher launcher;
    GrepEditor view(false);
    view.setLauncher(&launcher);
    view.setPlainText(text("one\ntwo\nthree"));
    view.setLocation(text("/x/y"), 77, 78);
    place(view, 2, 3);
    view.openInEditor();
    QCOMPARE(launcher.started.first().parameters, text("3 3 3 \"/x/y\""));
    place(view, 0, 0);
    view.openInEditor();
    QCOMPARE(launcher.started.last().parameters, text("1 0 0 \"/x/y\""));
}

void GrepEditorLaunchTest::thePreviewCountsDisplayColumns()
{
    RecordingLauncher launcher;
    GrepEditor view(false);
    view.setLauncher(&launcher);
    view.setPlainText(QStringLiteral("abc\tあｱ｡x"));
    view.setLocation(text("/x"), 1, 1);
    place(view, 0, 7);
    view.openInEditor();
    // Tab to 4, then 2 + 1 + 2.
    QCOMPARE(launcher.started.first().arguments.at(1), text("9"));
}

void GrepEditorLaunchTest::aDoubleClickInThePreviewOpensAtTheClick()
{
    RecordingLauncher launcher;
    GrepEditor view(false);
    view.setLauncher(&launcher);
    view.resize(400, 200);
    view.show();
    view.setPlainText(text("first\nsecond_word third"));
    view.setLocation(text("/x"), 1, 1);
    place(view, 1, 3);
    const QPoint click = view.cursorRect().center();
    place(view, 0, 0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, click);
    QCOMPARE(launcher.started.first().parameters, text("2 3 3 \"/x\""));
    QCOMPARE(view.textCursor().selectedText(), text("second_word"));
    // The right button opens no file.
    QTest::mouseDClick(view.viewport(), Qt::RightButton, Qt::NoModifier, click);
    QCOMPARE(launcher.started.size(), 1);
}

void GrepEditorLaunchTest::withoutAnEditorNothingStarts()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines(result());
    AppSettings::instance().editor.clear();
    view.openInEditor();
    QVERIFY(launcher.started.isEmpty());
}

void GrepEditorLaunchTest::withoutAFileNothingStarts()
{
    RecordingLauncher launcher;
    GrepEditor view(false);
    view.setLauncher(&launcher);
    view.setPlainText(text("text"));
    view.openInEditor();
    QVERIFY(launcher.started.isEmpty());
}

void GrepEditorLaunchTest::theWindowsCommandLineIsWhole()
{
    AppSettings &settings = AppSettings::instance();
    settings.editor = text("C:/Program Files/ed.exe");
    settings.editor_para = text("-l%l -c%c -b%b %f");
    RecordingLauncher launcher(PathStyle::Windows);
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("::C:/a/b.txt"), HitString::format(3, 5, text("x"))});
    place(view, 1, 0);
    view.openInEditor();
    QCOMPARE(LaunchRules::commandLine(launcher.started.first()),
             text("\"C:/Program Files/ed.exe\" -l3 -c5 -b5 \"C:\\a\\b.txt\""));
    QCOMPARE(launcher.started.first().directory, text("C:/Program Files"));
}

void GrepEditorLaunchTest::anEditorThatDoesNotStartIsLogged()
{
    RecordingLauncher launcher;
    launcher.succeeds = false;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines(result());
    QTest::ignoreMessage(QtDebugMsg, "editor not started: ed");
    view.openInEditor();
    QCOMPARE(launcher.started.size(), 1);
}

void GrepEditorLaunchTest::aRelativeNameStartsWhereTheProgramStarted()
{
    const QString start = QDir::currentPath();
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.appendLines({text("::src/a.c")});
    // As an earlier launch does.
    QDir::setCurrent(QDir::tempPath());
    view.openInEditor();
    QDir::setCurrent(start);
    QCOMPARE(launcher.started.first().arguments.last(),
             QDir::toNativeSeparators(start + text("/src/a.c")));
}

void GrepEditorLaunchTest::aSelectionStartsASecondInstance_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Alt+G") << true;
    QTest::newRow("slot") << false;
}

void GrepEditorLaunchTest::aSelectionStartsASecondInstance()
{
    QFETCH(bool, byKey);
    RecordingHost host;
    host.paths = QStringList{text("C:/src/"), text("D:/other/")};
    RecordingLauncher launcher(PathStyle::Windows);
    GrepEditor view(true);
    view.setHost(&host);
    view.setLauncher(&launcher);
    view.setPlainText(text("a.b(c)"));
    view.selectAll();
    if (byKey)
        QTest::keyClick(&view, Qt::Key_G, Qt::AltModifier);
    else
        QVERIFY(QMetaObject::invokeMethod(&view, "othergrep"));
    QCOMPARE(launcher.opened.size(), 1);
    QCOMPARE(launcher.opened.first().parameters, text("\"C:/src/\" \"a\\.b\\(c\\)\""));
    QCOMPARE(QFileInfo(launcher.opened.first().directory).canonicalFilePath(),
             QFileInfo(QCoreApplication::applicationDirPath()).canonicalFilePath());
    QVERIFY(launcher.opened.first().program.endsWith(text("\\sarvik.exe")));
    QCOMPARE(view.toPlainText(), text("a.b(c)"));
}

void GrepEditorLaunchTest::withoutASelectionNoSecondInstanceStarts()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.setPlainText(text("word"));
    view.othergrep();
    QTest::keyClick(&view, Qt::Key_G, Qt::AltModifier);
    QVERIFY(launcher.opened.isEmpty());
    QCOMPARE(view.toPlainText(), text("word"));
}

void GrepEditorLaunchTest::theFirstSearchPathIsHandedOver()
{
    RecordingHost host;
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setHost(&host);
    view.setLauncher(&launcher);
    view.setPlainText(text("a\nb"));
    view.selectAll();
    view.othergrep();
    QCOMPARE(launcher.opened.last().arguments, QStringList({QString(), text("a\nb")}));
    host.paths = QStringList{text("/src/"), text("/other/")};
    view.othergrep();
    QCOMPARE(launcher.opened.last().arguments, QStringList({text("/src/"), text("a\nb")}));
}

void GrepEditorLaunchTest::aSecondInstanceThatDoesNotStartIsLogged()
{
    RecordingLauncher launcher;
    launcher.succeeds = false;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.setPlainText(text("x"));
    view.selectAll();
    const QString program =
        QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + text("/sarvik"));
    QTest::ignoreMessage(QtDebugMsg, "ShellExecute error2 ");
    QTest::ignoreMessage(QtDebugMsg, qPrintable(program));
    QTest::ignoreMessage(QtDebugMsg, "\"\" \"x\"");
    view.othergrep();
}

void GrepEditorLaunchTest::theEditorGetsThisOneFileWhateverItsName_data()
{
    QTest::addColumn<QByteArray>("name");
    const auto row = [](const char *label, const char *name) {
        QTest::newRow(label) << QByteArray(name);
    };
    row("plain", "plain.txt");
    row("blanks", "blanks  and 　.txt");
    row("commands", "commands;touch hole;$(touch hole)`touch hole`&touch hole.txt");
    row("macros", "macros %f %l %b %c %%f.txt");
    row("variables", "$HOME %PATH% !PATH! ^ ~ [a] {b}.txt");
    row("option", "-c!touch hole");
    row("options behind blanks", "a -multiInst /x b.txt");
    row("separators", "separators \xe2\x80\xa8 \xe2\x80\xa9 \xef\xb7\x90.txt");
    row("Japanese", "表示能力ソ.txt");
    if (ProgramLauncher::native().pathStyle() != PathStyle::Unix)
        return; // names have no such characters
    row("quotes", "quotes \" ' \"\"\" x.txt");
    row("shell signs", "* ? > hole < x | touch hole.txt");
    row("line feeds", "line feeds\n::/etc/passwd\r\n.txt");
    row("bytes that are no text", "\x82\xa0\xff\xfe.txt");
}

void GrepEditorLaunchTest::theEditorGetsThisOneFileWhateverItsName()
{
    QFETCH(QByteArray, name);
    const PathStyle style = ProgramLauncher::native().pathStyle();
    for (const char *parameters : {"+%l %f", "+%l \"%f\""}) {
        const ScratchFolder folder;
        const RecordingProgram editor(folder);
        AppSettings &settings = AppSettings::instance();
        settings.editor = editor.path();
        settings.editor_para = text(parameters);

        const QString path = folder.path() + NativePath::fromNative(name);
        const QString start = QDir::currentPath();
        GrepEditor view(true);
        view.appendLines({text("::") + path, HitString::format(42, 1, text("x"))});
        place(view, 1, 0);
        QTest::keyClick(&view, Qt::Key_Return);
        const QByteArrayList arguments = editor.arguments();
        QDir::setCurrent(start);
        const QString native = LaunchRules::withNativeSeparators(path, style);
        QCOMPARE(arguments, QByteArrayList({"+42", NativePath::toNative(native)}));
        QVERIFY(!folder.exists(text("hole")));
    }
}

QTEST_MAIN(GrepEditorLaunchTest)

#include "GrepEditorLaunchTest.moc"
