#include "engine/SignalSpool.h"

#include <QMetaMethod>
#include <QTest>

namespace {

QStringList all(SignalSpool *spool)
{
    QStringList lines;
    spool->takeResults(&lines, 0);
    return lines;
}

} // namespace

/// The spool by itself; SignalSpoolRunTest has it run an engine.
class SignalSpoolTest : public QObject {
    Q_OBJECT

private slots:
    void signalsAndSlotsStandInTheirOrder();
    void aHeadIsFollowedByItsHits();
    void aBatchMayEndBetweenAHeadAndItsHits();
    void takingWithALimitBelowOneTakesAll();
    void takingAppendsToWhatTheCallerHas();
    void aFileWithoutHitsIsAHeadAlone();
    void errorsAndWarningsAreMovedOut();
    void announcedEntriesAddUp();
    void countersKeepTheLatestValue();
    void threadCountsAreKeptByThread();
};

void SignalSpoolTest::signalsAndSlotsStandInTheirOrder()
{
    const QMetaObject &meta = SignalSpool::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(QString::fromLatin1(meta.method(i).name()));
    const QStringList expected{QStringLiteral("finished"),
                               QStringLiteral("linecntAt"),
                               QStringLiteral("lcntFinished"),
                               QStringLiteral("encodingAt"),
                               QStringLiteral("scan"),
                               QStringLiteral("onDirSemaphoreCount"),
                               QStringLiteral("onFileSemaphoreCount"),
                               QStringLiteral("onWarningMsg"),
                               QStringLiteral("onErrorMsg"),
                               QStringLiteral("slotThreadCount"),
                               QStringLiteral("onfinished"),
                               QStringLiteral("showSearchResultList"),
                               QStringLiteral("onFileAllCount"),
                               QStringLiteral("onFileCount"),
                               QStringLiteral("onSrchCount"),
                               QStringLiteral("progressFileReport"),
                               QStringLiteral("showSearchResultFile")};
    QCOMPARE(names, expected);
}

void SignalSpoolTest::aHeadIsFollowedByItsHits()
{
    SignalSpool spool;
    spool.showSearchResultList(QStringLiteral("/a"), {QStringLiteral("1"), QStringLiteral("2")});
    spool.showSearchResultList(QStringLiteral("/b"), {QStringLiteral("3")});
    QCOMPARE(spool.resultCount(), 5);
    QCOMPARE(spool.resultFileCount(), 2);
    QCOMPARE(spool.hitLineCount(), 3);
    QCOMPARE(all(&spool),
             QStringList({QStringLiteral("::/a"), QStringLiteral("1"), QStringLiteral("2"),
                          QStringLiteral("::/b"), QStringLiteral("3")}));
    QCOMPARE(spool.resultCount(), 0);
}

void SignalSpoolTest::aBatchMayEndBetweenAHeadAndItsHits()
{
    SignalSpool spool;
    spool.showSearchResultList(QStringLiteral("/a"),
                               {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    QStringList lines;
    QCOMPARE(spool.takeResults(&lines, 2), 2);
    QCOMPARE(lines, QStringList({QStringLiteral("::/a"), QStringLiteral("1")}));
    lines.clear();
    QCOMPARE(spool.takeResults(&lines, 2), 2);
    QCOMPARE(lines, QStringList({QStringLiteral("2"), QStringLiteral("3")}));
    QCOMPARE(spool.takeResults(&lines, 2), 0);
}

void SignalSpoolTest::takingWithALimitBelowOneTakesAll()
{
    for (const int limit : {0, -1}) {
        SignalSpool spool;
        spool.showSearchResultList(QStringLiteral("/a"), {QStringLiteral("1")});
        QStringList lines;
        QCOMPARE(spool.takeResults(&lines, limit), 2);
        QCOMPARE(lines.size(), 2);
    }
}

void SignalSpoolTest::takingAppendsToWhatTheCallerHas()
{
    SignalSpool spool;
    spool.showSearchResultFile(QStringLiteral("/a"));
    QStringList lines{QStringLiteral("before")};
    spool.takeResults(&lines, 0);
    QCOMPARE(lines, QStringList({QStringLiteral("before"), QStringLiteral("::/a")}));
}

void SignalSpoolTest::aFileWithoutHitsIsAHeadAlone()
{
    SignalSpool spool;
    spool.showSearchResultFile(QStringLiteral("/a"));
    QCOMPARE(spool.resultFileCount(), 1);
    QCOMPARE(spool.hitLineCount(), 0);
    QCOMPARE(all(&spool), QStringList{QStringLiteral("::/a")});
}

void SignalSpoolTest::errorsAndWarningsAreMovedOut()
{
    SignalSpool spool;
    spool.onErrorMsg(QStringLiteral("e1"));
    spool.onErrorMsg(QStringLiteral("e2"));
    spool.onWarningMsg(QStringLiteral("w"));
    QStringList errors;
    QStringList warnings;
    QCOMPARE(spool.takeErrors(&errors), 2);
    QCOMPARE(spool.takeWarnings(&warnings), 1);
    QCOMPARE(errors, QStringList({QStringLiteral("e1"), QStringLiteral("e2")}));
    QCOMPARE(warnings, QStringList{QStringLiteral("w")});
    QCOMPARE(spool.takeErrors(&errors), 0);
    QCOMPARE(spool.takeWarnings(&warnings), 0);
}

void SignalSpoolTest::announcedEntriesAddUp()
{
    SignalSpool spool;
    spool.onFileAllCount(3);
    spool.onFileAllCount(4);
    QCOMPARE(spool.announcedCount(), 7);
}

void SignalSpoolTest::countersKeepTheLatestValue()
{
    SignalSpool spool;
    spool.onDirSemaphoreCount(7);
    spool.onDirSemaphoreCount(5);
    spool.onFileSemaphoreCount(9);
    spool.onFileCount();
    spool.onFileCount();
    spool.onSrchCount();
    spool.progressFileReport(QStringLiteral("/a"));
    spool.progressFileReport(QStringLiteral("/b"));
    QCOMPARE(spool.dirQueueLength(), 5);
    QCOMPARE(spool.fileQueueLength(), 9);
    QCOMPARE(spool.topEntryCount(), 2);
    QCOMPARE(spool.searchedCount(), 1);
    QCOMPARE(spool.currentFile(), QStringLiteral("/b"));
}

void SignalSpoolTest::threadCountsAreKeptByThread()
{
    SignalSpool spool;
    spool.slotThreadCount(2, 10);
    spool.slotThreadCount(1, 5);
    spool.slotThreadCount(2, 11);
    QCOMPARE(spool.threadCounts(), (QMap<int, int>{{1, 5}, {2, 11}}));
}

QTEST_GUILESS_MAIN(SignalSpoolTest)
#include "SignalSpoolTest.moc"
