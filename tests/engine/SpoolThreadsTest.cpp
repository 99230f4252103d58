#include "engine/SignalSpool.h"

#include <QTest>

#include <thread>
#include <vector>

/// The spool's shared state under threads of the standard library alone, where
/// the thread sanitizer sees every lock that there is.
class SpoolThreadsTest : public QObject {
    Q_OBJECT

private slots:
    void progressFromManyThreadsMeetsAReader();
    void resultsAreTakenWhileTheyArrive();
};

void SpoolThreadsTest::progressFromManyThreadsMeetsAReader()
{
    constexpr int kThreads = 3;
    constexpr int kRounds = 2000;
    SignalSpool spool;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < kThreads; ++worker) {
        workers.emplace_back([&spool, worker] {
            for (int i = 0; i < kRounds; ++i) {
                spool.progressFileReport(QString::number(i));
                spool.slotThreadCount(worker, i + 1);
                spool.onSrchCount();
                spool.onFileCount();
                spool.onDirSemaphoreCount(i);
                spool.onFileSemaphoreCount(i);
            }
        });
    }
    for (int i = 0; i < kRounds; ++i) {
        spool.currentFile();
        spool.threadCounts();
        QVERIFY(spool.dirQueueLength() >= 0);
        QVERIFY(spool.fileQueueLength() >= 0);
        QVERIFY(spool.searchedCount() <= kThreads * kRounds);
    }
    for (std::thread &worker : workers)
        worker.join();
    QCOMPARE(spool.searchedCount(), kThreads * kRounds);
    QCOMPARE(spool.topEntryCount(), kThreads * kRounds);
    QCOMPARE(spool.threadCounts(), (QMap<int, int>{{0, kRounds}, {1, kRounds}, {2, kRounds}}));
}

void SpoolThreadsTest::resultsAreTakenWhileTheyArrive()
{
    constexpr int kFiles = 3000;
    SignalSpool spool;
    std::thread worker([&spool] {
        for (int i = 0; i < kFiles; ++i) {
            spool.showSearchResultList(QString::number(i), {QStringLiteral("hit")});
            spool.onErrorMsg(QStringLiteral("error"));
            spool.onWarningMsg(QStringLiteral("warning"));
        }
    });
    QStringList lines;
    QStringList errors;
    QStringList warnings;
    while (lines.size() < 2 * kFiles) {
        // A part may end on a head; all that there is never does.
        spool.takeResults(&lines, 7);
        spool.takeResults(&lines, 0);
        QCOMPARE(lines.size() % 2, 0);
        spool.takeErrors(&errors);
        spool.takeWarnings(&warnings);
        QVERIFY(spool.resultFileCount() <= kFiles);
        QVERIFY(spool.hitLineCount() <= kFiles);
    }
    worker.join();
    spool.takeErrors(&errors);
    spool.takeWarnings(&warnings);
    QCOMPARE(errors.size(), kFiles);
    QCOMPARE(warnings.size(), kFiles);
    for (int i = 0; i < kFiles; ++i) {
        QCOMPARE(lines.at(2 * i), QStringLiteral("::") + QString::number(i));
        QCOMPARE(lines.at(2 * i + 1), QStringLiteral("hit"));
    }
}

QTEST_GUILESS_MAIN(SpoolThreadsTest)
#include "SpoolThreadsTest.moc"
