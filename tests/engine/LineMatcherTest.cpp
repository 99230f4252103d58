#include "engine/LineMatcher.h"

#include "engine/PatternLimits.h"
#include "tests/engine/MatcherText.h"

#include <QTest>

#include <limits>

using namespace MatcherText;

/// Which lines hold keyword1, and how they are reported.
class LineMatcherTest : public QObject {
    Q_OBJECT

private slots:
    void linesAreNumberedFromOneAndReportedInOrder();
    void aLineIsReportedOnceWithItsFirstOccurrence();
    void theLastLineNeedsNoLineFeed();
    void theEmptyLineAfterTheLastLineFeedIsNoHit();
    void onlyTheLineFeedEndsALine();
    void aCarriageReturnStaysPartOfTheLine();
    void anEmptyTextHasNoHit();
    void anEmptyLineIsNeverReported_data();
    void anEmptyLineIsNeverReported();
    void anEmptyKeywordIsFoundOnEveryLineWithText();
    void aPlainKeywordIsNoPattern();
    void aLongPlainKeywordIsNotParsed();
    void caseCountsInAllThreeKeywordsUnlessIgnored_data();
    void caseCountsInAllThreeKeywordsUnlessIgnored();
    void otherBitsOfTheFlagsAreIgnored();
    void aPatternIsReportedWhereItFirstMatches();
    void anInvalidPatternNeverMatches_data();
    void anInvalidPatternNeverMatches();
    void theColumnIsThatOfTheFirstPlainOccurrence();
    void aWholeWordIsAPieceBetweenWordBoundaries_data();
    void aWholeWordIsAPieceBetweenWordBoundaries();
    void aWholeWordMindsTheCaseUnlessIgnored();
    void anEmptyWholeWordIsFoundNextToAWordAtALinesEnd();
    void aPatternInWordModeIsWrappedInBoundaries();
    void wordModeLeavesTheOtherKeywordsAlone();
    void columnsFollowTabsAndFullWidthText_data();
    void columnsFollowTabsAndFullWidthText();
    void aTabWidthBelowOneCountsAsOne();
    void aPatternIsNotTriedOnceItIsStopped();
    void plainLinesAskSeldomWhetherToStop();
};

void LineMatcherTest::linesAreNumberedFromOneAndReportedInOrder()
{
    const QString text = QStringLiteral("foo\nbar\n\na foo\nfoo b");
    QCOMPARE(
        hitsOf(QStringLiteral("foo"), 0, text),
        QStringList({QStringLiteral("      1:    1:foo"), QStringLiteral("      4:    3:a foo"),
                     QStringLiteral("      5:    1:foo b")}));
    QString many;
    for (int i = 1; i < 100000; ++i)
        many += QLatin1Char('\n');
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, many + QStringLiteral("foo")),
             QStringList{QStringLiteral("  100000:    1:foo")});
}

void LineMatcherTest::aLineIsReportedOnceWithItsFirstOccurrence()
{
    const QString line = QStringLiteral("a foo foo foo");
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, line), QStringList{hit(1, 3, line)});
    QCOMPARE(hitsOf(QStringLiteral("fo+"), kRegExp, line), QStringList{hit(1, 3, line)});
}

void LineMatcherTest::theLastLineNeedsNoLineFeed()
{
    const QStringList expected{hit(2, 1, QStringLiteral("foo"))};
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, QStringLiteral("a\nfoo")), expected);
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, QStringLiteral("a\nfoo\n")), expected);
}

void LineMatcherTest::theEmptyLineAfterTheLastLineFeedIsNoHit()
{
    QCOMPARE(hitsOf(QStringLiteral("x*"), kRegExp, QStringLiteral("a\n")),
             QStringList{hit(1, 1, QStringLiteral("a"))});
    QCOMPARE(hitsOf(QString(), 0, QStringLiteral("a\n")),
             QStringList{hit(1, 1, QStringLiteral("a"))});
}

void LineMatcherTest::onlyTheLineFeedEndsALine()
{
    const QString line = QStringLiteral("a\rb\vc\fd\u0085e\u2028f\u2029foo");
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, line), QStringList{hit(1, 16, line)});
    // A keyword cannot reach over the end of a line.
    QCOMPARE(hitsOf(QStringLiteral("a\nb"), 0, QStringLiteral("a\nb")), QStringList());
    QCOMPARE(hitsOf(QStringLiteral("a\\s*b"), kRegExp, QStringLiteral("a\nb")), QStringList());
}

void LineMatcherTest::aCarriageReturnStaysPartOfTheLine()
{
    const QString line = QStringLiteral("a foo\r");
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, line + QLatin1Char('\n')),
             QStringList{hit(1, 3, line)});
    QCOMPARE(hitsOf(QStringLiteral("foo$"), kRegExp, line), QStringList());
    QCOMPARE(hitsOf(QStringLiteral("\r"), 0, line), QStringList{hit(1, 6, line)});
    // A line of nothing else is no empty line.
    QCOMPARE(hitsOf(QStringLiteral("x*"), kRegExp, QStringLiteral("\r\n")),
             QStringList{hit(1, 1, QStringLiteral("\r"))});
}

void LineMatcherTest::anEmptyTextHasNoHit()
{
    QCOMPARE(hitsOf(QStringLiteral("foo"), 0, QString()), QStringList());
    QCOMPARE(hitsOf(QString(), 0, QString()), QStringList());
    QCOMPARE(hitsOf(QStringLiteral("^$"), kRegExp, QString()), QStringList());
}

void LineMatcherTest::anEmptyLineIsNeverReported_data()
{
    QTest::addColumn<QString>("keyword1");
    QTest::addColumn<QString>("keyword2");
    QTest::addColumn<int>("flg");
    QTest::newRow("pattern of an empty line") << "^$" << QString() << kRegExp;
    QTest::newRow("pattern that may be empty") << "q*" << QString() << kRegExp;
    QTest::newRow("empty keyword") << QString() << QString() << 0;
    QTest::newRow("confirmed by a later line") << "^$"
                                               << "b" << kRegExp;
    QTest::newRow("in place of an earlier hit") << "^a|^$"
                                                << "b" << kRegExp;
}

void LineMatcherTest::anEmptyLineIsNeverReported()
{
    QFETCH(QString, keyword1);
    QFETCH(QString, keyword2);
    QFETCH(int, flg);
    SearchCondition condition = conditionOf(keyword1, flg);
    condition.keyword2 = keyword2;
    condition.plusline = 5;
    const QStringList hits = hitsOf(condition, QStringLiteral("a\n\nb\n\n"));
    for (const QString &reported : hits)
        QVERIFY2(!reported.endsWith(QLatin1Char(':')), qPrintable(reported));
    if (!keyword2.isEmpty())
        QCOMPARE(hits, QStringList());
}

void LineMatcherTest::anEmptyKeywordIsFoundOnEveryLineWithText()
{
    const QStringList expected{hit(1, 1, QStringLiteral("a")), hit(3, 1, QStringLiteral("\tb"))};
    QCOMPARE(hitsOf(QString(), 0, QStringLiteral("a\n\n\tb\n")), expected);
    QCOMPARE(hitsOf(QLatin1String(""), kRegExp, QStringLiteral("a\n\n\tb\n")), expected);
}

void LineMatcherTest::aPlainKeywordIsNoPattern()
{
    QCOMPARE(hitsOf(QStringLiteral("a.c"), 0, QStringLiteral("abc\na.c")),
             QStringList{hit(2, 1, QStringLiteral("a.c"))});
    QCOMPARE(hitsOf(QStringLiteral("(["), 0, QStringLiteral("x([")),
             QStringList{hit(1, 2, QStringLiteral("x(["))});
    QCOMPARE(hitsOf(QStringLiteral(" a "), 0, QStringLiteral("a\n a\nb a b")),
             QStringList{hit(3, 2, QStringLiteral("b a b"))});
}

void LineMatcherTest::aLongPlainKeywordIsNotParsed()
{
    // As a pattern it would nest deeper than the stack is high.
    const QString brackets(100000, QLatin1Char('('));
    for (const int flg : {0, kWord, kIgnoreCase}) {
        SearchCondition condition = conditionOf(brackets, flg);
        condition.keyword2 = brackets;
        condition.keyword3 = brackets + QLatin1Char(')');
        const QString line = brackets + QLatin1Char(' ');
        // Between brackets there is no word boundary.
        const QStringList expected{hit(1, 1, flg == kWord ? brackets : line)};
        QCOMPARE(hitsOf(condition, flg == kWord ? brackets : line), expected);
    }
}

void LineMatcherTest::caseCountsInAllThreeKeywordsUnlessIgnored_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("lower");
    QTest::addColumn<QString>("upper");
    QTest::newRow("plain") << 0 << "foo"
                           << "FOO";
    QTest::newRow("plain, one letter") << 0 << "foo"
                                       << "Foo";
    QTest::newRow("pattern") << kRegExp << "f[o]+"
                             << "FOO";
    QTest::newRow("word") << kWord << "foo"
                          << "FOO";
    QTest::newRow("pattern in word mode") << (kRegExp | kWord) << "foo"
                                          << "FOO";
    QTest::newRow("plain, full-width") << 0 << QStringLiteral("ａｂ") << QStringLiteral("ＡＢ");
    QTest::newRow("pattern, full-width")
        << kRegExp << QStringLiteral("ａｂ") << QStringLiteral("ＡＢ");
    QTest::newRow("plain, Greek") << 0 << QStringLiteral("αβ") << QStringLiteral("ΑΒ");
}

void LineMatcherTest::caseCountsInAllThreeKeywordsUnlessIgnored()
{
    QFETCH(int, mode);
    QFETCH(QString, lower);
    QFETCH(QString, upper);
    SearchCondition condition = conditionOf(lower, mode);
    QCOMPARE(hitsOf(condition, upper), QStringList());
    condition.flg = mode | kIgnoreCase;
    QCOMPARE(hitsOf(condition, upper), QStringList{hit(1, 1, upper)});

    const QString line = QLatin1String("key ") + upper;
    condition = conditionOf(QStringLiteral("key"), mode);
    condition.keyword2 = lower;
    QCOMPARE(hitsOf(condition, line), QStringList());
    condition.flg = mode | kIgnoreCase;
    QCOMPARE(hitsOf(condition, line), QStringList{hit(1, 1, line)});

    condition = conditionOf(QStringLiteral("key"), mode);
    condition.keyword3 = lower;
    QCOMPARE(hitsOf(condition, line), QStringList{hit(1, 1, line)});
    condition.flg = mode | kIgnoreCase;
    QCOMPARE(hitsOf(condition, line), QStringList());
}

void LineMatcherTest::otherBitsOfTheFlagsAreIgnored()
{
    const int others = ~(kRegExp | kWord | kIgnoreCase);
    QCOMPARE(hitsOf(QStringLiteral("a."), others, QStringLiteral("ab\nA.\nxa.x")),
             QStringList{hit(3, 2, QStringLiteral("xa.x"))});
    QCOMPARE(hitsOf(QStringLiteral("a."), others | kRegExp, QStringLiteral("ab")),
             QStringList{hit(1, 1, QStringLiteral("ab"))});
}

void LineMatcherTest::aPatternIsReportedWhereItFirstMatches()
{
    QCOMPARE(hitsOf(QStringLiteral("[0-9]+"), kRegExp, QStringLiteral("ab 12 34")),
             QStringList{hit(1, 4, QStringLiteral("ab 12 34"))});
    QCOMPARE(hitsOf(QStringLiteral("^b"), kRegExp, QStringLiteral("ab\nba")),
             QStringList{hit(2, 1, QStringLiteral("ba"))});
    QCOMPARE(hitsOf(QStringLiteral("b$"), kRegExp, QStringLiteral("bab\nba")),
             QStringList{hit(1, 3, QStringLiteral("bab"))});
    QCOMPARE(hitsOf(QStringLiteral("(a|b)\\1"), kRegExp, QStringLiteral("ab\nabb")),
             QStringList{hit(2, 2, QStringLiteral("abb"))});
    QCOMPARE(hitsOf(QStringLiteral("あ.う"), kRegExp, QStringLiteral("xあいう")),
             QStringList{hit(1, 2, QStringLiteral("xあいう"))});
}

void LineMatcherTest::anInvalidPatternNeverMatches_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::newRow("unclosed group") << "(a";
    QTest::newRow("unopened group") << "a)";
    QTest::newRow("unclosed set") << "[a";
    QTest::newRow("quantifier without an item") << "*a";
    QTest::newRow("repetition upside down") << "a{3,1}";
    QTest::newRow("deep groups") << QString(12000, QLatin1Char('(')) + QLatin1Char('a')
            + QString(12000, QLatin1Char(')'));
    QTest::newRow("counts of counts") << "(((a{999}){999}){999})";
}

void LineMatcherTest::anInvalidPatternNeverMatches()
{
    QFETCH(QString, pattern);
    QVERIFY(!PatternLimits::compiled(pattern, Qt::CaseSensitive).isValid());
    const QString text = pattern + QStringLiteral("\na\n(a\naaa");
    QCOMPARE(hitsOf(pattern, kRegExp, text), QStringList());
    QCOMPARE(hitsOf(pattern, kRegExp | kIgnoreCase, text), QStringList());

    SearchCondition condition = conditionOf(QStringLiteral("aaa"), kRegExp);
    condition.keyword2 = pattern;
    QCOMPARE(hitsOf(condition, text), QStringList());
    condition.keyword2.clear();
    condition.keyword3 = pattern;
    QCOMPARE(hitsOf(condition, text), QStringList{hit(4, 1, QStringLiteral("aaa"))});
}

void LineMatcherTest::theColumnIsThatOfTheFirstPlainOccurrence()
{
    QCOMPARE(
        hitsOf(QStringLiteral("ab"), kWord, QStringLiteral("xab ab\nxab\nab xab")),
        QStringList({hit(1, 2, QStringLiteral("xab ab")), hit(3, 1, QStringLiteral("ab xab"))}));
}

void LineMatcherTest::aWholeWordIsAPieceBetweenWordBoundaries_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("found");
    const QString ab = QStringLiteral("ab");
    QTest::newRow("the whole line") << ab << "ab" << true;
    QTest::newRow("between blanks") << ab << "x ab y" << true;
    QTest::newRow("between signs") << ab << "(ab)" << true;
    QTest::newRow("after a hyphen") << ab << "x-ab" << true;
    QTest::newRow("before a letter") << ab << "abc" << false;
    QTest::newRow("before a digit") << ab << "ab1" << false;
    QTest::newRow("before an underscore") << ab << "ab_" << false;
    QTest::newRow("after an accented letter") << ab << QStringLiteral("éab") << false;
    QTest::newRow("before a combining mark") << ab << QStringLiteral("ab\u0301") << false;
    QTest::newRow("before a full-width digit") << ab << QStringLiteral("ab１") << false;
    QTest::newRow("before hiragana") << ab << QStringLiteral("abを") << false;
    QTest::newRow("before a Japanese full stop") << ab << QStringLiteral("ab。") << true;
    QTest::newRow("before a full-width blank") << ab << QStringLiteral("ab\u3000c") << true;
    QTest::newRow("before a surrogate pair") << ab << QStringLiteral("ab𠮷") << true;
    const QString nihon = QStringLiteral("日本");
    QTest::newRow("Japanese, part of a run") << nihon << QStringLiteral("日本語") << false;
    QTest::newRow("Japanese, before kana") << nihon << QStringLiteral("日本の山") << false;
    QTest::newRow("Japanese, in brackets") << nihon << QStringLiteral("「日本」") << true;
    QTest::newRow("Japanese, before a comma") << nihon << QStringLiteral("日本、山") << true;
    QTest::newRow("Japanese, before a middle dot") << nihon << QStringLiteral("日本・山") << true;
    QTest::newRow("Japanese, before a long vowel mark")
        << QStringLiteral("タワ") << QStringLiteral("タワー") << false;
    QTest::newRow("signs between words") << "->"
                                         << "p->x" << true;
    QTest::newRow("signs that are part of more") << "->"
                                                 << "p -> x" << false;
    QTest::newRow("more than one word is no piece") << "a b"
                                                    << "a b" << false;
    QTest::newRow("word with a sign is no piece") << "a+"
                                                  << "a+ b" << false;
    QTest::newRow("line without any word") << "+"
                                           << "+" << true;
}

void LineMatcherTest::aWholeWordIsAPieceBetweenWordBoundaries()
{
    QFETCH(QString, keyword);
    QFETCH(QString, line);
    QFETCH(bool, found);
    QVERIFY(!hitsOf(keyword, 0, line).isEmpty());
    QCOMPARE(hitsOf(keyword, kWord, line).size(), found ? 1 : 0);
}

void LineMatcherTest::aWholeWordMindsTheCaseUnlessIgnored()
{
    const QString line = QStringLiteral("xab AB");
    QCOMPARE(hitsOf(QStringLiteral("ab"), kWord, line), QStringList());
    QCOMPARE(hitsOf(QStringLiteral("ab"), kWord | kIgnoreCase, line), QStringList{hit(1, 2, line)});
}

void LineMatcherTest::anEmptyWholeWordIsFoundNextToAWordAtALinesEnd()
{
    // Splitting leaves an empty piece before a word that begins the line and
    // after one that ends it.
    QCOMPARE(hitsOf(QString(), kWord, QStringLiteral("ab\n ab\nab \n ab \n+\n")),
             QStringList({hit(1, 1, QStringLiteral("ab")), hit(2, 1, QStringLiteral(" ab")),
                          hit(3, 1, QStringLiteral("ab "))}));
}

void LineMatcherTest::aPatternInWordModeIsWrappedInBoundaries()
{
    const auto effective = [](int flg) {
        return LineMatcher::effectiveKeyword1(conditionOf(QStringLiteral("a|b"), flg));
    };
    QCOMPARE(effective(0), QStringLiteral("a|b"));
    QCOMPARE(effective(kWord), QStringLiteral("a|b"));
    QCOMPARE(effective(kRegExp), QStringLiteral("a|b"));
    QCOMPARE(effective(kRegExp | kWord), QStringLiteral("\\ba|b\\b"));
    QCOMPARE(effective(kRegExp | kWord | kIgnoreCase), QStringLiteral("\\ba|b\\b"));

    // Here the column is the word's own.
    QCOMPARE(hitsOf(QStringLiteral("ab"), kRegExp | kWord, QStringLiteral("xab ab\nxab")),
             QStringList{hit(1, 5, QStringLiteral("xab ab"))});
    // Each boundary belongs to its own branch.
    QCOMPARE(hitsOf(QStringLiteral("a|b"), kRegExp | kWord, QStringLiteral("ax\nxb\nxa\nbx")),
             QStringList({hit(1, 1, QStringLiteral("ax")), hit(2, 2, QStringLiteral("xb"))}));
    QCOMPARE(hitsOf(QStringLiteral("日本"), kRegExp | kWord, QStringLiteral("日本語\n「日本」")),
             QStringList{hit(2, 3, QStringLiteral("「日本」"))});
}

void LineMatcherTest::wordModeLeavesTheOtherKeywordsAlone()
{
    for (const int flg : {kWord, kWord | kRegExp}) {
        const QString line = QStringLiteral("ab xcdx");
        SearchCondition condition = conditionOf(QStringLiteral("ab"), flg);
        condition.keyword2 = QStringLiteral("cd");
        QCOMPARE(hitsOf(condition, line), QStringList{hit(1, 1, line)});
        condition.keyword2.clear();
        condition.keyword3 = QStringLiteral("cd");
        QCOMPARE(hitsOf(condition, line), QStringList());
    }
}

void LineMatcherTest::columnsFollowTabsAndFullWidthText_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("tabWidth");
    QTest::addColumn<int>("column");
    QTest::newRow("at the start") << "a" << 4 << 1;
    QTest::newRow("tab and full-width") << QStringLiteral("\tあa") << 4 << 7;
    QTest::newRow("the same with width 8") << QStringLiteral("\tあa") << 8 << 11;
    QTest::newRow("tab after text") << "xy\ta" << 4 << 5;
    QTest::newRow("tab at a multiple") << "wxyz\ta" << 4 << 9;
    QTest::newRow("surrogate pair") << QStringLiteral("𠮷a") << 4 << 5;
    QTest::newRow("half-width katakana") << QStringLiteral("ｱa") << 4 << 3;
    QTest::newRow("five places") << QString(99998, QLatin1Char('x')) + QLatin1Char('a') << 4
                                 << 99999;
    QTest::newRow("six places") << QString(99999, QLatin1Char('x')) + QLatin1Char('a') << 4
                                << 100000;
}

void LineMatcherTest::columnsFollowTabsAndFullWidthText()
{
    QFETCH(QString, line);
    QFETCH(int, tabWidth);
    QFETCH(int, column);
    for (const int flg : {0, kRegExp})
        QCOMPARE(hitsOf(conditionOf(QStringLiteral("a"), flg), line, tabWidth),
                 QStringList{hit(1, column, line)});
}

void LineMatcherTest::aTabWidthBelowOneCountsAsOne()
{
    const QString line = QStringLiteral("\t\ta");
    for (const int width : {0, -1, std::numeric_limits<int>::min()})
        QCOMPARE(hitsOf(conditionOf(QStringLiteral("a")), line, width),
                 QStringList{hit(1, 3, line)});
}

void LineMatcherTest::aPatternIsNotTriedOnceItIsStopped()
{
    SearchCondition condition;
    condition.keyword1 = QStringLiteral("fo+");
    condition.flg = SearchCondition::RegExpFlag;
    LineMatcher matcher(condition, 8);
    int asked = 0;
    matcher.stopWhen([&asked] { return ++asked > 2; });
    const QString text = QStringLiteral("foo\nfoo\nfoo\nfoo");
    QCOMPARE(matcher.matchEveryLine(text).size(), 2);
    QCOMPARE(asked, 3);
    QVERIFY(matcher.wasStopped());
    asked = -10;
    QCOMPARE(matcher.matchEveryLine(text).size(), 4);
    QVERIFY(!matcher.wasStopped());
}

void LineMatcherTest::plainLinesAskSeldomWhetherToStop()
{
    SearchCondition condition;
    condition.keyword1 = QStringLiteral("foo");
    LineMatcher matcher(condition, 8);
    int asked = 0;
    matcher.stopWhen([&asked] { return ++asked > 1; });
    const int lines = 10000;
    const int hits = matcher.matchEveryLine(QStringLiteral("foo\n").repeated(lines)).size();
    QVERIFY(matcher.wasStopped());
    QCOMPARE(asked, 2);
    QVERIFY(hits > asked && hits < lines);
}

QTEST_GUILESS_MAIN(LineMatcherTest)
#include "LineMatcherTest.moc"
