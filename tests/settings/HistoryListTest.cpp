#include "settings/HistoryList.h"

#include <QTest>

class HistoryListTest : public QObject {
    Q_OBJECT

private slots:
    void aNewTextGoesToTheFront();
    void anExistingTextMovesToTheFront();
    void textsThatDifferInCaseAreTwo();
    void aBlankTextIsNotStored();
    void aTextIsStoredUntrimmed();
    void theLastEntryBeyondTheLimitIsDropped();
    void aLongerListLosesOneEntryOnly();
    void whatWasAddedIsFoundAgain_data();
    void whatWasAddedIsFoundAgain();
    void addedTextsGoInFrontOfTheListInTheirOrder();
    void aMergedListKeepsTheLimit();
};

void HistoryListTest::aNewTextGoesToTheFront()
{
    QStringList history{QStringLiteral("a")};
    HistoryList::insert(history, QStringLiteral("b"));
    QCOMPARE(history, QStringList({QStringLiteral("b"), QStringLiteral("a")}));
}

void HistoryListTest::anExistingTextMovesToTheFront()
{
    QStringList history{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    HistoryList::insert(history, QStringLiteral("c"));
    QCOMPARE(history, QStringList({QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
}

void HistoryListTest::textsThatDifferInCaseAreTwo()
{
    QStringList history{QStringLiteral("abc")};
    HistoryList::insert(history, QStringLiteral("ABC"));
    QCOMPARE(history, QStringList({QStringLiteral("ABC"), QStringLiteral("abc")}));
}

void HistoryListTest::aBlankTextIsNotStored()
{
    QStringList history{QStringLiteral("a")};
    HistoryList::insert(history, QString());
    HistoryList::insert(history, QStringLiteral(" \t\u3000"));
    QCOMPARE(history, QStringList{QStringLiteral("a")});
}

void HistoryListTest::aTextIsStoredUntrimmed()
{
    QStringList history;
    HistoryList::insert(history, QStringLiteral(" a "));
    QCOMPARE(history, QStringList{QStringLiteral(" a ")});
}

void HistoryListTest::theLastEntryBeyondTheLimitIsDropped()
{
    QStringList history;
    for (int i = 0; i <= HistoryList::kLimit; ++i)
        HistoryList::insert(history, QString::number(i));
    QCOMPARE(history.size(), 50);
    QCOMPARE(history.first(), QStringLiteral("50"));
    QCOMPARE(history.last(), QStringLiteral("1"));
}

void HistoryListTest::aLongerListLosesOneEntryOnly()
{
    QStringList history;
    for (int i = 0; i < 60; ++i)
        history.append(QString::number(i));
    HistoryList::insert(history, QStringLiteral("new"));
    QCOMPARE(history.size(), 60);
    QCOMPARE(history.last(), QStringLiteral("58"));
}

namespace {

/// One character a text.
QStringList letters(const char *text)
{
    QStringList list;
    for (const char *letter = text; *letter != '\0'; ++letter)
        list.append(QString(QLatin1Char(*letter)));
    return list;
}

} // namespace

void HistoryListTest::whatWasAddedIsFoundAgain_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("now");
    QTest::addColumn<QStringList>("added");
    const auto row = [](const char *name, const char *before, const char *now, const char *added) {
        QTest::newRow(name) << letters(before) << letters(now) << letters(added);
    };
    row("nothing", "abc", "abc", "");
    row("both empty", "", "", "");
    row("the first ones", "", "ba", "ba");
    row("two new ones", "abc", "yxabc", "yx");
    row("a known one", "abc", "cab", "c");
    row("a known one in the middle", "abc", "bac", "b");
    row("known and new ones", "abcd", "cxabd", "cx");
    row("the last one dropped", "abc", "xab", "x");
    row("all dropped", "abc", "xyz", "xyz");
    row("all gone", "abc", "", "");
}

void HistoryListTest::whatWasAddedIsFoundAgain()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, now);
    QFETCH(QStringList, added);
    QCOMPARE(HistoryList::added(before, now), added);
}

void HistoryListTest::addedTextsGoInFrontOfTheListInTheirOrder()
{
    QCOMPARE(HistoryList::merged(letters("abc"), letters("xcy")), letters("xcyab"));
    QCOMPARE(HistoryList::merged(letters("abc"), QStringList()), letters("abc"));
}

void HistoryListTest::aMergedListKeepsTheLimit()
{
    QCOMPARE(HistoryList::merged(letters("abc"), letters("xy"), 3), letters("xya"));
    QStringList full;
    for (int i = 0; i < HistoryList::kLimit; ++i)
        full.append(QString::number(i));
    QCOMPARE(HistoryList::merged(full, letters("x")).size(), 50);
}

QTEST_GUILESS_MAIN(HistoryListTest)
#include "HistoryListTest.moc"
