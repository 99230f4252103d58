#include "view/GrepEditor.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "view/Highlighter.h"

#include <QInputMethodEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

/// What is seen: the pictures are compared with and without a switch, so that
/// no test depends on the shapes of a font.
class GrepEditorPaintTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void theCurrentLineIsFilled();
    void theFillFollowsTheCursor();
    void eachSwitchMarksItsCharacters_data();
    void eachSwitchMarksItsCharacters();
    void theEndOfTheDocumentHasItsOwnColour();
    void theTextHasItsColours();
    void aSelectionIsSeen();
    void theCaretHasTheCursorColour();
    void composedTextIsSeen();
    void committedTextIsTyped();
    void theTextLooksAsInAnyTextView_data();
    void theTextLooksAsInAnyTextView();
    void onlyWhatIsSeenIsLaidOut();
    void theResultViewColoursFileLines();
    void thePreviewWaitsForALanguage();
    void foundTextIsMarked();
    void onlyWhatIsSeenIsColoured();
    void aLongLineShowsItsColours();
    void aVeryLongLineIsPaintedToItsEnd_data();
    void aVeryLongLineIsPaintedToItsEnd();
};

namespace {

const QColor back(10, 27, 52);
const QColor fore(255, 255, 255);

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// A view that is shown, without a frame, so that it and its viewport are one.
class ShownView : public GrepEditor {
public:
    explicit ShownView(const QString &content, bool isResultView = false) : GrepEditor(isResultView)
    {
        setFrameShape(QFrame::NoFrame);
        resize(400, 200);
        highlighter().setTurn(kPatienceMilliseconds); // whatever is seen is coloured at once
        setPlainText(content);
        show();
    }

    QImage picture() { return viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// Where the character at position is seen; at the end of a line, the place
    /// for a mark behind it.
    QRect cellAt(int position) const
    {
        QTextCursor cursor(document());
        cursor.setPosition(position);
        const QRect left = cursorRect(cursor);
        if (cursor.atBlockEnd())
            return left.adjusted(0, 0, 40, 0);
        cursor.setPosition(position + 1);
        return left.united(cursorRect(cursor));
    }
};

/// Around all pixels that differ; empty when none does.
QRect difference(const QImage &a, const QImage &b)
{
    QRect changed;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y))
                changed |= QRect(x, y, 1, 1);
        }
    }
    return changed;
}

int count(const QImage &picture, const QRect &area, const QColor &colour)
{
    int pixels = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.rect().contains(x, y) && QColor(picture.pixel(x, y)) == colour)
                ++pixels;
        }
    }
    return pixels;
}

} // namespace

void GrepEditorPaintTest::init()
{
    AppSettings &settings = AppSettings::instance();
    settings.tabcolm = 4;
    settings.textFont = QFont(text("DejaVu Sans Mono"), 14);
    settings.backcolor = back;
    settings.forecolor = fore;
    settings.hlbackcolor = QColor(70, 130, 180);
    settings.hlforecolor = fore;
    settings.cursorcolor = QColor(255, 255, 51);
    settings.tabcolor = QColor(250, 0, 250);
    settings.ctrlcolor = QColor(126, 255, 245);
    settings.markercolor = QColor(128, 128, 0);
    settings.cursorback = false;
    settings.tab = false;
    settings.zenspc = false;
    settings.cr = false;
}

void GrepEditorPaintTest::theCurrentLineIsFilled()
{
    ShownView view(text("one\ntwo\nthree"));
    const QImage plain = view.picture();
    AppSettings::instance().cursorback = true;
    const QImage filled = view.picture();

    const QRect row = view.cursorRect();
    const QRect changed = difference(plain, filled);
    QCOMPARE(changed.left(), 0);
    QCOMPARE(changed.right(), filled.width() - 1);
    QCOMPARE(changed.top(), row.top());
    QCOMPARE(changed.bottom(), row.bottom());
    // Half of (50, 67, 92) over the background.
    const QColor inside(filled.pixel(300, row.center().y()));
    QVERIFY(qAbs(inside.red() - 30) <= 1);
    QVERIFY(qAbs(inside.green() - 47) <= 1);
    QVERIFY(qAbs(inside.blue() - 72) <= 1);
    QCOMPARE(QColor(filled.pixel(300, row.bottom())), QColor(255, 255, 51));
}

void GrepEditorPaintTest::theFillFollowsTheCursor()
{
    AppSettings::instance().cursorback = true;
    ShownView view(text("one\ntwo\nthree"));
    const int firstRow = view.cursorRect().center().y();
    view.moveCursor(QTextCursor::End);
    const int lastRow = view.cursorRect().center().y();
    QVERIFY(lastRow > firstRow);
    const QImage picture = view.picture();
    QCOMPARE(QColor(picture.pixel(300, firstRow)), back);
    QVERIFY(QColor(picture.pixel(300, lastRow)) != back);
}

void GrepEditorPaintTest::eachSwitchMarksItsCharacters_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QString>("content");
    QTest::addColumn<int>("firstMarked");
    QTest::addColumn<int>("lastMarked");
    // The toolkit takes seconds to lay out more of these.
    QTest::newRow("tabs") << 0 << text("ab\tc\td\n\u3000") << 2 << 4;
    QTest::newRow("full-width spaces") << 1 << QStringLiteral("a\u3000\tb\u3000c") << 1 << 4;
    QTest::newRow("line ends") << 2 << text("abc") << 3 << 3;
}

void GrepEditorPaintTest::eachSwitchMarksItsCharacters()
{
    QFETCH(int, which);
    QFETCH(QString, content);
    QFETCH(int, firstMarked);
    QFETCH(int, lastMarked);
    bool AppSettings::*const switches[] = {&AppSettings::tab, &AppSettings::zenspc,
                                           &AppSettings::cr};
    ShownView view(content);
    const QImage off = view.picture();
    AppSettings::instance().*switches[which] = true;
    const QRect changed = difference(off, view.picture());
    QVERIFY(!changed.isEmpty());
    const QRect allowed = view.cellAt(firstMarked).united(view.cellAt(lastMarked));
    QVERIFY2(allowed.adjusted(-1, 0, 1, 0).contains(changed),
             qPrintable(QStringLiteral("%1..%2 in %3..%4")
                            .arg(changed.left())
                            .arg(changed.right())
                            .arg(allowed.left())
                            .arg(allowed.right())));
    // From the first to the last of them.
    QVERIFY(view.cellAt(firstMarked).intersects(changed));
    QVERIFY(view.cellAt(lastMarked).intersects(changed));
}

void GrepEditorPaintTest::theEndOfTheDocumentHasItsOwnColour()
{
    AppSettings &settings = AppSettings::instance();
    settings.cr = true;
    settings.textFont.setPointSize(30);
    ShownView view(text("a\nb"));
    const QRect firstEnd = view.cellAt(1);
    const QRect lastEnd = view.cellAt(3);
    QVERIFY(lastEnd.top() > firstEnd.top());
    const QImage picture = view.picture();
    QVERIFY(count(picture, firstEnd, settings.ctrlcolor) > 0);
    QCOMPARE(count(picture, firstEnd, settings.markercolor), 0);
    QVERIFY(count(picture, lastEnd, settings.markercolor) > 0);
    QCOMPARE(count(picture, lastEnd, settings.ctrlcolor), 0);
}

void GrepEditorPaintTest::theTextHasItsColours()
{
    AppSettings::instance().textFont.setPointSize(30);
    ShownView view(text("H"));
    const QImage picture = view.picture();
    QVERIFY(count(picture, view.cellAt(0), fore) > 0);
    QCOMPARE(QColor(picture.pixel(350, 150)), back);
}

void GrepEditorPaintTest::aSelectionIsSeen()
{
    ShownView view(text("abc\ndef\nghi"));
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(1);
    cursor.setPosition(6, QTextCursor::KeepAnchor);
    view.setTextCursor(cursor);
    const QImage picture = view.picture();
    const QColor selected = AppSettings::instance().hlbackcolor;
    for (const int position : {1, 2, 4, 5})
        QVERIFY2(count(picture, view.cellAt(position).adjusted(2, 0, -2, 0), selected) > 0,
                 qPrintable(QString::number(position)));
    for (const int position : {0, 6, 8})
        QCOMPARE(count(picture, view.cellAt(position).adjusted(2, 0, -2, 0), selected), 0);
}

void GrepEditorPaintTest::theCaretHasTheCursorColour()
{
    ShownView view(text("abc\ndef"));
    view.activateWindow();
    view.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&view, kPatienceMilliseconds));
    view.moveCursor(QTextCursor::End);
    view.setCursorWidth(3);
    const QRect caret = view.cursorRect();
    const QColor colour = AppSettings::instance().cursorcolor;
    // It may be in the dark half of its blinking.
    QTRY_COMPARE_WITH_TIMEOUT(count(view.picture(), caret, colour), 3 * caret.height(),
                              kPatienceMilliseconds);
    QCOMPARE(count(view.picture(), view.rect(), colour), 3 * caret.height());
}

void GrepEditorPaintTest::composedTextIsSeen()
{
    ShownView view(QStringLiteral("ab\tc"));
    view.moveCursor(QTextCursor::End);
    const QImage before = view.picture();
    const QRect end = view.cellAt(4);
    QInputMethodEvent compose(QStringLiteral("かんじ"), {});
    QCoreApplication::sendEvent(&view, &compose);
    const QRect changed = difference(before, view.picture());
    QVERIFY(changed.left() >= end.left());
    QVERIFY(changed.right() > end.left() + 20);
    QCOMPARE(view.toPlainText(), QStringLiteral("ab\tc"));

    // A mark behind the composed text stands where the text now is.
    AppSettings::instance().tab = true;
    view.moveCursor(QTextCursor::Start);
    QInputMethodEvent atStart(QStringLiteral("かんじ"), {});
    QCoreApplication::sendEvent(&view, &atStart);
    const QImage marked = view.picture();
    AppSettings::instance().tab = false;
    const QRect mark = difference(marked, view.picture());
    QVERIFY(mark.left() > view.cellAt(2).left());
}

void GrepEditorPaintTest::committedTextIsTyped()
{
    ShownView view(text("ab"));
    view.moveCursor(QTextCursor::End);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("漢字"));
    QCoreApplication::sendEvent(&view, &commit);
    QCOMPARE(view.toPlainText(), QStringLiteral("ab漢字"));
}

void GrepEditorPaintTest::theTextLooksAsInAnyTextView_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QString>("composed");
    QTest::newRow("top") << 0 << 0 << false << QString();
    QTest::newRow("scrolled") << 40 << 57 << false << QString();
    QTest::newRow("end") << 1000 << 0 << false << QString();
    QTest::newRow("selected") << 40 << 0 << true << QString();
    QTest::newRow("composing") << 0 << 0 << false << QStringLiteral("かんじ");
}

void GrepEditorPaintTest::theTextLooksAsInAnyTextView()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(bool, selected);
    QFETCH(QString, composed);
    QStringList lines;
    for (int i = 0; i < 100; ++i)
        lines << QStringLiteral("%1\tあいう\t\u3000 %2 and so on, beyond the edge")
                     .arg(i)
                     .arg(i * 7919);
    ShownView view(lines.join(QLatin1Char('\n')));
    QPlainTextEdit any;
    any.setFrameShape(QFrame::NoFrame);
    any.setLineWrapMode(QPlainTextEdit::NoWrap);
    any.setFont(view.font());
    any.setPalette(view.palette());
    any.setTabStopDistance(view.tabStopDistance());
    any.resize(view.size());
    any.setPlainText(view.toPlainText());
    any.show();
    for (QPlainTextEdit *shown : {&any, static_cast<QPlainTextEdit *>(&view)}) {
        // No caret: its colour is the one thing that differs.
        shown->setCursorWidth(0);
        QInputMethodEvent compose(composed, {});
        QCoreApplication::sendEvent(shown, &compose);
        if (selected)
            shown->selectAll();
        shown->viewport()->grab();
        shown->verticalScrollBar()->setValue(row);
        shown->horizontalScrollBar()->setValue(column);
    }
    const QImage expected = any.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(difference(view.picture(), expected), QRect());
}

void GrepEditorPaintTest::onlyWhatIsSeenIsLaidOut()
{
    ShownView view{QString()};
    QStringList lines;
    for (int i = 0; i < 20000; ++i)
        lines << QString::number(i);
    view.appendLines(lines);
    view.picture();
    const auto isLaidOut = [&view](int line) {
        return view.document()->findBlockByNumber(line).layout()->lineCount() > 0;
    };
    QVERIFY(isLaidOut(0));
    QVERIFY(!isLaidOut(100));
    QVERIFY(!isLaidOut(10000));
    view.verticalScrollBar()->setValue(10000);
    view.picture();
    QVERIFY(isLaidOut(10000));
    QVERIFY(!isLaidOut(5000));
    QVERIFY(!isLaidOut(10100));
}

void GrepEditorPaintTest::theResultViewColoursFileLines()
{
    AppSettings &settings = AppSettings::instance();
    settings.grepFont = QFont(text("DejaVu Sans Mono"), 30);
    settings.fnamecolor = QColor(255, 255, 0);
    ShownView view(text("::HH\nHH"), true);
    const QImage picture = view.picture();
    QVERIFY(count(picture, view.cellAt(2), settings.fnamecolor) > 0);
    QCOMPARE(count(picture, view.cellAt(5), settings.fnamecolor), 0);

    settings.fnamecolor = QColor(0, 255, 0);
    view.applyColours();
    QVERIFY(count(view.picture(), view.cellAt(2), settings.fnamecolor) > 0);
}

void GrepEditorPaintTest::thePreviewWaitsForALanguage()
{
    AppSettings &settings = AppSettings::instance();
    settings.textFont.setPointSize(30);
    settings.commentcolor = QColor(0, 255, 0);
    ShownView view(text("; HH"));
    QCOMPARE(count(view.picture(), view.rect(), settings.commentcolor), 0);
    view.highlighter().setLanguage(text("ini"));
    QVERIFY(count(view.picture(), view.cellAt(2), settings.commentcolor) > 0);
}

void GrepEditorPaintTest::foundTextIsMarked()
{
    ShownView view(text("foo bar foo"), true);
    const QImage before = view.picture();
    view.highlighter().setFind(view.findPattern(text("bar")));
    const QRect changed = difference(before, view.picture());
    const QRect word = view.cellAt(4).united(view.cellAt(6));
    QVERIFY(!changed.isEmpty());
    QVERIFY(word.adjusted(-1, 0, 1, 0).contains(changed));
}

void GrepEditorPaintTest::onlyWhatIsSeenIsColoured()
{
    ShownView view(QString(), true);
    QStringList lines;
    for (int i = 0; i < 20000; ++i)
        lines << text("::12");
    view.appendLines(lines);
    view.picture();
    const auto isColoured = [&view](int line) {
        return !view.document()->findBlockByNumber(line).layout()->formats().isEmpty();
    };
    QVERIFY(isColoured(0));
    QVERIFY(!isColoured(100));
    view.verticalScrollBar()->setValue(10000);
    view.picture();
    QVERIFY(isColoured(10000));
    QVERIFY(!isColoured(5000));
    QVERIFY(!isColoured(19999));
}

void GrepEditorPaintTest::aLongLineShowsItsColours()
{
    AppSettings::instance().findcolor1 = QColor(255, 0, 0);
    ShownView view(text("foo bar ").repeated(Highlighter::kLongLine), true);
    const QImage before = view.picture();
    view.highlighter().setFind(view.findPattern(text("bar")));
    const QImage after = view.picture();
    QVERIFY(count(after, view.cellAt(4), AppSettings::instance().findcolor1) > 0);
    QCOMPARE(count(after, view.cellAt(0), AppSettings::instance().findcolor1), 0);
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
    QVERIFY(count(view.picture(), view.rect(), AppSettings::instance().findcolor1) > 0);
}

void GrepEditorPaintTest::aVeryLongLineIsPaintedToItsEnd_data()
{
    constexpr int kMebi = 1 << 20;
    QTest::addColumn<QString>("piece");
    QTest::addColumn<int>("units");
    QTest::newRow("one letter") << text("x") << kMebi;
    QTest::newRow("code") << text("int x = 1; /* c */ \"s\" 'c' foo(bar) + 0x12; ") << kMebi;
    QTest::newRow("Japanese") << QString::fromUtf8("日本語テキスト　int x = 1; /* c */ \"s\" ")
                              << kMebi;
    // The toolkit takes seconds to lay out more of these.
    QTest::newRow("tabs") << text("\t12") << kMebi / 4;
    QTest::newRow("zero bytes") << QString(QChar(0)) << kMebi / 4;
    QTest::newRow("lone surrogates") << QString(QChar(0xDC00)) << kMebi / 4;
}

void GrepEditorPaintTest::aVeryLongLineIsPaintedToItsEnd()
{
    QFETCH(QString, piece);
    QFETCH(int, units);
    ShownView view(piece.repeated(units / piece.size()), false);
    view.highlighter().setLanguage(text("ini"));
    // Would take hours if it were looked for as it stands.
    view.highlighter().setFind(QRegExp(text("x.*y")));
    QVERIFY(!view.picture().isNull());
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum() / 256);
    QVERIFY(!view.picture().isNull());
    view.moveCursor(QTextCursor::End);
    view.insertPlainText(text("a"));
    view.highlighter().setFind(QRegExp(text("a")));
    QVERIFY(!view.picture().isNull());
}

QTEST_MAIN(GrepEditorPaintTest)

#include "GrepEditorPaintTest.moc"
