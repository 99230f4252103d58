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

QTEST_GUILESS_MAIN(HistoryListTest)
#include "HistoryListTest.moc"
