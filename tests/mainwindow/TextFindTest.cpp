#include "mainwindow/TextFind.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QtTest>

#include <cstdlib>

using Direction = TextFind::Direction;
using Options = TextFind::Options;
using Result = TextFind::Result;

Q_DECLARE_METATYPE(TextFind::Direction)
Q_DECLARE_METATYPE(TextFind::Options)

class TextFindTest : public QObject {
    Q_OBJECT

private slots:
    void theSwitchesDecideWhatMatches_data();
    void theSwitchesDecideWhatMatches();
    void ignoringCaseIsTheDefault();
    void forwardEachPlaceIsFoundOnce();
    void backwardEachPlaceIsFoundOnce();
    void directionsMeetOnTheSamePlaces();
    void aFindStartsBehindTheSelection();
    void aFindBackStartsBeforeTheSelection();
    void theOnlyPlaceIsFoundAgainAroundTheEnd();
    void aPlaceBeforeTheCursorIsFoundAroundTheEnd();
    void aPlaceBehindTheCursorIsFoundBackAroundTheStart();
    void withoutAPlaceTheCursorStays_data();
    void withoutAPlaceTheCursorStays();
    void aPatternThatIsNoneIsToldApart();
    void anEmptyMatchIsNone();
    void aLineStartMatchesOnlyThere();
    void placesThatAreFoundInTurnDoNotOverlap();
    void backwardAMatchThatReachesTheSelectionIsNotTaken();
    void aPatternStaysInOneLine();
    void thePlaceIsScrolledTo();
    void aLongTextTakesManySteps_data();
    void aLongTextTakesManySteps();
    void aLongLineTakesManySteps_data();
    void aLongLineTakesManySteps();
    void aLineThatBecomesShorterIsGoneThrough_data();
    void aLineThatBecomesShorterIsGoneThrough();
    void theWayAroundEndsWhereItBegan_data();
    void theWayAroundEndsWhereItBegan();
    void aMatchAcrossTheStartIsFoundLast();
    void linesThatComeBetweenTheStepsAreSearched();
    void aTextThatBecomesShorterHasNothingInIt();
    void aMovedCursorIsTold();
};

namespace {

QString selected(const QPlainTextEdit &view)
{
    return view.textCursor().selectedText();
}

void putCursor(QPlainTextEdit &view, int anchor, int position)
{
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    view.setTextCursor(cursor);
}

/// In as many steps as it takes.
Result find(QPlainTextEdit &view, const QString &text, Direction direction = Direction::Forward,
            const Options &options = Options(), int *steps = nullptr)
{
    TextFind find(&view, text, options, direction);
    Result result = Result::Searching;
    for (; result == Result::Searching; result = find.step(0)) {
        if (steps != nullptr)
            ++*steps;
    }
    if (result == Result::Found || result == Result::FoundAfterWrap)
        find.select();
    return result;
}

Result find(QPlainTextEdit &view, const char *text, Direction direction = Direction::Forward,
            const Options &options = Options())
{
    return find(view, QString::fromUtf8(text), direction, options);
}

Options regexp()
{
    return {false, false, true};
}

} // namespace

void TextFindTest::theSwitchesDecideWhatMatches_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Options>("options");
    QTest::addColumn<QString>("inText");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char *name, const char *text, const Options &options,
                        const char *inText, bool matches) {
        QTest::newRow(name) << QString::fromUtf8(text) << options << QString::fromUtf8(inText)
                            << matches;
    };
    row("case ignored", "abc", {true, false, false}, "xABCx", true);
    row("case told", "abc", {false, false, false}, "xABCx", false);
    row("case told, the same", "abc", {false, false, false}, "xabcx", true);
    row("word alone", "abc", {false, true, false}, "x abc.", true);
    row("no word", "abc", {false, true, false}, "abcd", false);
    row("pattern", "a.c", {false, false, true}, "axc", true);
    row("no pattern", "a.c", {false, false, false}, "axc", false);
    row("pattern's signs as text", "a.c[", {false, false, false}, "xa.c[", true);
    row("alternatives of words", "ab|cd", {false, true, true}, "x cd x", true);
    row("alternatives bound by words", "ab|cd", {false, true, true}, "xcd abx", false);
    row("Japanese", "検索", {true, false, false}, "を検索する", true);
}

void TextFindTest::theSwitchesDecideWhatMatches()
{
    QFETCH(QString, text);
    QFETCH(Options, options);
    QFETCH(QString, inText);
    QFETCH(bool, matches);
    QCOMPARE(TextFind::pattern(text, options).indexIn(inText) >= 0, matches);
}

void TextFindTest::ignoringCaseIsTheDefault()
{
    QCOMPARE(TextFind::pattern(QStringLiteral("a"), Options()).caseSensitivity(),
             Qt::CaseInsensitive);
}

void TextFindTest::forwardEachPlaceIsFoundOnce()
{
    QPlainTextEdit view(QStringLiteral("ab ab\n\nab"));
    for (const int expected : {0, 3, 7}) {
        QCOMPARE(find(view, "ab"), Result::Found);
        QCOMPARE(view.textCursor().selectionStart(), expected);
        QCOMPARE(selected(view), QStringLiteral("ab"));
    }
    QCOMPARE(find(view, "ab"), Result::FoundAfterWrap);
    QCOMPARE(view.textCursor().selectionStart(), 0);
}

void TextFindTest::backwardEachPlaceIsFoundOnce()
{
    QPlainTextEdit view(QStringLiteral("ab ab\n\nab"));
    view.moveCursor(QTextCursor::End);
    for (const int expected : {7, 3, 0}) {
        QCOMPARE(find(view, "ab", Direction::Backward), Result::Found);
        QCOMPARE(view.textCursor().selectionStart(), expected);
        QCOMPARE(selected(view), QStringLiteral("ab"));
    }
    QCOMPARE(find(view, "ab", Direction::Backward), Result::FoundAfterWrap);
    QCOMPARE(view.textCursor().selectionStart(), 7);
}

void TextFindTest::directionsMeetOnTheSamePlaces()
{
    QPlainTextEdit view(QStringLiteral("ab ab"));
    QCOMPARE(find(view, "ab"), Result::Found);
    QCOMPARE(find(view, "ab"), Result::Found);
    QCOMPARE(find(view, "ab", Direction::Backward), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 0);
}

void TextFindTest::aFindStartsBehindTheSelection()
{
    QPlainTextEdit view(QStringLiteral("ab ab ab"));
    // Whichever end of the selection the cursor is at.
    putCursor(view, 5, 1);
    QCOMPARE(find(view, "ab"), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 6);
}

void TextFindTest::aFindBackStartsBeforeTheSelection()
{
    QPlainTextEdit view(QStringLiteral("ab ab ab"));
    putCursor(view, 2, 7);
    QCOMPARE(find(view, "ab", Direction::Backward), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 0);
}

void TextFindTest::theOnlyPlaceIsFoundAgainAroundTheEnd()
{
    QPlainTextEdit view(QStringLiteral("x ab x"));
    QCOMPARE(find(view, "ab"), Result::Found);
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        QCOMPARE(find(view, "ab", direction), Result::FoundAfterWrap);
        QCOMPARE(view.textCursor().selectionStart(), 2);
    }
}

void TextFindTest::aPlaceBeforeTheCursorIsFoundAroundTheEnd()
{
    QPlainTextEdit view(QStringLiteral("ab\nx\nx"));
    view.moveCursor(QTextCursor::End);
    QCOMPARE(find(view, "ab"), Result::FoundAfterWrap);
    QCOMPARE(view.textCursor().selectionStart(), 0);
}

void TextFindTest::aPlaceBehindTheCursorIsFoundBackAroundTheStart()
{
    QPlainTextEdit view(QStringLiteral("x\nx\nab"));
    QCOMPARE(find(view, "ab", Direction::Backward), Result::FoundAfterWrap);
    QCOMPARE(view.textCursor().selectionStart(), 4);
}

void TextFindTest::withoutAPlaceTheCursorStays_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("not there") << QStringLiteral("zz");
    QTest::newRow("empty") << QString();
}

void TextFindTest::aPatternThatIsNoneIsToldApart()
{
    QPlainTextEdit view(QStringLiteral("a( ab\na( ab"));
    putCursor(view, 2, 4);
    // The second one is too complex to be tried.
    for (const char *invalid : {"a(", "(((a{999}){999}){999})"}) {
        for (const Direction direction : {Direction::Forward, Direction::Backward})
            QCOMPARE(find(view, invalid, direction, regexp()), Result::InvalidPattern);
    }
    QCOMPARE(view.textCursor().anchor(), 2);
    QCOMPARE(view.textCursor().position(), 4);
}

void TextFindTest::withoutAPlaceTheCursorStays()
{
    QFETCH(QString, text);
    QPlainTextEdit view(QStringLiteral("a( ab\na( ab"));
    putCursor(view, 2, 4);
    const QSignalSpy moves(&view, &QPlainTextEdit::cursorPositionChanged);
    for (const Direction direction : {Direction::Forward, Direction::Backward})
        QCOMPARE(find(view, text, direction, regexp()), Result::NotFound);
    QCOMPARE(view.textCursor().anchor(), 2);
    QCOMPARE(view.textCursor().position(), 4);
    QCOMPARE(moves.count(), 0);
}

void TextFindTest::anEmptyMatchIsNone()
{
    QPlainTextEdit view(QStringLiteral("bb\nab\nbb"));
    QCOMPARE(find(view, "a*", Direction::Forward, regexp()), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 3);
    QCOMPARE(selected(view), QStringLiteral("a"));
    view.moveCursor(QTextCursor::End);
    QCOMPARE(find(view, "a*", Direction::Backward, regexp()), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 3);
    QCOMPARE(find(view, "$", Direction::Forward, regexp()), Result::NotFound);
    QCOMPARE(find(view, "$", Direction::Backward, regexp()), Result::NotFound);
}

void TextFindTest::aLineStartMatchesOnlyThere()
{
    QPlainTextEdit view(QStringLiteral("aa\naa"));
    for (const int expected : {0, 3}) {
        QCOMPARE(find(view, "^a", Direction::Forward, regexp()), Result::Found);
        QCOMPARE(view.textCursor().selectionStart(), expected);
    }
    QCOMPARE(find(view, "^a", Direction::Forward, regexp()), Result::FoundAfterWrap);
}

void TextFindTest::placesThatAreFoundInTurnDoNotOverlap()
{
    QPlainTextEdit view(QStringLiteral("aaaa"));
    for (const int expected : {0, 2}) {
        QCOMPARE(find(view, "aa"), Result::Found);
        QCOMPARE(view.textCursor().selectionStart(), expected);
    }
    view.moveCursor(QTextCursor::End);
    for (const int expected : {2, 0}) {
        QCOMPARE(find(view, "aa", Direction::Backward), Result::Found);
        QCOMPARE(view.textCursor().selectionStart(), expected);
    }
}

void TextFindTest::backwardAMatchThatReachesTheSelectionIsNotTaken()
{
    QPlainTextEdit view(QStringLiteral("abc abc"));
    putCursor(view, 6, 6);
    QCOMPARE(find(view, "abc", Direction::Backward), Result::Found);
    QCOMPARE(view.textCursor().selectionStart(), 0);
}

void TextFindTest::aPatternStaysInOneLine()
{
    QPlainTextEdit view(QStringLiteral("ab\ncd"));
    QCOMPARE(find(view, "b\\s*c", Direction::Forward, regexp()), Result::NotFound);
    QCOMPARE(find(view, "b.*", Direction::Forward, regexp()), Result::Found);
    QCOMPARE(selected(view), QStringLiteral("b"));
}

void TextFindTest::thePlaceIsScrolledTo()
{
    QPlainTextEdit view;
    view.resize(300, 200);
    view.show();
    view.setPlainText(QStringLiteral("x\n").repeated(300) + QStringLiteral("ab"));
    QCOMPARE(view.verticalScrollBar()->value(), 0);
    QCOMPARE(find(view, "ab"), Result::Found);
    QVERIFY(view.verticalScrollBar()->value() > 0);
    QVERIFY(view.viewport()->rect().contains(view.cursorRect()));
}

void TextFindTest::aLongTextTakesManySteps_data()
{
    QTest::addColumn<Direction>("direction");
    QTest::newRow("forward") << Direction::Forward;
    QTest::newRow("backward") << Direction::Backward;
}

void TextFindTest::aLongTextTakesManySteps()
{
    QFETCH(Direction, direction);
    const bool forward = direction == Direction::Forward;
    const QString nothing = QStringLiteral("nothing\n").repeated(10000);
    QPlainTextEdit view(forward ? nothing + QStringLiteral("ab")
                                : QStringLiteral("ab\n") + nothing);
    view.moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    const int before = view.textCursor().position();
    const QSignalSpy moves(&view, &QPlainTextEdit::cursorPositionChanged);
    TextFind find(&view, QStringLiteral("ab"), Options(), direction);
    int steps = 1;
    for (; find.step(0) == Result::Searching; ++steps)
        QCOMPARE(view.textCursor().position(), before);
    QVERIFY(steps > 10);
    QCOMPARE(find.step(0), Result::Found);
    QCOMPARE(moves.count(), 0);
    find.select();
    QCOMPARE(selected(view), QStringLiteral("ab"));
    // Given the time, one step does it.
    view.moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    QCOMPARE(TextFind(&view, QStringLiteral("ab"), Options(), direction).step(60000),
             Result::Found);
}

void TextFindTest::aLongLineTakesManySteps_data()
{
    aLongTextTakesManySteps_data();
}

void TextFindTest::aLongLineTakesManySteps()
{
    QFETCH(Direction, direction);
    const bool forward = direction == Direction::Forward;
    constexpr int kPieces = 20;
    const QString nothing = QStringLiteral("a ").repeated(kPieces * LineFinder::kPiece / 2);
    QPlainTextEdit view(forward ? nothing + QStringLiteral("ab") : QStringLiteral("ab ") + nothing);
    view.moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    TextFind find(&view, QStringLiteral("a+(?=b)"), regexp(), direction);
    int steps = 1;
    while (find.step(0) == Result::Searching)
        ++steps;
    QVERIFY2(steps >= kPieces, qPrintable(QString::number(steps)));
    QCOMPARE(find.step(0), Result::Found);
    find.select();
    QCOMPARE(view.textCursor().selectionStart(), forward ? nothing.size() : 0);
    QCOMPARE(selected(view), QStringLiteral("a"));
}

void TextFindTest::aLineThatBecomesShorterIsGoneThrough_data()
{
    aLongTextTakesManySteps_data();
}

void TextFindTest::aLineThatBecomesShorterIsGoneThrough()
{
    QFETCH(Direction, direction);
    const bool forward = direction == Direction::Forward;
    QPlainTextEdit view(QStringLiteral("a ").repeated(10 * LineFinder::kPiece));
    view.moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    TextFind find(&view, QStringLiteral("a+(?=b)"), regexp(), direction);
    for (int step = 0; step < 5; ++step)
        QCOMPARE(find.step(0), Result::Searching);
    view.setPlainText(QStringLiteral("ab"));
    QCOMPARE(find.step(60000), Result::FoundAfterWrap);
}

void TextFindTest::theWayAroundEndsWhereItBegan_data()
{
    aLongTextTakesManySteps_data();
}

void TextFindTest::theWayAroundEndsWhereItBegan()
{
    QFETCH(Direction, direction);
    QPlainTextEdit view(QStringLiteral("nothing\n").repeated(20000));
    const auto stepsFrom = [&](int line) {
        view.setTextCursor(QTextCursor(view.document()->findBlockByNumber(line)));
        int steps = 0;
        const Result result = find(view, QStringLiteral("ab"), direction, Options(), &steps);
        return result == Result::NotFound ? steps : -1;
    };
    // Once through the text, wherever it begins.
    const int fromStart = stepsFrom(0);
    QVERIFY(fromStart > 10);
    for (const int line : {1, 5000, 10000, 15000, 20000})
        QVERIFY(std::abs(stepsFrom(line) - fromStart) <= 2);
}

void TextFindTest::aMatchAcrossTheStartIsFoundLast()
{
    QPlainTextEdit view(QStringLiteral("x\nx ab x\nx"));
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        putCursor(view, 5, 5);
        QCOMPARE(find(view, "ab", direction), Result::FoundAfterWrap);
        QCOMPARE(view.textCursor().selectionStart(), 4);
    }
    // Others in its line come first.
    view.setPlainText(QStringLiteral("ab ab ab"));
    putCursor(view, 4, 4);
    for (const int expected : {6, 0, 3}) {
        find(view, "ab");
        QCOMPARE(view.textCursor().selectionStart(), expected);
    }
}

void TextFindTest::linesThatComeBetweenTheStepsAreSearched()
{
    QPlainTextEdit view(QStringLiteral("nothing\n").repeated(1000));
    TextFind find(&view, QStringLiteral("ab"), Options(), Direction::Forward);
    QCOMPARE(find.step(0), Result::Searching);
    QTextCursor end(view.document());
    end.movePosition(QTextCursor::End);
    end.insertText(QStringLiteral("\nab"));
    Result result = find.step(0);
    while (result == Result::Searching)
        result = find.step(0);
    QCOMPARE(result, Result::Found);
    find.select();
    QCOMPARE(view.textCursor().blockNumber(), 1001);
}

void TextFindTest::aTextThatBecomesShorterHasNothingInIt()
{
    for (const Direction direction : {Direction::Forward, Direction::Backward}) {
        QPlainTextEdit view(QStringLiteral("nothing\n").repeated(1000));
        view.setTextCursor(QTextCursor(view.document()->findBlockByNumber(500)));
        TextFind find(&view, QStringLiteral("ab"), Options(), direction);
        QCOMPARE(find.step(0), Result::Searching);
        view.setPlainText(QStringLiteral("x"));
        QCOMPARE(find.step(60000), Result::NotFound);
    }
}

void TextFindTest::aMovedCursorIsTold()
{
    QPlainTextEdit view(QStringLiteral("one ab two"));
    putCursor(view, 1, 3);
    const TextFind find(&view, QStringLiteral("ab"), Options(), Direction::Forward);
    QVERIFY(find.isCursorUntouched());
    putCursor(view, 2, 3);
    QVERIFY(!find.isCursorUntouched());
    putCursor(view, 1, 4);
    QVERIFY(!find.isCursorUntouched());
    putCursor(view, 1, 3);
    QVERIFY(find.isCursorUntouched());
}

QTEST_MAIN(TextFindTest)

#include "TextFindTest.moc"
