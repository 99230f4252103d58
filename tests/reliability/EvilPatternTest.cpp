#include "engine/LineFinder.h"
#include "tests/engine_support/SearchCaseGenerator.h"
#include "view/CommentScanner.h"
#include "view/FindPattern.h"
#include "view/HighlightRules.h"

#include <QTest>

/// Patterns that are known to send a backtracking engine through an exponential
/// number of ways, on lines that almost match. A test that hangs here has found
/// one.
class EvilPatternTest : public QObject {
    Q_OBJECT

private slots:
    void aSearchEnds_data();
    void aSearchEnds();
    void theMarksOfAFindEnd_data();
    void theMarksOfAFindEnd();
    void aLanguageGivesALongLineUp_data();
    void aLanguageGivesALongLineUp();
    void aLongLineIsLeftBetweenTwoLooks_data();
    void aLongLineIsLeftBetweenTwoLooks();
};

namespace {

/// Far longer than any line of code.
constexpr int kLongText = 16384;

void addPatterns()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("ending");
    const auto row = [](const char *pattern, const char *ending) {
        QTest::newRow(pattern) << QString::fromLatin1(pattern) << QString::fromLatin1(ending);
    };
    row("(a*)*b", "b");
    row("(a+)+b", "b");
    row("(a|a)*b", "b");
    row("(a|aa)+b", "b");
    row("((a*)*)*b", "b");
    row("(.*)*x", "x");
    row("(a+a+)+y", "y");
    row("(a?){50}a{50}x", "x");
    row("(a*)\\1b", "b");
    row("(a*)*\\1b", "b");
    row("(.*)(.*)\\1\\2z", "z");
    row("^(([a-z])+.)+[A-Z]([a-z])+$", "Aa");
    row("(?!(a*)*b)c", "c");
    row("(?=(a+)+b)ab", "b");
}

QString almost(const QString &ending = QString())
{
    constexpr int kLength = 300;
    return QString(kLength, QLatin1Char('a')) + ending;
}

} // namespace

void EvilPatternTest::aSearchEnds_data()
{
    addPatterns();
}

void EvilPatternTest::aSearchEnds()
{
    QFETCH(QString, pattern);
    QFETCH(QString, ending);
    SearchCase made;
    made.condition.flg = SearchCondition::RegExpFlag;
    made.condition.keyword1 = pattern;
    made.codeSet = 4;
    made.content = QString(almost() + QLatin1Char('\n') + almost(ending)).toUtf8();
    const QStringList hits = made.hits();
    QCOMPARE(hits.size(), 1);
    QVERIFY(hits.first().startsWith(QLatin1String("      2:")));
}

void EvilPatternTest::theMarksOfAFindEnd_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *pattern : {"(a*)*b", "(a+)+b", "(a|aa)+b", "(.*)*x"})
        QTest::newRow(pattern) << QString::fromLatin1(pattern);
}

void EvilPatternTest::theMarksOfAFindEnd()
{
    QFETCH(QString, pattern);
    FindPattern::Options options;
    options.regexp = true;
    HighlightRules rules;
    rules.set(HighlightRules::findName(1), FindPattern::forKeyword(pattern, options),
              HighlightColour::Find1);
    // Longer than any line of code: marked piece by piece.
    const QString line = almost().repeated(kLongText / 300 + 1);
    int marks = 0;
    rules.visitMatches(line, HighlightRules::Group::Finds, line.size(),
                       [&marks](int, int, HighlightColour) { ++marks; });
    QCOMPARE(marks, 0);
}

void EvilPatternTest::aLanguageGivesALongLineUp_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char *pattern : {"(a|aa)+(?=c)", "(?!(a*)*b)c", "(a*)\\1c", "a.*c(?!.*b)"})
        QTest::newRow(pattern) << QString::fromLatin1(pattern);
}

/// As keyword and as each of the markers of comments.
void EvilPatternTest::aLanguageGivesALongLineUp()
{
    QFETCH(QString, pattern);
    const QRegExp evil(pattern);
    const QRegExp never(QStringLiteral("\\^"));
    const QString line = almost().repeated(kLongText / 300 + 1) + QLatin1Char('b');

    HighlightRules rules;
    rules.setPatience(0);
    rules.set(QStringLiteral("KeyWord_0"), evil, HighlightColour::Keyword);
    int parts = 0;
    rules.visitMatches(line, HighlightRules::Group::Language, line.size(),
                       [&parts](int, int, HighlightColour) { ++parts; });
    QCOMPARE(parts, 0);

    for (const CommentMarkers &markers :
         {CommentMarkers{evil, never, never}, CommentMarkers{never, evil, never},
          CommentMarkers{never, never, evil}}) {
        CommentScanner scanner(markers, StringLiterals());
        scanner.setPatience(0);
        CommentScanner::OpenComments open = {1};
        QCOMPARE(scanner.blockComments(line, open).size(), std::size_t(1));
        QCOMPARE(open.count(), 1);
        QCOMPARE(scanner.lineComment(line, {}), -1);
    }
}

void EvilPatternTest::aLongLineIsLeftBetweenTwoLooks_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isRuledOut");
    const auto row = [](const char *pattern, bool isRuledOut) {
        QTest::newRow(pattern) << QString::fromLatin1(pattern) << isRuledOut;
    };
    row("\\w+\\d", true);
    row("(a|a)*b$", true);
    row("(a*)*b", true);
    row("\\w+(?=\\d)", false);
    row("(a|a)+(?=b)", false);
    row("(?=(a+)+b)a+", false);
    row("(a+)\\1b", true);
    row("a+b?$", false);
}

/// Of marks and of both directions of a find. Taken at once, most of these lines
/// would take minutes, and some of them by looks.
void EvilPatternTest::aLongLineIsLeftBetweenTwoLooks()
{
    QFETCH(QString, pattern);
    QFETCH(bool, isRuledOut);
    constexpr int kEnoughLooks = 40;
    const int length = isRuledOut ? 1 << 20 : kLongText;
    const QString line = QString(length, QLatin1Char('a')) + QLatin1Char('-');
    const int pieces = line.size() / LineFinder::kPiece + 1;
    const QRegExp expression(pattern);

    HighlightRules rules;
    rules.set(HighlightRules::findName(1), expression, HighlightColour::Find1);
    const int turns = isRuledOut ? pieces : kEnoughLooks;
    for (int turn = 1; turn < turns; ++turn)
        QVERIFY(!rules.lookForMatches(line, line.size(), [] { return true; }));
    if (isRuledOut)
        QVERIFY(rules.lookForMatches(line, line.size(), [] { return true; }));

    LineFinder finder(expression);
    int at = line.size();
    for (int turn = 0; turn < turns; ++turn) {
        QVERIFY(at > 0);
        const LineFinder::Look look = finder.lookBackward(line, at, line.size());
        QVERIFY(!look.match.isValid());
        QVERIFY(look.next < at);
        at = look.next;
    }
    QCOMPARE(at == 0, isRuledOut);
}

QTEST_GUILESS_MAIN(EvilPatternTest)
#include "EvilPatternTest.moc"
