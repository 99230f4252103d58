#include "view/TextAppender.h"

#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

/// appendPlainText(), one call a line, is what the text is compared with.
class TextAppenderTest : public QObject {
    Q_OBJECT

private slots:
    void theTextIsThatOfOneCallALine_data();
    void theTextIsThatOfOneCallALine();
    void randomTextIsThatOfOneCallALine();
    void nothingToAppendChangesNothing();
    void theCursorStays_data();
    void theCursorStays();
    void aCursorAtTheEndIsNotReportedAsMoved();
    void aChangeOfTextIsReported();
    void blockedSignalsStayBlocked();
    void aViewThatWasNotScrolledStaysAtTheTop();
    void aViewAtTheEndFollows();
    void aViewInTheMiddleStays();
    void sidewaysNothingMoves();
    void whatWasAppendedCannotBeUndone();
    void withoutUndoItStaysOff();

private:
    QStringList numbered(int count);
};

namespace {

void compareTexts(const QStringList &before, const QVector<QStringList> &batches)
{
    QPlainTextEdit batched;
    QPlainTextEdit single;
    for (const QString &line : before) {
        batched.appendPlainText(line);
        single.appendPlainText(line);
    }
    for (const QStringList &lines : batches) {
        TextAppender::append(batched, lines);
        for (const QString &line : lines)
            single.appendPlainText(line);
    }
    QCOMPARE(batched.document()->toRawText(), single.document()->toRawText());
    QCOMPARE(batched.blockCount(), single.blockCount());
}

} // namespace

QStringList TextAppenderTest::numbered(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QString::number(i);
    return lines;
}

void TextAppenderTest::theTextIsThatOfOneCallALine_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("lines");
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString none = QStringLiteral("");
    QTest::newRow("into an empty document") << QStringList{} << QStringList{a, b};
    QTest::newRow("behind a text") << QStringList{a} << QStringList{a, b};
    QTest::newRow("empty lines first") << QStringList{} << QStringList{none, none, a, none};
    QTest::newRow("only empty lines") << QStringList{} << QStringList{none, none};
    QTest::newRow("empty lines behind a text") << QStringList{a} << QStringList{none, none};
    QTest::newRow("line feeds inside") << QStringList{} << QStringList{QStringLiteral("a\nb"), a};
    QTest::newRow("only a line feed") << QStringList{} << QStringList{QStringLiteral("\n"), a};
    QTest::newRow("carriage return at the end")
        << QStringList{} << QStringList{QStringLiteral("a\r"), b};
    QTest::newRow("carriage return, then line feed")
        << QStringList{a} << QStringList{QStringLiteral("a\r"), QStringLiteral("\nb")};
    QTest::newRow("carriage return and line feed inside")
        << QStringList{} << QStringList{QStringLiteral("a\r\nb\r\n"), b};
    QTest::newRow("lone surrogates")
        << QStringList{} << QStringList{QString(QChar(0xDC82)), a + QChar(0xD800)};
}

void TextAppenderTest::theTextIsThatOfOneCallALine()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, lines);
    compareTexts(before, {lines});
}

void TextAppenderTest::randomTextIsThatOfOneCallALine()
{
    const QVector<QChar> alphabet{QLatin1Char('a'),  QLatin1Char(' '),  QLatin1Char('\t'),
                                  QLatin1Char('\n'), QLatin1Char('\r'), QChar(QChar::Null),
                                  QChar(0x00A0),     QChar(0x3042),     QChar(0x2028),
                                  QChar(0x2029),     QChar(0xFDD0),     QChar(0xFDD1),
                                  QChar(0xFFFC),     QChar(0xD83D),     QChar(0xDE00),
                                  QChar(0x0B),       QChar(0x05D0)};
    QRandomGenerator random(4711);
    for (int round = 0; round < 300; ++round) {
        QVector<QStringList> batches(random.bounded(1, 4));
        for (QStringList &lines : batches) {
            const int count = random.bounded(0, 5);
            for (int i = 0; i < count; ++i) {
                QString line;
                for (int length = random.bounded(0, 4); length > 0; --length)
                    line += alphabet.at(random.bounded(alphabet.size()));
                lines << line;
            }
        }
        compareTexts({}, batches);
        if (QTest::currentTestFailed())
            return;
    }
}

void TextAppenderTest::nothingToAppendChangesNothing()
{
    QPlainTextEdit view;
    view.setPlainText(QStringLiteral("a"));
    QSignalSpy changes(&view, &QPlainTextEdit::textChanged);
    TextAppender::append(view, {});
    QCOMPARE(changes.count(), 0);
    QCOMPARE(view.toPlainText(), QStringLiteral("a"));
}

void TextAppenderTest::theCursorStays_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::newRow("empty document") << QString() << 0 << 0;
    QTest::newRow("start") << QStringLiteral("ab\ncd") << 0 << 0;
    QTest::newRow("middle") << QStringLiteral("ab\ncd") << 3 << 3;
    QTest::newRow("end") << QStringLiteral("ab\ncd") << 5 << 5;
    QTest::newRow("selection up to the end") << QStringLiteral("ab\ncd") << 1 << 5;
    QTest::newRow("selection from the end") << QStringLiteral("ab\ncd") << 5 << 1;
    QTest::newRow("selection inside") << QStringLiteral("ab\ncd") << 1 << 4;
}

void TextAppenderTest::theCursorStays()
{
    QFETCH(QString, text);
    QFETCH(int, anchor);
    QFETCH(int, position);
    QPlainTextEdit view;
    view.setPlainText(text);
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    view.setTextCursor(cursor);

    TextAppender::append(view, {QStringLiteral("x"), QStringLiteral("y")});
    QCOMPARE(view.textCursor().anchor(), anchor);
    QCOMPARE(view.textCursor().position(), position);

    // It is an ordinary cursor again: typing moves it.
    view.insertPlainText(QStringLiteral("z"));
    QCOMPARE(view.textCursor().position(), std::min(anchor, position) + 1);
}

void TextAppenderTest::aCursorAtTheEndIsNotReportedAsMoved()
{
    QPlainTextEdit view;
    QSignalSpy moves(&view, &QPlainTextEdit::cursorPositionChanged);
    QSignalSpy selections(&view, &QPlainTextEdit::selectionChanged);
    TextAppender::append(view, {QStringLiteral("a"), QStringLiteral("b")});
    view.moveCursor(QTextCursor::End);
    QCOMPARE(moves.count(), 1);
    TextAppender::append(view, {QStringLiteral("c")});
    QCOMPARE(moves.count(), 1);
    QCOMPARE(selections.count(), 0);
}

void TextAppenderTest::aChangeOfTextIsReported()
{
    QPlainTextEdit view;
    QSignalSpy changes(&view, &QPlainTextEdit::textChanged);
    QSignalSpy counts(&view, &QPlainTextEdit::blockCountChanged);
    // Once with the cursor at the end, once with the end elsewhere.
    for (const int expected : {1, 2}) {
        TextAppender::append(view, {QStringLiteral("a"), QStringLiteral("b")});
        QCOMPARE(changes.count(), expected);
        QCOMPARE(counts.count(), expected);
        QCOMPARE(counts.last().first().toInt(), 2 * expected);
    }
}

void TextAppenderTest::blockedSignalsStayBlocked()
{
    QPlainTextEdit view;
    QSignalSpy changes(&view, &QPlainTextEdit::textChanged);
    view.blockSignals(true);
    TextAppender::append(view, {QStringLiteral("a")});
    QVERIFY(view.signalsBlocked());
    QCOMPARE(changes.count(), 0);
}

void TextAppenderTest::aViewThatWasNotScrolledStaysAtTheTop()
{
    QPlainTextEdit view;
    view.resize(300, 200);
    view.show();
    for (int i = 0; i < 5; ++i)
        TextAppender::append(view, numbered(100));
    QVERIFY(view.verticalScrollBar()->maximum() > 0);
    QCOMPARE(view.verticalScrollBar()->value(), 0);
}

void TextAppenderTest::aViewAtTheEndFollows()
{
    QPlainTextEdit view;
    view.resize(300, 200);
    view.show();
    TextAppender::append(view, numbered(100));
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    const int before = view.verticalScrollBar()->value();
    TextAppender::append(view, numbered(50));
    QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    QCOMPARE(view.verticalScrollBar()->value(), before + 50);
}

void TextAppenderTest::aViewInTheMiddleStays()
{
    QPlainTextEdit view;
    view.resize(300, 200);
    view.show();
    TextAppender::append(view, numbered(100));
    // With the cursor at the end, which would be made visible when it is set.
    view.moveCursor(QTextCursor::End);
    view.verticalScrollBar()->setValue(40);
    TextAppender::append(view, numbered(50));
    QCOMPARE(view.verticalScrollBar()->value(), 40);
}

void TextAppenderTest::sidewaysNothingMoves()
{
    QPlainTextEdit view;
    view.setLineWrapMode(QPlainTextEdit::NoWrap);
    view.resize(300, 200);
    view.show();
    TextAppender::append(view, {QString(500, QLatin1Char('x'))});
    view.horizontalScrollBar()->setValue(123);
    TextAppender::append(view, numbered(50));
    QCOMPARE(view.horizontalScrollBar()->value(), 123);
}

void TextAppenderTest::whatWasAppendedCannotBeUndone()
{
    QPlainTextEdit view;
    view.insertPlainText(QStringLiteral("typed"));
    TextAppender::append(view, {QStringLiteral("a")});
    QVERIFY(!view.document()->isUndoAvailable());
    view.undo();
    QCOMPARE(view.toPlainText(), QStringLiteral("typed\na"));

    // What is typed after it can.
    view.insertPlainText(QStringLiteral("!"));
    view.undo();
    QCOMPARE(view.toPlainText(), QStringLiteral("typed\na"));
}

void TextAppenderTest::withoutUndoItStaysOff()
{
    QPlainTextEdit view;
    view.setUndoRedoEnabled(false);
    TextAppender::append(view, {QStringLiteral("a")});
    QVERIFY(!view.isUndoRedoEnabled());
}

QTEST_MAIN(TextAppenderTest)

#include "TextAppenderTest.moc"
