#include "engine/WorkQueue.h"

#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

class WorkQueueTest : public QObject {
    Q_OBJECT

private slots:
    void entriesComeOutInTheOrderTheyWentIn();
    void eachEntryBringsOnePermit();
    void appendingNothingReleasesNoPermit();
    void takeFirstTellsTheLengthBeforeTheCall();
    void anEmptyQueueGivesNoEntry();
    void takingAnEntryLeavesThePermits();
    void aReleasedPermitHasNoEntry();
    void clearEmptiesTheQueueAndLeavesThePermits();
    void drainingTakesEveryPermitAndLeavesTheEntries();
    void aWorkerWaitsForItsPermit();
    void aPermitNeverPrecedesItsEntry();
};

void WorkQueueTest::entriesComeOutInTheOrderTheyWentIn()
{
    WorkQueue queue;
    queue.append({QStringLiteral("b"), QStringLiteral("a")});
    queue.append({QStringLiteral("c"), QStringLiteral("a")});
    QStringList taken;
    QString path;
    int length = 0;
    while (queue.takeFirst(&path, &length))
        taken.append(path);
    QCOMPARE(taken.join(QLatin1Char(' ')), QStringLiteral("b a c a"));
}

void WorkQueueTest::eachEntryBringsOnePermit()
{
    WorkQueue queue;
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(queue.length(), 0);
    queue.append({QStringLiteral("a")});
    QCOMPARE(queue.permits(), 1);
    QCOMPARE(queue.length(), 1);
    queue.append({QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")});
    QCOMPARE(queue.permits(), 4);
    QCOMPARE(queue.length(), 4);
    queue.acquirePermit();
    QCOMPARE(queue.permits(), 3);
    QCOMPARE(queue.length(), 4);
}

void WorkQueueTest::appendingNothingReleasesNoPermit()
{
    WorkQueue queue;
    queue.append({});
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(queue.length(), 0);
}

void WorkQueueTest::takeFirstTellsTheLengthBeforeTheCall()
{
    WorkQueue queue;
    queue.append({QStringLiteral("a"), QStringLiteral("b")});
    QString path;
    int length = -1;
    QVERIFY(queue.takeFirst(&path, &length));
    QCOMPARE(path, QStringLiteral("a"));
    QCOMPARE(length, 2);
    QVERIFY(queue.takeFirst(&path, &length));
    QCOMPARE(path, QStringLiteral("b"));
    QCOMPARE(length, 1);
    QVERIFY(!queue.takeFirst(&path, &length));
    QCOMPARE(length, 0);
}

void WorkQueueTest::anEmptyQueueGivesNoEntry()
{
    WorkQueue queue;
    QString path = QStringLiteral("before");
    int length = -1;
    QVERIFY(!queue.takeFirst(&path, &length));
    QCOMPARE(length, 0);
    QCOMPARE(path, QStringLiteral("before"));
}

void WorkQueueTest::takingAnEntryLeavesThePermits()
{
    WorkQueue queue;
    queue.append({QStringLiteral("a"), QStringLiteral("b")});
    QString path;
    int length = 0;
    QVERIFY(queue.takeFirst(&path, &length));
    QCOMPARE(queue.permits(), 2);
    QCOMPARE(queue.length(), 1);
}

void WorkQueueTest::aReleasedPermitHasNoEntry()
{
    WorkQueue queue;
    queue.releasePermit();
    QCOMPARE(queue.permits(), 1);
    queue.acquirePermit();
    QString path;
    int length = 0;
    QVERIFY(!queue.takeFirst(&path, &length));
}

void WorkQueueTest::clearEmptiesTheQueueAndLeavesThePermits()
{
    WorkQueue queue;
    queue.append({QStringLiteral("a"), QStringLiteral("b")});
    queue.clear();
    QCOMPARE(queue.length(), 0);
    QCOMPARE(queue.permits(), 2);
    queue.append({QStringLiteral("c")});
    QString path;
    int length = 0;
    QVERIFY(queue.takeFirst(&path, &length));
    QCOMPARE(path, QStringLiteral("c"));
}

void WorkQueueTest::drainingTakesEveryPermitAndLeavesTheEntries()
{
    WorkQueue queue;
    queue.drainPermits();
    QCOMPARE(queue.permits(), 0);
    queue.append({QStringLiteral("a"), QStringLiteral("b")});
    queue.releasePermit();
    queue.drainPermits();
    QCOMPARE(queue.permits(), 0);
    QCOMPARE(queue.length(), 2);
    queue.append({QStringLiteral("c")});
    QCOMPARE(queue.permits(), 1);
}

void WorkQueueTest::aWorkerWaitsForItsPermit()
{
    WorkQueue queue;
    std::atomic<bool> released{false};
    std::atomic<bool> early{false};
    std::thread worker([&] {
        queue.acquirePermit();
        early = !released;
    });
    QTest::qSleep(20);
    released = true;
    queue.releasePermit();
    worker.join();
    QVERIFY(!early);
}

void WorkQueueTest::aPermitNeverPrecedesItsEntry()
{
    constexpr int kWorkers = 3;
    constexpr int kFillers = 2;
    constexpr int kRounds = 20000;
    WorkQueue queue;
    std::atomic<int> taken{0};
    std::atomic<int> withoutEntry{0};
    std::atomic<bool> over{false};
    std::vector<std::thread> workers;
    for (int i = 0; i < kWorkers; ++i) {
        workers.emplace_back([&] {
            QString path;
            int length = 0;
            for (;;) {
                queue.acquirePermit();
                if (queue.takeFirst(&path, &length))
                    ++taken;
                else if (over)
                    return;
                else
                    ++withoutEntry;
            }
        });
    }
    std::vector<std::thread> fillers;
    for (int i = 0; i < kFillers; ++i) {
        fillers.emplace_back([&queue] {
            for (int round = 0; round < kRounds; ++round)
                queue.append(round % 3 == 0 ? QStringList{QStringLiteral("a"), QStringLiteral("b")}
                                            : QStringList{QStringLiteral("c")});
        });
    }
    for (std::thread &filler : fillers)
        filler.join();
    while (queue.length() > 0)
        std::this_thread::yield();
    over = true;
    for (int i = 0; i < kWorkers; ++i)
        queue.releasePermit();
    for (std::thread &worker : workers)
        worker.join();
    QCOMPARE(withoutEntry.load(), 0);
    QCOMPARE(taken.load(), kFillers * (kRounds + (kRounds + 2) / 3));
}

QTEST_GUILESS_MAIN(WorkQueueTest)
#include "WorkQueueTest.moc"
