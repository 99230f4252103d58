#include "engine/CallQueue.h"

#include "tests/support/Patience.h"

#include <QTest>
#include <QThread>

#include <thread>
#include <vector>

class CallQueueTest : public QObject {
    Q_OBJECT

private slots:
    void aCallComesOnTheThreadOfTheQueue();
    void callsOfAThreadKeepTheirOrder();
    void aCallThatACallAddsComesLater();
    void aCallMayDeleteTheQueue();
    void whatIsLeftIsDroppedWithTheQueue();
};

void CallQueueTest::aCallComesOnTheThreadOfTheQueue()
{
    CallQueue queue;
    QThread *where = nullptr;
    std::thread([&] { queue.add([&where] { where = QThread::currentThread(); }); }).join();
    QVERIFY(where == nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(where, QThread::currentThread(), kPatienceMilliseconds);
}

void CallQueueTest::callsOfAThreadKeepTheirOrder()
{
    constexpr int kThreads = 4;
    constexpr int kCalls = 5000;
    CallQueue queue;
    std::vector<std::vector<int>> seen(kThreads);
    int all = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int call = 0; call < kCalls; ++call) {
                queue.add([&, thread, call] {
                    seen[size_t(thread)].push_back(call);
                    ++all;
                });
            }
        });
    }
    QTRY_COMPARE_WITH_TIMEOUT(all, kThreads * kCalls, kPatienceMilliseconds);
    for (std::thread &thread : threads)
        thread.join();
    for (const std::vector<int> &calls : seen) {
        for (int call = 0; call < kCalls; ++call)
            QCOMPARE(calls.at(size_t(call)), call);
    }
}

void CallQueueTest::aCallThatACallAddsComesLater()
{
    CallQueue queue;
    QStringList seen;
    queue.add([&] {
        queue.add([&] { seen += QStringLiteral("third"); });
        seen += QStringLiteral("first");
    });
    queue.add([&] { seen += QStringLiteral("second"); });
    QTRY_COMPARE_WITH_TIMEOUT(seen.size(), 3, kPatienceMilliseconds);
    QCOMPARE(seen.join(QLatin1Char(' ')), QStringLiteral("first second third"));
}

void CallQueueTest::aCallMayDeleteTheQueue()
{
    auto *const queue = new CallQueue;
    bool last = false;
    queue->add([queue] { delete queue; });
    queue->add([&last] { last = true; });
    QTRY_VERIFY_WITH_TIMEOUT(last, kPatienceMilliseconds);
}

void CallQueueTest::whatIsLeftIsDroppedWithTheQueue()
{
    bool called = false;
    {
        CallQueue queue;
        queue.add([&called] { called = true; });
    }
    QCoreApplication::processEvents();
    QVERIFY(!called);
}

QTEST_GUILESS_MAIN(CallQueueTest)
#include "CallQueueTest.moc"
