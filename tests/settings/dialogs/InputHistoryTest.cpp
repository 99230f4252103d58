#include "settings/dialogs/InputHistory.h"

#include <QTest>

namespace {

/// A list of texts, written as one with bars between them.
QStringList list(const char *texts)
{
    return QString::fromUtf8(texts).split(QLatin1Char('|'));
}

} // namespace

class InputHistoryTest : public QObject {
    Q_OBJECT

private slots:
    void entriesMatchByTheirStart();
    void entriesMatchAnywhereWhenAsked();
    void caseCountsUnlessItIsIgnored();
    void anEmptyKeyMatchesEveryEntry();
    void theTextGoesToTheFront();
    void aKnownTextMovesToTheFront();
    void aBlankTextIsNotLearned();
    void theTextIsStoredAsItIsAndOldEntriesTrimmed();
    void blankOldEntriesGo();
    void duplicatesThatTrimmingMakesGo();
    void learningStopsAtTheLimit_data();
    void learningStopsAtTheLimit();
    void upSwapsWithTheEntryBefore();
    void theFirstEntryDoesNotMoveUp();
    void downSwapsWithTheEntryAfter();
    void theLastTwoEntriesDoNotMoveDown_data();
    void theLastTwoEntriesDoNotMoveDown();
};

void InputHistoryTest::entriesMatchByTheirStart()
{
    const QVector<qint32> rows =
        InputHistory::matchingRows(list("ab|bab|abc|a"), QStringLiteral("ab"), {});
    QCOMPARE(rows, QVector<qint32>({0, 2}));
}

void InputHistoryTest::entriesMatchAnywhereWhenAsked()
{
    const QVector<qint32> rows =
        InputHistory::matchingRows(list("ab|bab|abc|a"), QStringLiteral("ab"), {true, false});
    QCOMPARE(rows, QVector<qint32>({0, 1, 2}));
}

void InputHistoryTest::caseCountsUnlessItIsIgnored()
{
    const QStringList history = list("Abc|xabc|ABC");
    const QString key = QStringLiteral("abc");
    QCOMPARE(InputHistory::matchingRows(history, key, {false, false}), QVector<qint32>());
    QCOMPARE(InputHistory::matchingRows(history, key, {false, true}), QVector<qint32>({0, 2}));
    QCOMPARE(InputHistory::matchingRows(history, key, {true, false}), QVector<qint32>({1}));
    QCOMPARE(InputHistory::matchingRows(history, key, {true, true}), QVector<qint32>({0, 1, 2}));
}

void InputHistoryTest::anEmptyKeyMatchesEveryEntry()
{
    QCOMPARE(InputHistory::matchingRows(list("a|b"), QString(), {}), QVector<qint32>({0, 1}));
}

void InputHistoryTest::theTextGoesToTheFront()
{
    QCOMPARE(InputHistory::learned(list("a|b"), QStringLiteral("c"), 50), list("c|a|b"));
}

void InputHistoryTest::aKnownTextMovesToTheFront()
{
    QCOMPARE(InputHistory::learned(list("a|b|c"), QStringLiteral("c"), 50), list("c|a|b"));
}

void InputHistoryTest::aBlankTextIsNotLearned()
{
    QCOMPARE(InputHistory::learned(list(" a|b"), QString(), 50), list(" a|b"));
    QCOMPARE(InputHistory::learned(list(" a|b"), QStringLiteral(" \t\u3000"), 50), list(" a|b"));
}

void InputHistoryTest::theTextIsStoredAsItIsAndOldEntriesTrimmed()
{
    QCOMPARE(InputHistory::learned(list(" a |b"), QStringLiteral(" c "), 50), list(" c |a|b"));
}

void InputHistoryTest::blankOldEntriesGo()
{
    QCOMPARE(InputHistory::learned(list("a|| |b"), QStringLiteral("c"), 50), list("c|a|b"));
}

void InputHistoryTest::duplicatesThatTrimmingMakesGo()
{
    QCOMPARE(InputHistory::learned(list("a| a|b"), QStringLiteral("b"), 50), list("b|a"));
}

void InputHistoryTest::learningStopsAtTheLimit_data()
{
    QTest::addColumn<int>("max");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("room for all") << 4 << list("new|a|b|c");
    QTest::newRow("the last one goes") << 3 << list("new|a|b");
    QTest::newRow("all old ones go") << 1 << list("new");
    QTest::newRow("the text stays at 0") << 0 << list("new");
    QTest::newRow("the text stays below 0") << -1 << list("new");
}

void InputHistoryTest::learningStopsAtTheLimit()
{
    QFETCH(int, max);
    QFETCH(QStringList, expected);
    // The blank and the duplicate take no place.
    QCOMPARE(InputHistory::learned(list("a||a|b|c"), QStringLiteral("new"), max), expected);
}

void InputHistoryTest::upSwapsWithTheEntryBefore()
{
    QStringList history = list("a|b|c");
    QVERIFY(InputHistory::moveUp(history, 2));
    QCOMPARE(history, list("a|c|b"));
}

void InputHistoryTest::theFirstEntryDoesNotMoveUp()
{
    QStringList history = list("a|b");
    QVERIFY(!InputHistory::moveUp(history, 0));
    QVERIFY(!InputHistory::moveUp(history, -1));
    QVERIFY(!InputHistory::moveUp(history, 2));
    QCOMPARE(history, list("a|b"));
}

void InputHistoryTest::downSwapsWithTheEntryAfter()
{
    QStringList history = list("a|b|c");
    QVERIFY(InputHistory::moveDown(history, 0));
    QCOMPARE(history, list("b|a|c"));
}

void InputHistoryTest::theLastTwoEntriesDoNotMoveDown_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("the last but one") << 1;
    QTest::newRow("the last") << 2;
    QTest::newRow("past the end") << 3;
    QTest::newRow("none") << -1;
}

void InputHistoryTest::theLastTwoEntriesDoNotMoveDown()
{
    QFETCH(int, index);
    QStringList history = list("a|b|c");
    QVERIFY(!InputHistory::moveDown(history, index));
    QCOMPARE(history, list("a|b|c"));
}

QTEST_GUILESS_MAIN(InputHistoryTest)
#include "InputHistoryTest.moc"
