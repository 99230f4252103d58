#include "view/LongLineLayout.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <random>

/// What the lines look like is compared with the toolkit's own layout; whether
/// they were laid out anew is told by a mark, a layout's line put elsewhere.
class LongLineLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void aDocumentIsLaidOutAsByTheToolkit_data();
    void aDocumentIsLaidOutAsByTheToolkit();
    void onlyTheShapesOfLongLinesAreKept_data();
    void onlyTheShapesOfLongLinesAreKept();
    void aLineAppendedBelowLeavesALongLineAlone();
    void aLineAppendedBelowIsSeenAboveIt();
    void anotherLinesFormatsLeaveALongLineAlone();
    void aLineRemovedAboveLeavesALongLineAlone();
    void aChangeLaysALongLineOutAnew_data();
    void aChangeLaysALongLineOutAnew();
    void aBlockThatTakesAnotherLineIsLaidOutAnew();
    void theMiddleOfAnEditLaysNothingOut();
    void theShapesOfTheLastLinesAreKept();
    void oneLineIsKeptWhateverItsLength();
};

namespace {

constexpr qreal kElsewhere = 123;
/// The scroll bars ask for the lines of the last one.
const QString kMoreThanAPage = QStringLiteral("end\n").repeated(50);

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QString longLine(int length = LongLineLayout::kLongLine, const QString &end = QString())
{
    return text("int 図書館;\t").repeated(length / 9 + 1).left(length) + end;
}

class View : public QPlainTextEdit {
public:
    explicit View(int mostKept = LongLineLayout::kMostKept)
    {
        auto *text = new QTextDocument(this);
        takeDocument(text, new LongLineLayout(text, mostKept));
    }
    /// Laid out by the toolkit alone.
    static std::unique_ptr<View> plain() { return std::unique_ptr<View>(new View(nullptr)); }

    QTextBlock line(int number) const { return document()->findBlockByNumber(number); }
    QTextLine layOut(int number) const
    {
        document()->documentLayout()->blockBoundingRect(line(number));
        return line(number).layout()->lineAt(0);
    }
    void mark(int number) const { layOut(number).setPosition(QPointF(kElsewhere, 0)); }
    bool isMarked(int number) const
    {
        const QTextLayout *layout = line(number).layout();
        return layout->lineCount() == 1 && layout->lineAt(0).position().x() == kElsewhere;
    }
    QTextCursor at(int number, int place) const
    {
        QTextCursor cursor(document());
        cursor.setPosition(line(number).position() + place);
        return cursor;
    }

private:
    explicit View(std::nullptr_t)
    {
        auto *text = new QTextDocument(this);
        takeDocument(text, new QPlainTextDocumentLayout(text));
    }
    void takeDocument(QTextDocument *text, QPlainTextDocumentLayout *layout)
    {
        text->setDefaultFont(font());
        text->setDocumentLayout(layout);
        setDocument(text);
        setLineWrapMode(QPlainTextEdit::NoWrap);
        resize(400, 300);
    }
};

void compare(const QPlainTextEdit &view, const QPlainTextEdit &expected)
{
    const auto *layout = view.document()->documentLayout();
    const auto *expectedLayout = expected.document()->documentLayout();
    QCOMPARE(view.document()->toRawText(), expected.document()->toRawText());
    QTextBlock line = view.document()->begin();
    qreal widest = 0;
    for (QTextBlock other = expected.document()->begin(); other.isValid();
         other = other.next(), line = line.next()) {
        QCOMPARE(layout->blockBoundingRect(line), expectedLayout->blockBoundingRect(other));
        QCOMPARE(line.lineCount(), other.lineCount());
        QCOMPARE(line.layout()->lineCount(), other.layout()->lineCount());
        for (int row = 0; row < line.layout()->lineCount(); ++row) {
            const QTextLine own = line.layout()->lineAt(row);
            const QTextLine wanted = other.layout()->lineAt(row);
            widest = std::max(widest, own.naturalTextWidth());
            QCOMPARE(own.textLength(), wanted.textLength());
            QCOMPARE(own.position(), wanted.position());
            for (int place : {0, 1, own.textLength() / 2, own.textLength()})
                QCOMPARE(own.cursorToX(place), wanted.cursorToX(place));
        }
    }
    QCOMPARE(layout->documentSize().height(), expectedLayout->documentSize().height());
    // The toolkit's goes by lines that have gone, too.
    QVERIFY(layout->documentSize().width() >= widest);
}

QString randomText(std::mt19937 &random)
{
    switch (random() % 6) {
    case 0:
        return longLine(LongLineLayout::kLongLine + static_cast<int>(random() % 40));
    case 1:
        return text("\n") + longLine() + text("\nshort");
    case 2:
        return text("\n");
    case 3:
        return text("a row\u2028and another\n\n");
    default:
        return text("some 図書 words\t").repeated(static_cast<int>(random() % 3));
    }
}

/// The same for every view that has the same text.
void edit(QPlainTextEdit &view, std::mt19937 random)
{
    QTextCursor cursor(view.document());
    const auto anywhere = [&view, &random] {
        const QTextBlock line = view.document()->findBlockByNumber(
            static_cast<int>(random() % static_cast<unsigned>(view.document()->blockCount())));
        const int ends[] = {0, line.length() / 2, line.length() - 1};
        return line.isValid() ? line.position() + ends[random() % 3] : 0;
    };
    cursor.setPosition(anywhere());
    const auto kind = random() % 8;
    cursor.beginEditBlock();
    if (kind == 0)
        cursor.movePosition(QTextCursor::End);
    if (kind == 1 || kind == 2)
        cursor.setPosition(anywhere(), QTextCursor::KeepAnchor);
    if (kind == 1)
        cursor.removeSelectedText();
    else if (kind < 6)
        cursor.insertText(randomText(random));
    if (kind == 3) {
        cursor.setPosition(anywhere());
        cursor.insertText(text("x"));
    }
    cursor.endEditBlock();
    if (kind == 6)
        view.undo();
    if (kind == 7)
        view.redo();
}

} // namespace

void LongLineLayoutTest::aDocumentIsLaidOutAsByTheToolkit_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void LongLineLayoutTest::aDocumentIsLaidOutAsByTheToolkit()
{
    QFETCH(unsigned, seed);
    View view;
    const auto expected = View::plain();
    view.show();
    expected->show();
    std::mt19937 random(seed);
    for (int step = 0; step < 40; ++step) {
        const unsigned next = static_cast<unsigned>(random());
        edit(view, std::mt19937(next));
        edit(*expected, std::mt19937(next));
        compare(view, *expected);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("in step %1").arg(step)));
    }
}

void LongLineLayoutTest::onlyTheShapesOfLongLinesAreKept_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("kept");
    QTest::newRow("long") << LongLineLayout::kLongLine << true;
    QTest::newRow("not so long") << LongLineLayout::kLongLine - 1 << false;
    QTest::newRow("empty") << 0 << false;
}

void LongLineLayoutTest::onlyTheShapesOfLongLinesAreKept()
{
    QFETCH(int, length);
    QFETCH(bool, kept);
    View view;
    view.setPlainText(longLine(length));
    QCOMPARE(view.layOut(0).textLength(), length);
    QCOMPARE(view.line(0).layout()->cacheEnabled(), kept);
}

void LongLineLayoutTest::aLineAppendedBelowLeavesALongLineAlone()
{
    View view;
    view.setPlainText(text("above\n") + longLine());
    view.mark(1);
    view.at(1, LongLineLayout::kLongLine).insertText(text("\nbelow\nand again"));
    QVERIFY(view.isMarked(1));
    QCOMPARE(view.layOut(2).textLength(), 5);
    QCOMPARE(view.layOut(3).textLength(), 9);
    QCOMPARE(view.document()->documentLayout()->documentSize().height(), 4.0);
}

void LongLineLayoutTest::aLineAppendedBelowIsSeenAboveIt()
{
    View view;
    view.setPlainText(longLine());
    view.layOut(0);
    int updates = 0;
    connect(view.document()->documentLayout(), &QAbstractTextDocumentLayout::updateBlock, &view,
            [&updates](const QTextBlock &block) { updates += block.blockNumber() == 0 ? 1 : 0; });
    view.at(0, LongLineLayout::kLongLine).insertText(text("\nbelow"));
    QCOMPARE(updates, 1);
}

void LongLineLayoutTest::anotherLinesFormatsLeaveALongLineAlone()
{
    View view;
    view.setPlainText(text("above\n") + longLine() + text("\nbelow"));
    view.mark(1);
    QTextCharFormat red;
    red.setForeground(Qt::red);
    for (int number : {0, 2}) {
        const QTextBlock line = view.line(number);
        line.layout()->setFormats({{0, 5, red}});
        view.document()->markContentsDirty(line.position(), line.length());
        QVERIFY(view.isMarked(1));
    }
}

void LongLineLayoutTest::aLineRemovedAboveLeavesALongLineAlone()
{
    View view;
    view.setPlainText(text("first\nsecond\nthird\n") + longLine());
    view.mark(3);
    QTextCursor cursor = view.at(0, 0);
    cursor.setPosition(view.line(1).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(view.blockCount(), 3);
    QVERIFY(view.isMarked(2));
}

void LongLineLayoutTest::aChangeLaysALongLineOutAnew_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("removed");
    QTest::addColumn<QString>("inserted");
    constexpr int kEnd = LongLineLayout::kLongLine;
    QTest::newRow("typed at the start") << 0 << 0 << text("x");
    QTest::newRow("typed inside") << 5000 << 0 << text("x");
    QTest::newRow("typed at the end") << kEnd << 0 << text("x");
    QTest::newRow("typed and broken at the end") << kEnd << 0 << text("x\ny");
    QTest::newRow("broken inside") << 5000 << 0 << text("\n");
    QTest::newRow("cut") << kEnd - 3 << 3 << QString();
    QTest::newRow("joined with the next") << kEnd << 1 << QString();
    QTest::newRow("replaced by as much") << 0 << 4 << text("wide");
}

void LongLineLayoutTest::aChangeLaysALongLineOutAnew()
{
    QFETCH(int, place);
    QFETCH(int, removed);
    QFETCH(QString, inserted);
    View view;
    const auto expected = View::plain();
    view.setPlainText(longLine() + text("\nnext"));
    view.mark(0);
    QTextCursor cursor = view.at(0, place);
    cursor.setPosition(cursor.position() + removed, QTextCursor::KeepAnchor);
    cursor.insertText(inserted);
    QVERIFY(!view.isMarked(0));
    expected->setPlainText(view.toPlainText());
    compare(view, *expected);
}

void LongLineLayoutTest::aBlockThatTakesAnotherLineIsLaidOutAnew()
{
    constexpr int kLength = LongLineLayout::kLongLine;
    View view;
    const auto expected = View::plain();
    view.setPlainText(text("i").repeated(kLength) + text("\n") + text("W").repeated(kLength));
    view.mark(0);
    view.mark(1);
    QTextCursor cursor = view.at(0, 0);
    cursor.setPosition(view.line(1).position(), QTextCursor::KeepAnchor);
    cursor.insertText(text("\n"));
    expected->setPlainText(view.toPlainText());
    QCOMPARE(view.layOut(0).textLength(), 0);
    QVERIFY(!view.isMarked(1));
    compare(view, *expected);
}

void LongLineLayoutTest::theMiddleOfAnEditLaysNothingOut()
{
    View view;
    view.setPlainText(text("first"));
    QTextCursor cursor = view.at(0, 5);
    cursor.beginEditBlock();
    cursor.insertText(longLine());
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(cursor.position(), 5 + LongLineLayout::kLongLine);
    cursor.insertText(text("!\n") + longLine());
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(view.line(1).layout()->lineCount(), 0);
    cursor.endEditBlock();
    QCOMPARE(view.layOut(0).textLength(), 5 + LongLineLayout::kLongLine + 1);
    QCOMPARE(view.layOut(1).textLength(), LongLineLayout::kLongLine);
}

void LongLineLayoutTest::theShapesOfTheLastLinesAreKept()
{
    constexpr int kLength = LongLineLayout::kLongLine;
    View view(3 * (kLength + 1)); // of three lines with their ends
    view.setPlainText(kMoreThanAPage + longLine(kLength, text("\n")).repeated(4) + kMoreThanAPage);
    for (int number : {52, 51, 50, 53})
        view.layOut(number);
    QCOMPARE(view.line(52).layout()->lineCount(), 1);
    view.appendPlainText(text("more"));
    QCOMPARE(view.line(52).layout()->lineCount(), 0);
    for (int number : {50, 51, 53})
        QCOMPARE(view.line(number).layout()->lineCount(), 1);
    QCOMPARE(view.layOut(52).textLength(), kLength);
}

void LongLineLayoutTest::oneLineIsKeptWhateverItsLength()
{
    View view(100);
    view.setPlainText(kMoreThanAPage + longLine(LongLineLayout::kLongLine, text("\n")).repeated(2)
                      + kMoreThanAPage);
    view.layOut(50);
    view.mark(51);
    view.appendPlainText(text("more"));
    QVERIFY(view.isMarked(51));
    QCOMPARE(view.line(50).layout()->lineCount(), 0);
}

QTEST_MAIN(LongLineLayoutTest)
#include "LongLineLayoutTest.moc"
