#include "view/GrepEditor.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/RecordingLauncher.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QtTest>

/// What the view does with lines, keys, mouse buttons and fonts.
class GrepEditorTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void theInterfaceHasItsNames();
    void theMouseCursorIsTheArrow();
    void linesAreNotWrapped();
    void aLongTextIsNotLaidOutAnewForAnotherWidth();
    void eachViewTakesItsOwnFont();
    void theFontIsWrittenBackAndGoesEverywhere();
    void theTabStopIsSoManyBlanksWide();
    void coloursComeFromTheSettings();

    void theCurrentLineIsTheCursorsLine();
    void theFileLineHeadsTheHits_data();
    void theFileLineHeadsTheHits();
    void theTextIsCopiedAloneAndLetterByLetter();

    void f5PicksOneWordMoreAtEachPress();
    void aPickKeyDoesNotResetTheOther();
    void anotherKeyStartsAgain_data();
    void anotherKeyStartsAgain();
    void aCursorMoveStartsAgain();
    void f6PicksIntoTheSecondKeyword();
    void atTheEndOfALineTheKeywordStays();
    void withoutAHostTheWordIsKept();
    void aParentThatIsAHostIsTaken();
    void escapeIsRemembered();
    void theSwitchesMakeTheFindPattern();

    void aSmallerViewKeepsTheCursorsRowInSight_data();
    void aSmallerViewKeepsTheCursorsRowInSight();

    void theSideButtonsAreReported();
    void theContextMenuHasThreeEntries();
    void theContextMenuOpens();

private:
    void place(GrepEditor &view, int line, int column);
};

/// A parent that is the host as well, as the main window is.
class HostWindow : public QWidget, public RecordingHost { };

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

void GrepEditorTest::init()
{
    AppSettings &settings = AppSettings::instance();
    settings.tabcolm = 4;
    settings.grepFont = QFont(text("DejaVu Sans Mono"), 14);
    settings.textFont = QFont(text("DejaVu Sans Mono"), 11);
    settings.regexp = false;
    settings.word = false;
    settings.caseinsensitive = false;
}

void GrepEditorTest::place(GrepEditor &view, int line, int column)
{
    const int position = view.document()->findBlockByNumber(line).position() + column;
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(position);
    view.setTextCursor(cursor);
}

void GrepEditorTest::theInterfaceHasItsNames()
{
    const QMetaObject &meta = GrepEditor::staticMetaObject;
    for (const char *signal : {"BackButton()", "ForwardButton()", "ZoomedOut(GrepEditor*)"})
        QVERIFY2(meta.indexOfSignal(signal) >= meta.methodOffset(), signal);
    for (const char *slot : {"highlightCurrentLine()", "othergrep()"})
        QVERIFY2(meta.indexOfSlot(slot) >= meta.methodOffset(), slot);
}

void GrepEditorTest::theMouseCursorIsTheArrow()
{
    GrepEditor view(true);
    QCOMPARE(view.viewport()->cursor().shape(), Qt::ArrowCursor);
}

void GrepEditorTest::linesAreNotWrapped()
{
    GrepEditor view(false);
    QCOMPARE(view.lineWrapMode(), QPlainTextEdit::NoWrap);
}

void GrepEditorTest::aLongTextIsNotLaidOutAnewForAnotherWidth()
{
    GrepEditor view(true);
    view.resize(400, 200);
    view.show();
    view.setPlainText(text("needle\n").repeated(100000));
    const QTextBlock farAway = view.document()->findBlockByNumber(50000);
    view.document()->documentLayout()->blockBoundingRect(farAway);
    QCOMPARE(farAway.layout()->lineCount(), 1);

    view.resize(600, 300);
    QCoreApplication::processEvents();
    QCOMPARE(farAway.layout()->lineCount(), 1);
    QCOMPARE(view.verticalScrollBar()->maximum() + view.verticalScrollBar()->pageStep(),
             view.blockCount());
}

void GrepEditorTest::eachViewTakesItsOwnFont()
{
    GrepEditor results(true);
    GrepEditor preview(false);
    QVERIFY(results.isResultView());
    QVERIFY(!preview.isResultView());
    QCOMPARE(results.font().pointSize(), 14);
    QCOMPARE(preview.font().pointSize(), 11);
}

void GrepEditorTest::theFontIsWrittenBackAndGoesEverywhere()
{
    GrepEditor results(true);
    GrepEditor preview(false);
    const QFont font(text("DejaVu Sans"), 20, QFont::Bold);
    for (const bool remember : {true, false}) {
        results.setViewFont(font, remember);
        QCOMPARE(results.font().toString(), font.toString());
        QCOMPARE(results.viewport()->font().toString(), font.toString());
        QCOMPARE(results.document()->defaultFont().toString(), font.toString());
        QCOMPARE(AppSettings::instance().grepFont, font);
        AppSettings::instance().grepFont = QFont();
    }
    QCOMPARE(AppSettings::instance().textFont.pointSize(), 11);
    preview.setViewFont(font, true);
    QCOMPARE(AppSettings::instance().textFont, font);
}

void GrepEditorTest::theTabStopIsSoManyBlanksWide()
{
    GrepEditor view(true);
    const qreal blank = QFontMetricsF(view.font(), &view).horizontalAdvance(QLatin1Char(' '));
    QCOMPARE(view.tabStopDistance(), 4 * blank);
    AppSettings::instance().tabcolm = 8;
    view.setViewFont(view.font(), false);
    QCOMPARE(view.tabStopDistance(), 8 * blank);
}

void GrepEditorTest::coloursComeFromTheSettings()
{
    AppSettings &settings = AppSettings::instance();
    settings.backcolor = QColor(1, 2, 3);
    settings.forecolor = QColor(4, 5, 6);
    settings.hlbackcolor = QColor(7, 8, 9);
    settings.hlforecolor = QColor(10, 11, 12);
    GrepEditor view(true);
    QCOMPARE(view.palette().color(QPalette::Base), QColor(1, 2, 3));
    QCOMPARE(view.palette().color(QPalette::Text), QColor(4, 5, 6));
    QCOMPARE(view.palette().color(QPalette::Highlight), QColor(7, 8, 9));
    QCOMPARE(view.palette().color(QPalette::HighlightedText), QColor(10, 11, 12));
    settings.backcolor = QColor(13, 14, 15);
    view.applyColours();
    QCOMPARE(view.palette().color(QPalette::Base), QColor(13, 14, 15));
}

void GrepEditorTest::theCurrentLineIsTheCursorsLine()
{
    GrepEditor view(true);
    // A no-break space may stand in a file name: it must not become a blank.
    view.appendLines({text("::/a"), text("  1:  1:x\xA0y\tz"), text("")});
    QCOMPARE(view.currentLineText(), text("::/a"));
    place(view, 1, 4);
    QCOMPARE(view.currentLineText(), text("  1:  1:x\xA0y\tz"));
    place(view, 2, 0);
    QCOMPARE(view.currentLineText(), QString());
}

void GrepEditorTest::theFileLineHeadsTheHits_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("fileLine");
    const QString file = text("::C:/a/b.txt");
    const QString hit = text("     1:    1:x");
    const auto row = [](const char *name, const QStringList &lines, int line,
                        const QString &fileLine) {
        QTest::newRow(name) << lines << line << fileLine;
    };
    row("directly above", {file, hit}, 1, file);
    row("further above", {file, hit, hit, hit}, 3, file);
    row("nearest", {text("::/x"), hit, file, hit, text("::/y")}, 3, file);
    row("a line that begins with a letter", {file, text("Warning"), hit}, 2, text("Warning"));
    row("a Japanese line", {file, QStringLiteral("該当"), hit}, 2, QStringLiteral("該当"));
    row("digits and hyphens are passed", {file, text("12"), text("---"), hit}, 3, file);
    row("empty lines are passed", {file, text(""), hit}, 2, file);
    row("one colon is passed", {file, text(":x"), hit}, 2, file);
    row("the first line ends the search", {hit, hit, hit}, 2, hit);
    row("an empty first line", {text(" "), hit}, 1, text(" "));
    row("from the file line itself", {file, hit}, 0, file);
}

void GrepEditorTest::theFileLineHeadsTheHits()
{
    QFETCH(QStringList, lines);
    QFETCH(int, line);
    GrepEditor view(true);
    view.appendLines(lines);
    place(view, line, 0);
    QTEST(view.fileLineText(), "fileLine");
}

void GrepEditorTest::theTextIsCopiedAloneAndLetterByLetter()
{
    GrepEditor view(true);
    view.appendLines({text("::C:/a\u00a0b.txt"), text("     1:    1:x\ty")});
    view.selectAll();
    view.copy();
    const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(copied->text(), text("::C:/a\u00a0b.txt\n     1:    1:x\ty"));
    QCOMPARE(copied->formats(), QStringList(text("text/plain")));
}

void GrepEditorTest::f5PicksOneWordMoreAtEachPress()
{
    RecordingHost host;
    GrepEditor view(true);
    view.setHost(&host);
    view.setPlainText(text("int foo_bar(baz);"));
    place(view, 0, 4);
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(view.pickedWord(), text("foo"));
    QTest::keyClick(&view, Qt::Key_F5);
    QTest::keyClick(&view, Qt::Key_F5);
    const QStringList expected{text("1:foo"),   text("refresh"),       text("1:foo_bar"),
                               text("refresh"), text("1:foo_bar(baz"), text("refresh")};
    QCOMPARE(host.calls, expected);
    QCOMPARE(view.textCursor().position(), 4);
    QVERIFY(!view.textCursor().hasSelection());
}

void GrepEditorTest::f6PicksIntoTheSecondKeyword()
{
    RecordingHost host;
    GrepEditor view(false);
    view.setHost(&host);
    view.setPlainText(text("foo bar"));
    QTest::keyClick(&view, Qt::Key_F6);
    QTest::keyClick(&view, Qt::Key_F6);
    const QStringList expected{text("2:foo"), text("refresh"), text("2:foo bar"), text("refresh")};
    QCOMPARE(host.calls, expected);
}

void GrepEditorTest::aPickKeyDoesNotResetTheOther()
{
    GrepEditor view(true);
    view.setPlainText(text("a b c d"));
    QTest::keyClick(&view, Qt::Key_F5);
    QTest::keyClick(&view, Qt::Key_F6);
    QCOMPARE(view.pickedWord(), text("a"));
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(view.pickedWord(), text("a b"));
    QTest::keyClick(&view, Qt::Key_F6);
    QCOMPARE(view.pickedWord(), text("a b"));
}

void GrepEditorTest::anotherKeyStartsAgain_data()
{
    QTest::addColumn<int>("pickKey");
    QTest::addColumn<int>("otherKey");
    QTest::newRow("F5, Escape") << int(Qt::Key_F5) << int(Qt::Key_Escape);
    QTest::newRow("F6, Escape") << int(Qt::Key_F6) << int(Qt::Key_Escape);
    QTest::newRow("F5, F4") << int(Qt::Key_F5) << int(Qt::Key_F4);
    QTest::newRow("F6, Shift") << int(Qt::Key_F6) << int(Qt::Key_Shift);
    QTest::newRow("F5, Return") << int(Qt::Key_F5) << int(Qt::Key_Return);
}

void GrepEditorTest::anotherKeyStartsAgain()
{
    QFETCH(int, pickKey);
    QFETCH(int, otherKey);
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.setPlainText(text("a b c d"));
    QTest::keyClick(&view, Qt::Key(pickKey));
    QTest::keyClick(&view, Qt::Key(pickKey));
    QCOMPARE(view.pickedWord(), text("a b"));
    QTest::keyClick(&view, Qt::Key(otherKey));
    QTest::keyClick(&view, Qt::Key(pickKey));
    QCOMPARE(view.pickedWord(), text("a"));
}

void GrepEditorTest::aCursorMoveStartsAgain()
{
    GrepEditor view(true);
    view.setPlainText(text("a b c d"));
    QTest::keyClick(&view, Qt::Key_F5);
    QTest::keyClick(&view, Qt::Key_F5);
    // Not by a key, which would reset the count itself.
    place(view, 0, 2);
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(view.pickedWord(), text("b"));
}

void GrepEditorTest::atTheEndOfALineTheKeywordStays()
{
    RecordingHost host;
    GrepEditor view(true);
    view.setHost(&host);
    view.setPlainText(text("foo\nbar"));
    place(view, 0, 3);
    QTest::keyClick(&view, Qt::Key_F5);
    QTest::keyClick(&view, Qt::Key_F6);
    QCOMPARE(host.calls, QStringList());
}

void GrepEditorTest::withoutAHostTheWordIsKept()
{
    GrepEditor view(true);
    view.setPlainText(text("foo"));
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(view.pickedWord(), text("foo"));
}

void GrepEditorTest::aParentThatIsAHostIsTaken()
{
    HostWindow window;
    auto *view = new GrepEditor(true, &window);
    view->setPlainText(text("foo"));
    QTest::keyClick(view, Qt::Key_F5);
    QCOMPARE(window.calls, QStringList({text("1:foo"), text("refresh")}));
}

void GrepEditorTest::escapeIsRemembered()
{
    GrepEditor view(true);
    QVERIFY(!view.escapePressed());
    QTest::keyClick(&view, Qt::Key_A);
    QVERIFY(!view.escapePressed());
    QTest::keyClick(&view, Qt::Key_Escape);
    QVERIFY(view.escapePressed());
    view.clearEscape();
    QVERIFY(!view.escapePressed());
    view.stop();
    QVERIFY(view.escapePressed());
}

void GrepEditorTest::theSwitchesMakeTheFindPattern()
{
    AppSettings &settings = AppSettings::instance();
    const GrepEditor view(true);
    QCOMPARE(view.findPattern(text("a|b.")).pattern(), text("a\\|b\\."));
    QCOMPARE(view.findPattern(text("a")).caseSensitivity(), Qt::CaseSensitive);
    settings.regexp = true;
    QCOMPARE(view.findPattern(text("a|b.")).pattern(), text("a\\|b."));
    settings.word = true;
    QCOMPARE(view.findPattern(text("a|b.")).pattern(), text("\\ba\\|b.\\b"));
    settings.caseinsensitive = true;
    QCOMPARE(view.findPattern(text("a")).caseSensitivity(), Qt::CaseInsensitive);
}

void GrepEditorTest::aSmallerViewKeepsTheCursorsRowInSight_data()
{
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("scrolls");
    QTest::newRow("much smaller") << 10 << 30 << 250 << true;
    QTest::newRow("a little smaller") << 10 << 10 + 34 << 780 << true;
    QTest::newRow("still in sight") << 10 << 12 << 250 << false;
    QTest::newRow("far below") << 0 << 299 << 250 << false;
    QTest::newRow("just below") << 0 << 50 << 250 << false;
    QTest::newRow("above") << 100 << 20 << 250 << false;
    QTest::newRow("larger") << 10 << 30 << 1200 << false;
}

void GrepEditorTest::aSmallerViewKeepsTheCursorsRowInSight()
{
    QFETCH(int, top);
    QFETCH(int, row);
    QFETCH(int, height);
    QFETCH(bool, scrolls);
    GrepEditor view(true);
    view.setPlainText(text("line\n").repeated(300));
    const int rowHeight = view.cursorRect().height();
    view.resize(600, 36 * rowHeight);
    view.show();
    place(view, row, 0);
    view.verticalScrollBar()->setValue(top);
    view.resize(600, height * rowHeight / 23);
    if (scrolls) {
        QVERIFY(view.verticalScrollBar()->value() > top);
        QVERIFY(view.cursorRect().top() >= 0);
        const int below = view.viewport()->height() - view.cursorRect().bottom() - 1;
        QVERIFY2(below >= 0 && below < rowHeight, qPrintable(QString::number(below)));
    } else {
        QCOMPARE(view.verticalScrollBar()->value(), top);
    }
}

void GrepEditorTest::theSideButtonsAreReported()
{
    GrepEditor view(true);
    QSignalSpy back(&view, &GrepEditor::BackButton);
    QSignalSpy forward(&view, &GrepEditor::ForwardButton);
    QTest::mousePress(view.viewport(), Qt::ExtraButton1);
    QCOMPARE(back.count(), 0);
    QTest::mouseRelease(view.viewport(), Qt::ExtraButton1);
    QCOMPARE(back.count(), 1);
    QCOMPARE(forward.count(), 0);
    QTest::mouseClick(view.viewport(), Qt::ExtraButton2);
    QCOMPARE(back.count(), 1);
    QCOMPARE(forward.count(), 1);
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
    QTest::mouseClick(view.viewport(), Qt::MiddleButton);
    QCOMPARE(back.count() + forward.count(), 2);
}

void GrepEditorTest::theContextMenuHasThreeEntries()
{
    RecordingLauncher launcher;
    GrepEditor view(true);
    view.setLauncher(&launcher);
    view.setPlainText(text("foo"));
    const auto withoutSelection = view.makeContextMenu();
    const QList<QAction *> actions = withoutSelection->actions();
    QCOMPARE(actions.size(), 3);
    QCOMPARE(actions.at(0)->text(), QStringLiteral("(&C)コピー\tCtrl+C"));
    QCOMPARE(actions.at(1)->text(), QStringLiteral("(&A)全て選択\tCtrl+A"));
    QCOMPARE(actions.at(2)->text(), QStringLiteral("(&G)srvaik起動\tAlt+G"));
    QVERIFY(!actions.at(0)->isEnabled());
    QVERIFY(!actions.at(2)->isEnabled());

    actions.at(1)->trigger();
    QCOMPARE(view.textCursor().selectedText(), text("foo"));
    const auto withSelection = view.makeContextMenu();
    withSelection->actions().at(0)->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), text("foo"));
    withSelection->actions().at(2)->trigger();
    QCOMPARE(launcher.opened.size(), 1);
}

void GrepEditorTest::theContextMenuOpens()
{
    GrepEditor view(true);
    view.show();
    const QPoint inside(5, 5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, inside, view.viewport()->mapToGlobal(inside));
    QCoreApplication::sendEvent(view.viewport(), &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 3);
    QSignalSpy destroyed(menu, &QObject::destroyed);
    menu->close();
    QTRY_COMPARE_WITH_TIMEOUT(destroyed.count(), 1, kPatienceMilliseconds);
}

QTEST_MAIN(GrepEditorTest)

#include "GrepEditorTest.moc"
