#include "view/CommentScanner.h"

#include <QStringList>
#include <QTest>

#include <limits>
#include <random>

class CommentScannerTest : public QObject {
    Q_OBJECT

private slots:
    void commentsOfLines_data();
    void commentsOfLines();
    void aLineTellsItsOwnFromThoseOfLinesBefore();
    void linesThatOpenAgainAreInnermost();
    void aSecondCommentOfALineIsOpenToo();
    void aStartMarkerBehindAClosedCommentCounts();
    void aLineCommentBeginsOutsideBlockComments();
    void aLineCommentMarkerInALiteralIsNone();
    void withoutASingleLineMarkerThereIsNoLineComment();
    void quotesInCommentsOpenNoLiteral();
    void markersOfOneTextOpenAndClose();
    void aMarkerThatMatchesNothingNeverOpens();
    void aLongLineIsWalkedOnce();
    void aLongLineHasTheCommentsOfAShortOne_data();
    void aLongLineHasTheCommentsOfAShortOne();
    void markersInLiteralsAreWalkedOnce();
    void aLineThatTakesTooLongHasNoFurtherMarkers();
    void aShortLineIsNeverGivenUp();
    void anyLinesAreSurvived();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

CommentScanner scanner(const char *single = "//", const char *start = "/\\*",
                       const char *end = "\\*/")
{
    CommentScanner made({QRegExp(text(single)), QRegExp(text(start)), QRegExp(text(end))},
                        StringLiterals());
    // However slow the machine is.
    made.setPatience(std::numeric_limits<int>::max());
    return made;
}

/// One text a line: "b" in a block comment, "." outside.
QStringList commentsOf(const CommentScanner &scanner, const QStringList &lines,
                       CommentScanner::OpenComments &open)
{
    QStringList result;
    for (const QString &line : lines) {
        QString letters(line.size(), QLatin1Char('.'));
        open = {open.count()};
        for (const TextSpan &span : scanner.blockComments(line, open)) {
            for (int i = span.start; i < span.end; ++i)
                letters[i] = QLatin1Char('b');
        }
        result.append(letters);
    }
    return result;
}

/// The comments that are still open: those of the lines before, those of the last.
QPair<int, int> openAfter(const QStringList &lines)
{
    CommentScanner::OpenComments open;
    commentsOf(scanner(), lines, open);
    return {open.before, open.here};
}

QStringList split(const QString &lines)
{
    return lines.split(QLatin1Char('\n'));
}

} // namespace

void CommentScannerTest::commentsOfLines_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("comments");
    const auto row = [](const char *name, const char *lines, const char *comments) {
        QTest::newRow(name) << text(lines) << text(comments);
    };

    row("none", "a b", "...");
    row("on one line", "a/*b*/c", ".bbbbb.");
    row("nothing inside", "/**/a", "bbbb.");
    row("the end marker is no part of the start", "/*/a", "bbbb");
    row("two on one line", "/*a*/b/*c*/d", "bbbbb.bbbbb.");
    row("over two lines", "a/*b\nc*/d", ".bbb\nbbb.");
    row("over three lines", "/*\nabc\n*/d", "bb\nbbb\nbb.");
    row("an empty line inside", "/*\n\na*/b", "bb\n\nbbb.");
    row("opened twice, closed once", "/*\n/*\n*/\na", "bb\nbb\nbb\nb");
    row("opened twice, closed twice", "/*\n/*\n*/\n*/a", "bb\nbb\nbb\nbb.");
    row("opened twice, both closed on one line", "/*\n/*\na*/b*/c", "bb\nbb\nbbbbbb.");
    row("opened three times, two closed on one line", "/*\n/*\n/*\n*/*/a", "bb\nbb\nbb\nbbbbb");
    row("a start on its line's first comment is inside it", "/*a/*b*/c", "bbbbbbbb.");
    row("a start before the end of an open comment does not count", "/*\na/*b*/c\nd",
        "bb\nbbbbbb.\n.");
    row("an end before a start", "/*\na*/b/*c\nd", "bb\nbbb.bbb\nb");
    row("an end without a start", "a*/b", "....");
    row("an end without a start, then a comment", "*/ /*a*/", "...bbbbb");
    row("a start in a string", "\"/*\"\na", "....\n.");
    row("a start in a single-quoted string", "'/*'\na", "....\n.");
    row("a start behind a string", "\"/*\"/*a", "....bbb");
    row("a start in a string without end", "\"a /*\nb", ".....\n.");
    row("a start behind an apostrophe's string", "don't \"a /*\nb", "...........\n.");
    row("a quote without end hides no end", "/* 19\" */a\nb", "bbbbbbbbb.\n.");
    row("an end in a string", "/*\n\"*/\"*/a", "bb\nbbbbbb.");
    row("an apostrophe hides no end", "/* don't */a", "bbbbbbbbbbb.");
    row("an apostrophe hides no start", "don't /*a*/", "......bbbbb");
    row("a start behind a line comment", "a//b/*c\nd", ".......\n.");
    row("a line comment behind a start", "/*a//b\nc*/d", "bbbbbb\nbbb.");
    row("an end behind a line comment's marker", "/*\na//b*/\nc", "bb\nbbbbbb\nb");
    row("an end before a line comment", "/*\na*/b//c", "bb\nbbb....");
    row("a line comment's marker in a string", "\"//\"/*a", "....bbb");
    row("strings around a comment", "\"a\" /*b*/ \"c\"", "....bbbbb....");
}

void CommentScannerTest::commentsOfLines()
{
    QFETCH(QString, lines);
    QFETCH(QString, comments);
    CommentScanner::OpenComments open;
    QCOMPARE(commentsOf(scanner(), split(lines), open), split(comments));
}

void CommentScannerTest::aLineTellsItsOwnFromThoseOfLinesBefore()
{
    QCOMPARE(openAfter(split(text("a\n/*"))), qMakePair(0, 1));
    QCOMPARE(openAfter(split(text("a\n/*\nb"))), qMakePair(1, 0));
    QCOMPARE(openAfter(split(text("a\n/*\nb*/"))), qMakePair(0, 0));
}

void CommentScannerTest::linesThatOpenAgainAreInnermost()
{
    QCOMPARE(openAfter(split(text("/*\n\n/*\n/*"))), qMakePair(2, 1));
    QCOMPARE(openAfter(split(text("/*\n\n/*\n/*\n*/"))), qMakePair(2, 0));
}

void CommentScannerTest::aSecondCommentOfALineIsOpenToo()
{
    QCOMPARE(openAfter(split(text("/**/ /*"))), qMakePair(0, 1));
    QCOMPARE(openAfter(split(text("/**/ /**/"))), qMakePair(0, 0));
}

void CommentScannerTest::aStartMarkerBehindAClosedCommentCounts()
{
    QCOMPARE(openAfter(split(text("/*\n*/ /*"))), qMakePair(0, 1));
}

void CommentScannerTest::aLineCommentBeginsOutsideBlockComments()
{
    const CommentScanner all = scanner();
    const QString line = text("/*//*/ a//b");
    QCOMPARE(all.lineComment(line, {{0, 6}}), 8);
    QCOMPARE(all.lineComment(line, {{0, line.size()}}), -1);
    QCOMPARE(all.lineComment(line, {}), 2);
    QCOMPARE(all.lineComment(text("a"), {}), -1);
}

void CommentScannerTest::aLineCommentMarkerInALiteralIsNone()
{
    QCOMPARE(scanner().lineComment(text("\"a//b\" //c"), {}), 7);
    QCOMPARE(scanner().lineComment(text("'a//b'"), {}), -1);
    QCOMPARE(scanner().lineComment(text("don't //c"), {}), 6);
}

void CommentScannerTest::withoutASingleLineMarkerThereIsNoLineComment()
{
    QCOMPARE(scanner("").lineComment(text("a//b"), {}), -1);
    CommentScanner::OpenComments open;
    QCOMPARE(commentsOf(scanner(""), split(text("//a/*b")), open), split(text("...bbb")));
}

void CommentScannerTest::quotesInCommentsOpenNoLiteral()
{
    const QString line = text("a \"b\" /* \"c */ \"d\" // \"e\"");
    const std::vector<StringLiteral> literals =
        scanner().stringLiterals(line, {{6, 14}}, line.indexOf(text("//")));
    QCOMPARE(literals.size(), std::size_t(2));
    QCOMPARE(literals[0].span, (TextSpan{2, 5}));
    QCOMPARE(literals[1].span, (TextSpan{15, 18}));
}

void CommentScannerTest::markersOfOneTextOpenAndClose()
{
    const CommentScanner quotes = scanner("#", "\"\"\"", "\"\"\"");
    CommentScanner::OpenComments open;
    QCOMPARE(commentsOf(quotes, split(text("a\"\"\"b\nc\nd\"\"\"e\nf\"\"\"g\"\"\"h")), open),
             split(text(".bbbb\nb\nbbbb.\n.bbbbbbb.")));
    QVERIFY(open.isEmpty());
}

void CommentScannerTest::aMarkerThatMatchesNothingNeverOpens()
{
    CommentScanner::OpenComments open;
    const QStringList lines = split(text("a\n\nb"));
    QCOMPARE(commentsOf(scanner("#", "x*", "y*"), lines, open), split(text(".\n\n.")));
    QCOMPARE(commentsOf(scanner("#", "$.", "$."), lines, open), split(text(".\n\n.")));
    QVERIFY(open.isEmpty());
}

void CommentScannerTest::aLongLineIsWalkedOnce()
{
    // Takes minutes when every comment looks through the rest of the line.
    const int count = 100000;
    CommentScanner::OpenComments open;
    const QString line = text("/*a*/ \"b\" ").repeated(count);
    const std::vector<TextSpan> comments = scanner().blockComments(line, open);
    QCOMPARE(comments.size(), std::size_t(count));
    QCOMPARE(scanner().lineComment(line, comments), -1);
}

void CommentScannerTest::aLongLineHasTheCommentsOfAShortOne_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("lineComment"); // at this unit of the line; -1 for none
    QTest::addColumn<int>("opened");
    const auto row = [](const char *name, const char *unit, const char *ending, int lineComment,
                        int opened) {
        QTest::newRow(name) << text(unit) << text(ending) << lineComment << opened;
    };
    row("markers of line comments", "// x ", "", 0, 0);
    row("with an end behind them", "// x ", "*/", -1, 0);
    row("addresses", "a(\"http://x\");", "*/", -1, 0);
    row("addresses outside literals", "a(http://x);", "*/", -1, 0);
    row("a start behind them", "http://x ", "*/ /*", -1, 1);
    row("starts", "/* ", "", -1, 1);
    row("comments", "/**/", "", -1, 0);
    row("comments, and a start", "/**/", "/*", -1, 1);
    row("apostrophes in comments", "/* don't */ ", "", -1, 0);
}

/// Most of these lines would take hours if each marker looked through the rest.
void CommentScannerTest::aLongLineHasTheCommentsOfAShortOne()
{
    QFETCH(QString, unit);
    QFETCH(QString, ending);
    QFETCH(int, lineComment);
    QFETCH(int, opened);
    const CommentScanner patient = scanner("//(?!.*\\*/)");
    for (const int count : {20, 200000}) {
        const QString line = unit.repeated(count) + ending;
        CommentScanner::OpenComments open;
        const std::vector<TextSpan> blocks = patient.blockComments(line, open);
        QCOMPARE(patient.lineComment(line, blocks), lineComment);
        QCOMPARE(open.count(), opened);
        open = {1};
        patient.blockComments(line, open);
        QCOMPARE(open.count() > 0, !line.contains(text("*/")) || line.endsWith(text("/*")));
    }
}

void CommentScannerTest::markersInLiteralsAreWalkedOnce()
{
    // Takes hours when every comment goes through all the literals behind it.
    constexpr int kCount = 100000;
    const CommentScanner patient = scanner();
    CommentScanner::OpenComments open;
    const QString line = text("/* a */ '//' ").repeated(kCount);
    QCOMPARE(patient.blockComments(line, open).size(), std::size_t(kCount));
}

void CommentScannerTest::aLineThatTakesTooLongHasNoFurtherMarkers()
{
    // Would take hours.
    CommentScanner slow = scanner("\\w+(?=#)");
    slow.setPatience(0);
    const QString line = text("a").repeated(1 << 20) + text("/*");
    CommentScanner::OpenComments open;
    QVERIFY(slow.blockComments(line, open).empty());
    QVERIFY(open.isEmpty());
    QCOMPARE(slow.lineComment(line, {}), -1);
    open = {1};
    QCOMPARE(slow.blockComments(line, open), std::vector<TextSpan>({{0, line.size()}}));
    QCOMPARE(open.count(), 1);
}

void CommentScannerTest::aShortLineIsNeverGivenUp()
{
    CommentScanner impatient = scanner("\\w+(?=#)");
    impatient.setPatience(0);
    const QString line = text("a").repeated(LinePattern::kShortLine - 2) + text("/*");
    CommentScanner::OpenComments open;
    QCOMPARE(impatient.blockComments(line, open).size(), std::size_t(1));
    QCOMPARE(open.count(), 1);
}

void CommentScannerTest::anyLinesAreSurvived()
{
    static const char *const pieces[] = {"/*", "*/", "//", "\"", "'", "a", " ", "/", "*", "x"};
    const CommentScanner scanners[] = {scanner(), scanner("x?", "/\\*|x*", "\\*/|a?"),
                                       scanner("", "\"\"|a", "'|a"), scanner("[", "(", "*")};
    std::mt19937 random(5);
    for (const CommentScanner &each : scanners) {
        CommentScanner::OpenComments open;
        for (int number = 0; number < 2000; ++number) {
            QString line;
            for (int length = static_cast<int>(random() % 20); length > 0; --length)
                line += text(pieces[random() % std::size(pieces)]);
            int end = 0;
            open = {open.count()};
            for (const TextSpan &span : each.blockComments(line, open)) {
                QVERIFY(span.start >= end && span.start <= span.end);
                end = span.end;
            }
            QVERIFY(end <= line.size());
        }
    }
}

QTEST_GUILESS_MAIN(CommentScannerTest)
#include "CommentScannerTest.moc"
