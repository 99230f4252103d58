#include "view/GrepEditor.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "view/Highlighter.h"
#include "view/LongLineLayout.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTextBlock>
#include <QtTest>

#include <algorithm>

/// A very long line is as right as any other. Places and pictures are
/// compared with those of a view that was filled in another way, or of the toolkit's
/// own view.
class GrepEditorLongLineTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void theCaretGoesWhereItGoesInAnyTextView();
    void aClickFindsTheSameCharacter();
    void everyUnitIsCopied();
    void aWordIsPicked();
    void itLooksTheSameHoweverItCameIn_data();
    void itLooksTheSameHoweverItCameIn();
    void aHitListedBelowMovesTheEndMark();
    void whatWasFoundIsMarkedFarToTheRight();
    void whatIsTypedIsSeen();
    void anUndoneChangeLeavesTheText();
};

namespace {

/// Below a million, for the sake of checked builds; far beyond every limit.
constexpr int kLength = 100000;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QString &longLine()
{
    static const QString made =
        text("int 図書館_1\t= \"値　\"; ").repeated(kLength / 15).left(kLength);
    return made;
}

void showSmall(QPlainTextEdit &view)
{
    view.setFrameShape(QFrame::NoFrame);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(400, 120);
    view.show();
}

class Preview : public GrepEditor {
public:
    explicit Preview(const QString &content = longLine(), bool isResultView = false)
        : GrepEditor(isResultView)
    {
        setCursorWidth(0); // it blinks
        highlighter().setTurn(kPatienceMilliseconds); // whatever is seen is coloured at once
        setPlainText(content);
        showSmall(*this);
    }

    QImage picture() { return viewport()->grab().toImage(); }
    void goTo(int place)
    {
        QTextCursor cursor = textCursor();
        cursor.setPosition(place);
        setTextCursor(cursor);
    }
};

/// The toolkit's own, with the same font and tabs.
class AnyView : public QPlainTextEdit {
public:
    explicit AnyView(const GrepEditor &like)
    {
        setLineWrapMode(QPlainTextEdit::NoWrap);
        setFont(like.font());
        setTabStopDistance(like.tabStopDistance());
        setPlainText(like.toPlainText());
        showSmall(*this);
    }
};

} // namespace

void GrepEditorLongLineTest::initTestCase()
{
    AppSettings &settings = AppSettings::instance();
    settings.tabcolm = 4;
    settings.textFont = QFont(text("DejaVu Sans Mono"), 14);
    settings.grepFont = settings.textFont;
    settings.findcolor1 = Qt::red;
    settings.valuecolor = Qt::green;
    settings.tab = settings.zenspc = settings.cr = true;
    QVERIFY(longLine().size() >= LongLineLayout::kLongLine);
}

void GrepEditorLongLineTest::theCaretGoesWhereItGoesInAnyTextView()
{
    Preview view(text("above\n") + longLine() + text("\nbelow"));
    view.setCursorWidth(1);
    AnyView any(view);
    const auto press = [&](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view, Qt::Key(key), modifiers);
        QTest::keyClick(&any, Qt::Key(key), modifiers);
        QCOMPARE(view.textCursor().position(), any.textCursor().position());
        QCOMPARE(view.textCursor().anchor(), any.textCursor().anchor());
        QCOMPARE(view.horizontalScrollBar()->value(), any.horizontalScrollBar()->value());
        QCOMPARE(view.cursorRect(), any.cursorRect());
    };
    for (int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Right, Qt::Key_End,
                    Qt::Key_Left, Qt::Key_Left, Qt::Key_Home, Qt::Key_Down, Qt::Key_End, Qt::Key_Up,
                    Qt::Key_Left, Qt::Key_Up, Qt::Key_Down})
        press(key);
    press(Qt::Key_End, Qt::ShiftModifier);
    press(Qt::Key_Left, Qt::ControlModifier);
    press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
}

void GrepEditorLongLineTest::aClickFindsTheSameCharacter()
{
    Preview view;
    AnyView any(view);
    QCOMPARE(view.horizontalScrollBar()->maximum(), any.horizontalScrollBar()->maximum());
    for (int part : {0, 1, 3, 8}) {
        const int left = view.horizontalScrollBar()->maximum() / 8 * part;
        view.horizontalScrollBar()->setValue(left);
        any.horizontalScrollBar()->setValue(left);
        for (int x : {0, 7, 100, 399})
            QCOMPARE(view.cursorForPosition(QPoint(x, 10)).position(),
                     any.cursorForPosition(QPoint(x, 10)).position());
    }
}

void GrepEditorLongLineTest::everyUnitIsCopied()
{
    Preview view(text("above\n") + longLine() + text("\nbelow"));
    view.selectAll();
    view.copy();
    QVERIFY(QGuiApplication::clipboard()->text() == text("above\n") + longLine() + text("\nbelow"));
    view.goTo(6 + 50000);
    view.moveCursor(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    view.copy();
    QVERIFY(QGuiApplication::clipboard()->text() == longLine().mid(50000));
}

void GrepEditorLongLineTest::aWordIsPicked()
{
    Preview view;
    view.goTo(longLine().indexOf(text("図書館"), 90000));
    QTest::keyClick(&view, Qt::Key_F5);
    QCOMPARE(view.pickedWord(), text("図書館"));
}

void GrepEditorLongLineTest::itLooksTheSameHoweverItCameIn_data()
{
    QTest::addColumn<int>("eighth");
    QTest::newRow("at its start") << 0;
    QTest::newRow("inside") << 5;
    QTest::newRow("at its end") << 8;
}

/// Neighbours that come and go, and their colours, leave it as it is.
void GrepEditorLongLineTest::itLooksTheSameHoweverItCameIn()
{
    QFETCH(int, eighth);
    const QString hit = text("    1:    1:") + longLine();
    const QStringList lines = {text("::/a/file.c"), hit, text("    2:    1:true 12"),
                               text("::/another"), text("")};
    const auto pictureOf = [eighth](Preview &view) {
        view.highlighter().setFind(QRegExp(text("図書")));
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum() / 8 * eighth);
        view.goTo(3);
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum() / 8 * eighth);
        return view.picture();
    };
    Preview atOnce(lines.join(QLatin1Char('\n')), true);
    Preview inPieces(QString(), true);
    for (const QString &each : lines) {
        inPieces.appendLines({each});
        inPieces.picture();
    }
    Preview typed(text("::/a/file.c\nx"), true);
    typed.picture();
    typed.moveCursor(QTextCursor::End);
    typed.textCursor().deletePreviousChar();
    typed.insertPlainText(hit);
    typed.picture();
    typed.insertPlainText(text("\n    2:    1:true 12\n"));
    typed.picture();
    typed.insertPlainText(text("::/another\n"));
    QVERIFY(inPieces.toPlainText() == atOnce.toPlainText());
    QVERIFY(typed.toPlainText() == atOnce.toPlainText());
    const QImage picture = pictureOf(atOnce);
    QVERIFY(pictureOf(inPieces) == picture);
    QVERIFY(pictureOf(typed) == picture);
}

void GrepEditorLongLineTest::aHitListedBelowMovesTheEndMark()
{
    Preview view(text("    1:    1:") + longLine(), true);
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
    view.picture();
    view.appendLines({text("below")});
    Preview expected(text("    1:    1:") + longLine() + text("\nbelow"), true);
    expected.horizontalScrollBar()->setValue(expected.horizontalScrollBar()->maximum());
    QVERIFY(view.picture() == expected.picture());
}

void GrepEditorLongLineTest::whatWasFoundIsMarkedFarToTheRight()
{
    Preview view;
    view.highlighter().setLanguage(text("txt"));
    const int place = longLine().indexOf(text("館_1"), 95000);
    view.goTo(place + 3);
    const QImage plain = view.picture();
    view.highlighter().setFind(QRegExp(text("館_1")));
    const QImage marked = view.picture();
    const auto left = view.cursorRect(view.textCursor()).x();
    int changed = 0;
    for (int x = std::max(left - 40, 0); x < left - 1; ++x)
        changed += plain.pixel(x, 10) != marked.pixel(x, 10) ? 1 : 0;
    QVERIFY(changed > 10);
    view.highlighter().setFind(QRegExp(text("nowhere to be found")));
    QVERIFY(view.picture() == plain);
}

void GrepEditorLongLineTest::whatIsTypedIsSeen()
{
    Preview view;
    view.goTo(70000);
    view.picture();
    QTest::keyClicks(&view, text("typed"));
    QString changed = longLine();
    changed.insert(70000, text("typed"));
    QVERIFY(view.toPlainText() == changed);
    Preview expected(changed);
    expected.goTo(70005);
    expected.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value());
    QCOMPARE(view.cursorRect(), expected.cursorRect());
    QVERIFY(view.picture() == expected.picture());
}

void GrepEditorLongLineTest::anUndoneChangeLeavesTheText()
{
    Preview view;
    view.goTo(70000);
    const QRect before = view.cursorRect();
    const int left = view.horizontalScrollBar()->value();
    view.insertPlainText(text("a\nb"));
    QCOMPARE(view.blockCount(), 2);
    view.undo();
    QVERIFY(view.toPlainText() == longLine());
    view.goTo(70000);
    view.horizontalScrollBar()->setValue(left);
    QCOMPARE(view.cursorRect(), before);
}

QTEST_MAIN(GrepEditorLongLineTest)
#include "GrepEditorLongLineTest.moc"
