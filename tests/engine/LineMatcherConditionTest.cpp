#include "engine/LineMatcher.h"

#include "tests/engine/MatcherText.h"

#include <QMap>
#include <QTest>

#include <atomic>
#include <limits>
#include <thread>

using namespace MatcherText;

using Lines = QMap<int, QString>;
Q_DECLARE_METATYPE(Lines)

namespace {

/// A text of fifteen lines, those that are not given being dots.
QString fifteenLines(const Lines &given)
{
    QStringList lines;
    for (int number = 1; number <= 15; ++number)
        lines.append(given.value(number, QStringLiteral(".")));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

/// What the further keywords do to a hit, and what is kept between lines and
/// between files.
class LineMatcherConditionTest : public QObject {
    Q_OBJECT

private slots:
    void keyword2ConfirmsWithinTheLineDistance_data();
    void keyword2ConfirmsWithinTheLineDistance();
    void theLineDistanceNeverOverflows();
    void keyword2MayBeAPattern();
    void aLineWithKeyword3IsNotReported_data();
    void aLineWithKeyword3IsNotReported();

    void beginForgetsTheFileBefore();
    void takenHitsAreNotGivenAgain();
    void oneObjectSearchesOneFileAfterAnother();
    void theLinesOfInterestFollowThePendingHit();
    void objectsOnSeveralThreadsDoNotDisturbEachOther();
};

void LineMatcherConditionTest::keyword2ConfirmsWithinTheLineDistance_data()
{
    QTest::addColumn<int>("plusline");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QList<int>>("reported");
    const int least = std::numeric_limits<int>::min();
    const int most = std::numeric_limits<int>::max();
    const QString one = QStringLiteral("one");
    const QString two = QStringLiteral("two");
    const QString both = QStringLiteral("one two");
    const QString twoFirst = QStringLiteral("two one");
    using Numbers = QList<int>;
    QTest::newRow("at the distance") << 2 << Lines{{10, one}, {12, two}} << Numbers{10};
    QTest::newRow("within it") << 2 << Lines{{10, one}, {11, two}} << Numbers{10};
    QTest::newRow("on the line itself") << 2 << Lines{{10, both}} << Numbers{10};
    QTest::newRow("on the line itself, before") << 2 << Lines{{10, twoFirst}} << Numbers{10};
    QTest::newRow("too far") << 2 << Lines{{10, one}, {13, two}} << Numbers{};
    QTest::newRow("before") << 2 << Lines{{9, two}, {10, one}} << Numbers{};
    QTest::newRow("nowhere") << 2 << Lines{{10, one}} << Numbers{};
    QTest::newRow("alone") << 2 << Lines{{10, two}} << Numbers{};
    QTest::newRow("0: the same line") << 0 << Lines{{10, both}} << Numbers{10};
    QTest::newRow("0: the next line") << 0 << Lines{{10, one}, {11, two}} << Numbers{};
    QTest::newRow("negative: the same line") << -1 << Lines{{10, both}} << Numbers{};
    QTest::newRow("negative: the line before") << -1 << Lines{{9, two}, {10, one}} << Numbers{};
    QTest::newRow("least") << least << Lines{{10, both}, {11, two}} << Numbers{};
    QTest::newRow("most") << most << Lines{{1, one}, {15, two}} << Numbers{1};
    QTest::newRow("the later of two") << 2 << Lines{{10, one}, {11, one}, {12, two}} << Numbers{11};
    QTest::newRow("the later holds both") << 2 << Lines{{10, one}, {11, both}} << Numbers{11};
    QTest::newRow("the later is out of reach")
        << 1 << Lines{{10, one}, {11, one}, {13, two}} << Numbers{};
    QTest::newRow("reported once") << 3 << Lines{{10, one}, {11, two}, {12, two}} << Numbers{10};
    QTest::newRow("one confirmation for each")
        << 1 << Lines{{3, one}, {4, two}, {5, one}, {6, two}} << Numbers{3, 5};
    QTest::newRow("confirmed before the next")
        << 3 << Lines{{3, both}, {4, one}, {6, two}} << Numbers{3, 4};
    QTest::newRow("out of reach, then again")
        << 1 << Lines{{3, one}, {5, two}, {6, one}, {7, two}} << Numbers{6};
}

void LineMatcherConditionTest::keyword2ConfirmsWithinTheLineDistance()
{
    QFETCH(int, plusline);
    QFETCH(Lines, lines);
    QFETCH(QList<int>, reported);
    SearchCondition condition = conditionOf(QStringLiteral("one"));
    condition.keyword2 = QStringLiteral("two");
    condition.plusline = plusline;
    QStringList expected;
    for (const int number : reported) {
        const QString line = lines.value(number);
        expected.append(hit(number, line.indexOf(QStringLiteral("one")) + 1, line));
    }
    QCOMPARE(hitsOf(condition, fifteenLines(lines)), expected);
}

void LineMatcherConditionTest::theLineDistanceNeverOverflows()
{
    SearchCondition condition = conditionOf(QStringLiteral("one"));
    condition.keyword2 = QStringLiteral("two");
    condition.plusline = std::numeric_limits<int>::max();
    const qint64 first = 2147483000;
    LineMatcher matcher(condition, kTabWidth);
    matcher.begin();
    matcher.visit(first, QStringView(u"one"));
    QCOMPARE(matcher.lastLineOfInterest(), first + condition.plusline);
    matcher.visit(first + condition.plusline, QStringView(u"two"));
    QCOMPARE(matcher.takeHits(), QStringList{hit(first, 1, QStringLiteral("one"))});
    matcher.visit(first, QStringView(u"one"));
    matcher.visit(first + condition.plusline + 1, QStringView(u"two"));
    QCOMPARE(matcher.takeHits(), QStringList());
}

void LineMatcherConditionTest::keyword2MayBeAPattern()
{
    SearchCondition condition = conditionOf(QStringLiteral("o.e"), kRegExp);
    condition.keyword2 = QStringLiteral("^t.o$");
    condition.plusline = 2;
    QCOMPARE(hitsOf(condition, QStringLiteral("one\nx two\ntwo")),
             QStringList{hit(1, 1, QStringLiteral("one"))});
    QCOMPARE(hitsOf(condition, QStringLiteral("one\nx two\nt.o x")), QStringList());
    condition.flg = 0;
    QCOMPARE(hitsOf(condition, QStringLiteral("o.e\none\n^t.o$")),
             QStringList{hit(1, 1, QStringLiteral("o.e"))});
}

void LineMatcherConditionTest::aLineWithKeyword3IsNotReported_data()
{
    QTest::addColumn<QString>("keyword2");
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QList<int>>("reported");
    const QString none;
    const QString one = QStringLiteral("one");
    const QString two = QStringLiteral("two");
    const QString three = QStringLiteral("three");
    const QString oneThree = QStringLiteral("one three");
    using Numbers = QList<int>;
    QTest::newRow("on the line") << none << Lines{{10, oneThree}} << Numbers{};
    QTest::newRow("before keyword1")
        << none << Lines{{10, QStringLiteral("three one")}} << Numbers{};
    QTest::newRow("on another line")
        << none << Lines{{9, three}, {10, one}, {11, three}} << Numbers{10};
    QTest::newRow("the next line is free")
        << none << Lines{{10, oneThree}, {11, one}} << Numbers{11};
    QTest::newRow("keyword2 follows") << two << Lines{{10, oneThree}, {11, two}} << Numbers{};
    QTest::newRow("keyword2 follows twice")
        << two << Lines{{10, oneThree}, {11, two}, {12, two}} << Numbers{};
    QTest::newRow("keyword2 on the line")
        << two << Lines{{10, QStringLiteral("one two three")}} << Numbers{};
    QTest::newRow("the earlier hit is dropped all the same")
        << two << Lines{{9, one}, {10, oneThree}, {11, two}} << Numbers{};
    QTest::newRow("the earlier hit, keyword2 on the line")
        << two << Lines{{9, one}, {10, QStringLiteral("one two three")}} << Numbers{};
    QTest::newRow("on the line of keyword2")
        << two << Lines{{10, one}, {11, QStringLiteral("two three")}} << Numbers{10};
    QTest::newRow("on a line between")
        << two << Lines{{10, one}, {11, three}, {12, two}} << Numbers{10};
    QTest::newRow("a later line is free")
        << two << Lines{{10, oneThree}, {11, one}, {12, two}} << Numbers{11};
}

void LineMatcherConditionTest::aLineWithKeyword3IsNotReported()
{
    QFETCH(QString, keyword2);
    QFETCH(Lines, lines);
    QFETCH(QList<int>, reported);
    QStringList expected;
    for (const int number : reported)
        expected.append(hit(number, 1, lines.value(number)));
    for (const int flg : {0, kRegExp}) {
        SearchCondition condition = conditionOf(QStringLiteral("one"), flg);
        condition.keyword2 = keyword2;
        condition.keyword3 = QStringLiteral("three");
        condition.plusline = 2;
        QCOMPARE(hitsOf(condition, fifteenLines(lines)), expected);
    }
}

void LineMatcherConditionTest::beginForgetsTheFileBefore()
{
    SearchCondition condition = conditionOf(QStringLiteral("one"));
    condition.keyword2 = QStringLiteral("two");
    condition.plusline = 5;
    LineMatcher matcher(condition, kTabWidth);
    matcher.begin();
    matcher.visit(1, QStringView(u"one two"));
    matcher.visit(2, QStringView(u"one"));
    matcher.begin();
    QCOMPARE(matcher.lastLineOfInterest(), qint64(-1));
    matcher.visit(3, QStringView(u"two"));
    QCOMPARE(matcher.takeHits(), QStringList());
}

void LineMatcherConditionTest::takenHitsAreNotGivenAgain()
{
    LineMatcher matcher(conditionOf(QStringLiteral("one")), kTabWidth);
    matcher.begin();
    matcher.visit(7, QStringView(u"one"));
    QCOMPARE(matcher.takeHits().size(), 1);
    QCOMPARE(matcher.takeHits().size(), 0);
}

void LineMatcherConditionTest::oneObjectSearchesOneFileAfterAnother()
{
    SearchCondition condition = conditionOf(QStringLiteral("o[n]e"), kRegExp);
    condition.keyword2 = QStringLiteral("two");
    condition.plusline = 3;
    LineMatcher matcher(condition, kTabWidth);
    const QString hitting = QStringLiteral("one\ntwo");
    const QStringList expected{hit(1, 1, QStringLiteral("one"))};
    QCOMPARE(matcher.matchEveryLine(hitting), expected);
    QCOMPARE(matcher.matchEveryLine(QStringLiteral("one")), QStringList());
    QCOMPARE(matcher.matchEveryLine(QStringLiteral("two")), QStringList());
    QCOMPARE(matcher.matchEveryLine(hitting), expected);
}

void LineMatcherConditionTest::theLinesOfInterestFollowThePendingHit()
{
    SearchCondition condition = conditionOf(QStringLiteral("one"));
    condition.keyword3 = QStringLiteral("three");
    condition.plusline = 3;
    LineMatcher alone(condition, kTabWidth);
    alone.begin();
    alone.visit(10, QStringView(u"one"));
    QCOMPARE(alone.lastLineOfInterest(), qint64(-1));

    condition.keyword2 = QStringLiteral("two");
    LineMatcher matcher(condition, kTabWidth);
    matcher.begin();
    QCOMPARE(matcher.lastLineOfInterest(), qint64(-1));
    matcher.visit(10, QStringView(u"one"));
    QCOMPARE(matcher.lastLineOfInterest(), qint64(13));
    matcher.visit(12, QStringView(u"one"));
    QCOMPARE(matcher.lastLineOfInterest(), qint64(15));
    matcher.visit(13, QStringView(u"two"));
    QCOMPARE(matcher.lastLineOfInterest(), qint64(-1));
    matcher.visit(20, QStringView(u"one three"));
    QCOMPARE(matcher.lastLineOfInterest(), qint64(-1));
}

void LineMatcherConditionTest::objectsOnSeveralThreadsDoNotDisturbEachOther()
{
    SearchCondition condition = conditionOf(QStringLiteral("o(n|m)+e"), kRegExp | kWord);
    condition.keyword2 = QStringLiteral("t[wv]o");
    condition.plusline = 1;
    const QString text = QStringLiteral("x one\ntwo\nxone\ntwo\nomne\ntvo\n");
    const QStringList expected = hitsOf(condition, text);
    QCOMPARE(expected.size(), 2);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            LineMatcher matcher(condition, kTabWidth);
            for (int round = 0; round < 500; ++round)
                wrong += matcher.matchEveryLine(text) == expected ? 0 : 1;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(LineMatcherConditionTest)
#include "LineMatcherConditionTest.moc"
