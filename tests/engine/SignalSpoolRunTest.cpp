#include "engine/SignalSpool.h"

#include "engine/TextGrepCore.h"
#include "tests/engine_support/GatedLister.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/engine_support/SpoolRun.h"
#include "tests/engine_support/StandingLister.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QSemaphore>
#include <QTest>

#include <memory>

namespace {

SearchCondition searchIn(const QString &path)
{
    return searchFor(QStringLiteral("key"), {path});
}

SearchCondition countIn(const QString &path)
{
    return countLinesIn({path});
}

void writeTwoFiles(const ScratchFolder &tree)
{
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
}

void writeFiftyFolders(const ScratchFolder &tree)
{
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
}

/// Of runs that come to an end in tree only by being stopped.
EngineOptions standingIn(const ScratchFolder &tree)
{
    EngineOptions options;
    options.lister = std::make_shared<StandingLister>(tree.path());
    return options;
}

/// Keeps the spool from what is queued for it from now on, until it is let go.
class HeldSpool {
public:
    explicit HeldSpool(const SpoolRun &run)
    {
        QMetaObject::invokeMethod(
            run.operator->(), [go = m_go] { go->acquire(); }, Qt::QueuedConnection);
    }
    ~HeldSpool() { m_go->release(); }
    Q_DISABLE_COPY(HeldSpool)

private:
    std::shared_ptr<QSemaphore> m_go = std::make_shared<QSemaphore>();
};

/// Options whose lister tells how many engines there are: each holds one.
class EngineWatch {
public:
    explicit EngineWatch(std::shared_ptr<const FolderLister> lister) : m_lister(std::move(lister))
    {
        m_options.lister = m_lister;
        m_holders = m_lister.use_count();
    }

    const EngineOptions &options() const { return m_options; }
    /// Of a spool that was given the options, which holds the lister itself.
    long enginesOfASpool() const { return m_lister.use_count() - m_holders - 1; }
    /// Once the spool is deleted.
    long engines() const { return m_lister.use_count() - m_holders; }

private:
    std::shared_ptr<const FolderLister> m_lister;
    EngineOptions m_options;
    long m_holders = 0; ///< that are no engines
};

} // namespace

/// The spool with the engines that it runs.
class SignalSpoolRunTest : public QObject {
    Q_OBJECT

private slots:
    void aSearchArrivesWholeBeforeItsEnd();
    void everyProgressOfAListFileArrives();
    void aSecondScanStartsFromZeroButKeepsTheCounters();
    void scanForgetsThreadsAndQueueLengths();
    void aScanInTheMiddleOfARunLeavesNothingOfIt();

    void theEngineIsGoneAfterFinished();
    void theEngineStaysAfterALineCountUntilTheNextRun();
    void deletingTheSpoolStopsARun();
    void deletingTheSpoolJoinsTheEngine_data();
    void deletingTheSpoolJoinsTheEngine();

    void lineCountsAreForwarded();
    void encodingsAreForwarded();

    void abortEndsTheRunWithTrue_data();
    void abortEndsTheRunWithTrue();
    void abortRightAfterScanIsNotLost();
    void abortRightAfterARequestIsNotLost_data();
    void abortRightAfterARequestIsNotLost();
    void anAbortDoesNotCountForALaterRequest();
    void abortWithoutAnEngineDoesNothing();
};

void SignalSpoolRunTest::aSearchArrivesWholeBeforeItsEnd()
{
    const ScratchFolder tree;
    for (int i = 0; i < 100; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\nkey again\n");
    for (int round = 0; round < 10; ++round) {
        SpoolRun run;
        run.scan(searchIn(tree.path()));
        QVERIFY(run.waitForEnds(1));
        QCOMPARE(run.finishedFlags, QVector<bool>{false});
        QCOMPARE(run->resultFileCount(), 100);
        QCOMPARE(run->hitLineCount(), 200);
        QCOMPARE(run->searchedCount(), 100);
        QCOMPARE(run.takeAll().size(), 300);
        QCOMPARE(run->topEntryCount(), 1);
        QVERIFY(!run->threadCounts().isEmpty());
        run.settle();
        QTest::qWait(1);
        QCOMPARE(run.finishedFlags.size(), 1);
    }
}

void SignalSpoolRunTest::everyProgressOfAListFileArrives()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "some key\n");
    const QString b = tree.write(QStringLiteral("b.txt"), "nothing here\n");
    QStringList entries{a, b};
    // More than there are threads to list them.
    const int folders = TextGrepCore::threadLimit(QThread::idealThreadCount()) + 2;
    for (int i = 0; i < folders; ++i)
        entries.append(tree.makeFolder(QString::number(i)));
    const QString list = tree.write(QStringLiteral("list.ini"),
                                    QByteArrayLiteral("files=")
                                        + entries.join(QStringLiteral(", ")).toUtf8() + '\n');
    SearchCondition condition = searchIn(QStringLiteral("@") + list);
    condition.fnameflg = true;
    const auto lister = std::make_shared<GatedLister>(GatedLister::BeforeListing);
    EngineOptions options;
    options.lister = lister;
    SpoolRun run(options);
    run.scan(condition);
    QTRY_VERIFY_WITH_TIMEOUT(lister->arrived() > 0, kPatienceMilliseconds);
    // The files are queued before the folders, of which each is counted while
    // it is still in the queue.
    QTRY_COMPARE_WITH_TIMEOUT(run->topEntryCount(), folders + 2, kPatienceMilliseconds);
    QCOMPARE(run->fileQueueLength(), 2);
    QVERIFY(run->dirQueueLength() > 0);
    QCOMPARE(run->announcedCount(), folders + 2);
    QCOMPARE(run->currentFile(), b);
    lister->open();
    QVERIFY(run.waitForEnds(1));
    QCOMPARE(run->dirQueueLength(), 0);
    QCOMPARE(run->searchedCount(), 2);
    QCOMPARE(run->resultFileCount(), 2);
    const QStringList lines = run.takeAll();
    QCOMPARE(lines.size(), 3);
    const int head = lines.indexOf(QStringLiteral("::") + a);
    QCOMPARE(lines.value(head + 1), QStringLiteral("      1:    6:some key"));
    QVERIFY(lines.contains(QStringLiteral("::") + b));
}

void SignalSpoolRunTest::aSecondScanStartsFromZeroButKeepsTheCounters()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    tree.write(QStringLiteral("c.bin"), QByteArray(8, '\0'));
    tree.makeFolder(QStringLiteral("out"));
    EngineOptions options;
    options.limits.excludedFolders = QStringList{QStringLiteral("out")};
    SpoolRun run(options);
    run.scan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(1));
    run.scan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(2));
    QCOMPARE(run->hitLineCount(), 2);
    QCOMPARE(run.takeAll().size(), 4);
    QStringList errors;
    QCOMPARE(run->takeErrors(&errors), 1);
    QStringList warnings;
    QCOMPARE(run->takeWarnings(&warnings), 2);
    QCOMPARE(run->resultFileCount(), 4);
    QCOMPARE(run->searchedCount(), 4);
    QCOMPARE(run->topEntryCount(), 2);
}

void SignalSpoolRunTest::scanForgetsThreadsAndQueueLengths()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    const auto lister = std::make_shared<GatedLister>(GatedLister::BeforeIdentifying);
    EngineOptions options;
    options.lister = lister;
    SpoolRun run(options);
    run->slotThreadCount(1, 5);
    run->onDirSemaphoreCount(7);
    run->onFileSemaphoreCount(9);
    run.scan(searchIn(tree.path()));
    // Nothing is queued yet, and so nobody has told a length or a count.
    QTRY_VERIFY_WITH_TIMEOUT(lister->arrived() > 0, kPatienceMilliseconds);
    QVERIFY(run->threadCounts().isEmpty());
    QCOMPARE(run->dirQueueLength(), 0);
    QCOMPARE(run->fileQueueLength(), 0);
    lister->open();
    QVERIFY(run.waitForEnds(1));
}

void SignalSpoolRunTest::aScanInTheMiddleOfARunLeavesNothingOfIt()
{
    const ScratchFolder first;
    writeFiftyFolders(first);
    const ScratchFolder second;
    const QString a = second.write(QStringLiteral("a.txt"), "the key\n");
    const QString b = second.write(QStringLiteral("b.txt"), "the key\n");
    SpoolRun run(standingIn(first));
    run.scan(searchIn(first.path()));
    QTRY_VERIFY_WITH_TIMEOUT(!run->threadCounts().isEmpty(), kPatienceMilliseconds);
    // This scan stops the first run, whose end then waits in the event queue
    // until the second run has its engine.
    run.scan(searchIn(second.path()));
    QVERIFY(run.waitForEnds(1));
    run.settle();
    QTest::qWait(1);
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run->hitLineCount(), 2);
    const QStringList lines = run.takeAll();
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.contains(QStringLiteral("::") + a));
    QVERIFY(lines.contains(QStringLiteral("::") + b));
}

void SignalSpoolRunTest::theEngineIsGoneAfterFinished()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    const auto lister = std::make_shared<GatedLister>(GatedLister::BeforeListing);
    const EngineWatch watch(lister);
    SpoolRun run(watch.options());
    QCOMPARE(watch.enginesOfASpool(), 0);
    run.scan(searchIn(tree.path()));
    QTRY_VERIFY_WITH_TIMEOUT(lister->arrived() > 0, kPatienceMilliseconds);
    QCOMPARE(watch.enginesOfASpool(), 1);
    lister->open();
    QVERIFY(run.waitForEnds(1));
    run.settle();
    QCOMPARE(watch.enginesOfASpool(), 0);
    run->abort();
    run.scan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(2));
    QCOMPARE(run.finishedFlags, QVector<bool>({false, false}));
    run.settle();
    QCOMPARE(watch.enginesOfASpool(), 0);
}

void SignalSpoolRunTest::theEngineStaysAfterALineCountUntilTheNextRun()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    const EngineWatch watch(std::make_shared<NativeFolderLister>());
    SpoolRun run(watch.options());
    for (int count = 1; count <= 2; ++count) {
        run.scan(countIn(tree.path()));
        QVERIFY(run.waitForEnds(count));
        run.settle();
        QCOMPARE(watch.enginesOfASpool(), 1);
    }
    run.scan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(3));
    run.settle();
    QCOMPARE(watch.enginesOfASpool(), 0);
    QCOMPARE(run->hitLineCount(), 2);
}

void SignalSpoolRunTest::deletingTheSpoolStopsARun()
{
    const ScratchFolder tree;
    for (int i = 0; i < 100; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    const EngineWatch watch(std::make_shared<NativeFolderLister>());
    for (int round = 0; round < 20; ++round) {
        {
            SpoolRun run(watch.options());
            run.scan(searchIn(tree.path()));
            QThread::usleep(static_cast<unsigned long>(round) * 300);
        }
        QCOMPARE(watch.engines(), 0);
    }
}

void SignalSpoolRunTest::deletingTheSpoolJoinsTheEngine_data()
{
    QTest::addColumn<bool>("linecount");
    QTest::addColumn<bool>("ended");
    QTest::newRow("search under way") << false << false;
    QTest::newRow("line count under way") << true << false;
    QTest::newRow("line count that has ended") << true << true;
}

void SignalSpoolRunTest::deletingTheSpoolJoinsTheEngine()
{
    QFETCH(bool, linecount);
    QFETCH(bool, ended);
    const ScratchFolder tree;
    writeFiftyFolders(tree);
    std::shared_ptr<const FolderLister> lister = std::make_shared<NativeFolderLister>();
    if (!ended)
        lister = std::make_shared<StandingLister>(tree.path());
    const EngineWatch watch(std::move(lister));
    {
        SpoolRun run(watch.options());
        run.scan(linecount ? countIn(tree.path()) : searchIn(tree.path()));
        if (ended)
            QVERIFY(run.waitForEnds(1));
        else
            QTRY_VERIFY_WITH_TIMEOUT(!run->threadCounts().isEmpty(), kPatienceMilliseconds);
        QCOMPARE(watch.enginesOfASpool(), 1);
    }
    QCOMPARE(watch.engines(), 0);
}

void SignalSpoolRunTest::lineCountsAreForwarded()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "1\n2\n");
    SpoolRun run;
    run.scan(countIn(tree.path()));
    QVERIFY(run.waitForEnds(1));
    const QVector<QPair<QString, int>> expected{{a, 3}};
    QCOMPARE(run.lineCounts, expected);
    QCOMPARE(run.lcntFinishedFlags, QVector<bool>{false});
    QVERIFY(run.finishedFlags.isEmpty());
}

void SignalSpoolRunTest::encodingsAreForwarded()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "\xEF\xBB\xBFtext\n");
    tree.write(QStringLiteral("b.bin"), QByteArray(8, '\0'));
    EngineOptions options;
    options.reportEncodings = true;
    SpoolRun run(options);
    run.scan(countIn(tree.path()));
    QVERIFY(run.waitForEnds(1));
    QCOMPARE(run.encodings.size(), 2);
    QCOMPARE(run.encodings.at(0), QVariantList({a, 4, 1, true}));
    QCOMPARE(run.encodings.at(1).at(1).toInt(), -2);
}

void SignalSpoolRunTest::abortEndsTheRunWithTrue_data()
{
    QTest::addColumn<bool>("linecount");
    QTest::newRow("search") << false;
    QTest::newRow("line count") << true;
}

void SignalSpoolRunTest::abortEndsTheRunWithTrue()
{
    QFETCH(bool, linecount);
    const ScratchFolder tree;
    writeFiftyFolders(tree);
    SpoolRun run(standingIn(tree));
    run.scan(linecount ? countIn(tree.path()) : searchIn(tree.path()));
    QTRY_VERIFY_WITH_TIMEOUT(!run->threadCounts().isEmpty(), kPatienceMilliseconds);
    run->abort();
    QVERIFY(run.waitForEnds(1));
    QCOMPARE(linecount ? run.lcntFinishedFlags : run.finishedFlags, QVector<bool>{true});
}

void SignalSpoolRunTest::abortRightAfterScanIsNotLost()
{
    const ScratchFolder tree;
    writeFiftyFolders(tree);
    for (int round = 0; round < 20; ++round) {
        SpoolRun run(standingIn(tree));
        run.scan(searchIn(tree.path()));
        // The spool has an engine, whose scan may still wait in its queue.
        QMetaObject::invokeMethod(
            run.operator->(), [&run] { run->abort(); }, Qt::QueuedConnection);
        QVERIFY(run.waitForEnds(1));
        QCOMPARE(run.finishedFlags, QVector<bool>{true});
    }
}

void SignalSpoolRunTest::abortRightAfterARequestIsNotLost_data()
{
    abortEndsTheRunWithTrue_data();
}

void SignalSpoolRunTest::abortRightAfterARequestIsNotLost()
{
    QFETCH(bool, linecount);
    const ScratchFolder tree;
    writeFiftyFolders(tree);
    SpoolRun run(standingIn(tree));
    for (int round = 1; round <= 10; ++round) {
        {
            // Held, the spool cannot have begun the scan when the abort comes.
            const HeldSpool held(run);
            run->requestScan(linecount ? countIn(tree.path()) : searchIn(tree.path()));
            run->abort();
        }
        QVERIFY(run.waitForEnds(round));
        QCOMPARE(linecount ? run.lcntFinishedFlags : run.finishedFlags, QVector<bool>(round, true));
    }
}

void SignalSpoolRunTest::anAbortDoesNotCountForALaterRequest()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    SpoolRun run;
    run->abort();
    run->requestScan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(1));
    {
        const HeldSpool held(run);
        run->requestScan(searchIn(tree.path()));
        run->abort();
        run->requestScan(searchIn(tree.path()));
    }
    QVERIFY(run.waitForEnds(2));
    QCOMPARE(run.finishedFlags, QVector<bool>({false, false}));
    QCOMPARE(run->hitLineCount(), 2);
}

void SignalSpoolRunTest::abortWithoutAnEngineDoesNothing()
{
    const ScratchFolder tree;
    writeTwoFiles(tree);
    SpoolRun run;
    run->abort();
    run.scan(searchIn(tree.path()));
    QVERIFY(run.waitForEnds(1));
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run->hitLineCount(), 2);
}

QTEST_GUILESS_MAIN(SignalSpoolRunTest)
#include "SignalSpoolRunTest.moc"
