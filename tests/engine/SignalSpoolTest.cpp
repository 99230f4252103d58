#include "engine/SignalSpool.h"

#include "engine/SearchCondition.h"
#include "tests/engine_support/SlowLister.h"
#include "tests/support/ScratchFolder.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

namespace {

/// A spool on a thread of its own, as its owner keeps it.
class SpoolOnThread {
public:
    explicit SpoolOnThread(const EngineOptions &options = EngineOptions())
        : m_spool(std::make_unique<SignalSpool>())
    {
        m_spool->setEngineOptions(options);
        m_thread.start();
        m_spool->moveToThread(&m_thread);
    }
    ~SpoolOnThread()
    {
        m_thread.exit(0);
        m_thread.wait();
    }

    SignalSpool *operator->() const { return m_spool.get(); }
    SignalSpool *get() const { return m_spool.get(); }

    void scan(const SearchCondition &c)
    {
        QMetaObject::invokeMethod(
            m_spool.get(), "scan", Qt::QueuedConnection, Q_ARG(QStringList, c.pathlist),
            Q_ARG(QString, c.mask), Q_ARG(QString, c.keyword1), Q_ARG(QString, c.keyword2),
            Q_ARG(QString, c.keyword3), Q_ARG(int, c.plusline), Q_ARG(int, c.flg),
            Q_ARG(bool, c.fnameflg), Q_ARG(bool, c.subdir), Q_ARG(bool, c.linecount));
    }

private:
    // The thread ends before the spool is deleted.
    std::unique_ptr<SignalSpool> m_spool;
    QThread m_thread;
};

SearchCondition searchIn(const QString &path)
{
    SearchCondition condition;
    condition.pathlist = QStringList{path};
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = QStringLiteral("key");
    return condition;
}

QStringList all(SignalSpool *spool)
{
    QStringList lines;
    spool->takeResults(&lines, 0);
    return lines;
}

} // namespace

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

    void aSearchArrivesWholeBeforeItsEnd();
    void aSecondScanStartsFromZeroButKeepsTheCounters();
    void aScanInTheMiddleOfARunLeavesNothingOfIt();
    void theEngineIsGoneAfterFinished();
    void lineCountsAreForwarded();
    void aLineCountCanBeFollowedByAnotherRun();
    void abortEndsTheRunWithTrue();
    void abortRightAfterScanIsNotLost();
    void abortRightAfterARequestIsNotLost();
    void anAbortDoesNotCountForALaterRequest();
    void abortWithoutAnEngineDoesNothing();
    void deletingTheSpoolStopsARun();
    void deletingTheSpoolAfterALineCountJoinsTheEngine();
    void encodingsAreForwarded();
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

void SignalSpoolTest::aSearchArrivesWholeBeforeItsEnd()
{
    const ScratchFolder tree;
    for (int i = 0; i < 100; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\nkey again\n");
    for (int round = 0; round < 10; ++round) {
        SpoolOnThread spool;
        QSignalSpy finished(spool.get(), &SignalSpool::finished);
        spool.scan(searchIn(tree.path()));
        QVERIFY(finished.wait(60000));
        QCOMPARE(finished.first().first().toBool(), false);
        QCOMPARE(spool->resultFileCount(), 100);
        QCOMPARE(spool->hitLineCount(), 200);
        QCOMPARE(spool->searchedCount(), 100);
        QCOMPARE(all(spool.get()).size(), 300);
        QCOMPARE(spool->topEntryCount(), 1);
        QVERIFY(!spool->threadCounts().isEmpty());
        QTest::qWait(1);
        QCOMPARE(finished.size(), 1);
    }
}

void SignalSpoolTest::aSecondScanStartsFromZeroButKeepsTheCounters()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    const QString binary = tree.write(QStringLiteral("c.bin"), QByteArray(8, '\0'));
    tree.makeFolder(QStringLiteral("out"));
    EngineOptions options;
    options.limits.excludedFolders = QStringList{QStringLiteral("out")};
    SpoolOnThread spool(options);
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(spool->hitLineCount(), 2);
    QCOMPARE(all(spool.get()).size(), 4);
    QStringList errors;
    QCOMPARE(spool->takeErrors(&errors), 1);
    QStringList warnings;
    QCOMPARE(spool->takeWarnings(&warnings), 2);
    QCOMPARE(spool->resultFileCount(), 4);
    QCOMPARE(spool->searchedCount(), 4);
    QCOMPARE(spool->topEntryCount(), 2);
}

void SignalSpoolTest::aScanInTheMiddleOfARunLeavesNothingOfIt()
{
    const ScratchFolder first;
    for (int i = 0; i < 50; ++i)
        first.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    const ScratchFolder second;
    const QString a = second.write(QStringLiteral("a.txt"), "the key\n");
    const QString b = second.write(QStringLiteral("b.txt"), "the key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(5);
    SpoolOnThread spool(options);
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(searchIn(first.path()));
    QTRY_VERIFY(!spool->threadCounts().isEmpty());
    // This scan stops the first run, whose end then waits in the event queue
    // until the second run has its engine.
    spool.scan(searchIn(second.path()));
    QVERIFY(finished.wait(60000));
    QMetaObject::invokeMethod(
        spool.get(), [] {}, Qt::BlockingQueuedConnection);
    QTest::qWait(1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toBool(), false);
    QCOMPARE(spool->hitLineCount(), 2);
    QStringList lines = all(spool.get());
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.contains(QStringLiteral("::") + a));
    QVERIFY(lines.contains(QStringLiteral("::") + b));
}

void SignalSpoolTest::theEngineIsGoneAfterFinished()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    SpoolOnThread spool;
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    // Behind the slot that ends the engine; an engine would take the abort and
    // the next scan would have to wait for it.
    QMetaObject::invokeMethod(
        spool.get(), [] {}, Qt::BlockingQueuedConnection);
    spool->abort();
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.last().first().toBool(), false);
}

void SignalSpoolTest::lineCountsAreForwarded()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "1\n2\n");
    SearchCondition condition = searchIn(tree.path());
    condition.linecount = true;
    SpoolOnThread spool;
    QSignalSpy counts(spool.get(), &SignalSpool::linecntAt);
    QSignalSpy ended(spool.get(), &SignalSpool::lcntFinished);
    spool.scan(condition);
    QVERIFY(ended.wait(60000));
    QCOMPARE(counts.size(), 1);
    QCOMPARE(counts.first().at(0).toString(), a);
    QCOMPARE(counts.first().at(1).toInt(), 3);
    QCOMPARE(ended.first().first().toBool(), false);
}

void SignalSpoolTest::aLineCountCanBeFollowedByAnotherRun()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    SearchCondition condition = searchIn(tree.path());
    condition.linecount = true;
    SpoolOnThread spool;
    QSignalSpy ended(spool.get(), &SignalSpool::lcntFinished);
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(condition);
    QVERIFY(ended.wait(60000));
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(spool->hitLineCount(), 2);
}

void SignalSpoolTest::abortEndsTheRunWithTrue()
{
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(20);
    SpoolOnThread spool(options);
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(searchIn(tree.path()));
    QTRY_VERIFY(!spool->threadCounts().isEmpty());
    spool->abort();
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.first().first().toBool(), true);
}

void SignalSpoolTest::abortRightAfterScanIsNotLost()
{
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(20);
    for (int round = 0; round < 20; ++round) {
        SpoolOnThread spool(options);
        QSignalSpy finished(spool.get(), &SignalSpool::finished);
        spool.scan(searchIn(tree.path()));
        // The spool has an engine, whose scan may still wait in its queue.
        QMetaObject::invokeMethod(
            spool.get(), [&spool] { spool->abort(); }, Qt::QueuedConnection);
        QVERIFY(finished.wait(60000));
        QCOMPARE(finished.first().first().toBool(), true);
    }
}

void SignalSpoolTest::abortRightAfterARequestIsNotLost()
{
    const ScratchFolder tree;
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    EngineOptions options;
    options.lister = std::make_shared<SlowLister>(20);
    SpoolOnThread spool(options);
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    for (int round = 0; round < 10; ++round) {
        // Held up, the spool cannot have begun the scan when the abort comes.
        QMetaObject::invokeMethod(
            spool.get(), [] { QThread::msleep(5); }, Qt::QueuedConnection);
        spool->requestScan(searchIn(tree.path()));
        spool->abort();
        QVERIFY(finished.wait(60000));
        QCOMPARE(finished.last().first().toBool(), true);
    }
    SearchCondition condition = searchIn(tree.path());
    condition.linecount = true;
    QSignalSpy ended(spool.get(), &SignalSpool::lcntFinished);
    spool->requestScan(condition);
    spool->abort();
    QVERIFY(ended.wait(60000));
    QCOMPARE(ended.first().first().toBool(), true);
}

void SignalSpoolTest::anAbortDoesNotCountForALaterRequest()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    SpoolOnThread spool;
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool->abort();
    spool->requestScan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.last().first().toBool(), false);
    QMetaObject::invokeMethod(
        spool.get(), [] { QThread::msleep(5); }, Qt::QueuedConnection);
    spool->requestScan(searchIn(tree.path()));
    spool->abort();
    spool->requestScan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.last().first().toBool(), false);
    QCOMPARE(spool->hitLineCount(), 2);
}

void SignalSpoolTest::abortWithoutAnEngineDoesNothing()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "some key\n");
    tree.write(QStringLiteral("b.txt"), "some key\n");
    SpoolOnThread spool;
    spool->abort();
    QSignalSpy finished(spool.get(), &SignalSpool::finished);
    spool.scan(searchIn(tree.path()));
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.first().first().toBool(), false);
    QCOMPARE(spool->hitLineCount(), 2);
}

void SignalSpoolTest::deletingTheSpoolStopsARun()
{
    const ScratchFolder tree;
    for (int i = 0; i < 100; ++i)
        tree.write(QStringLiteral("%1/%1.txt").arg(i), "some key\n");
    for (int round = 0; round < 20; ++round) {
        SpoolOnThread spool;
        spool.scan(searchIn(tree.path()));
        QThread::usleep(static_cast<unsigned long>(round) * 300);
    }
}

void SignalSpoolTest::deletingTheSpoolAfterALineCountJoinsTheEngine()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "1\n");
    SearchCondition condition = searchIn(tree.path());
    condition.linecount = true;
    SpoolOnThread spool;
    QSignalSpy ended(spool.get(), &SignalSpool::lcntFinished);
    spool.scan(condition);
    QVERIFY(ended.wait(60000));
}

void SignalSpoolTest::encodingsAreForwarded()
{
    const ScratchFolder tree;
    const QString a = tree.write(QStringLiteral("a.txt"), "\xEF\xBB\xBFtext\n");
    tree.write(QStringLiteral("b.bin"), QByteArray(8, '\0'));
    SearchCondition condition = searchIn(tree.path());
    condition.linecount = true;
    EngineOptions options;
    options.reportEncodings = true;
    SpoolOnThread spool(options);
    QSignalSpy encodings(spool.get(), &SignalSpool::encodingAt);
    QSignalSpy ended(spool.get(), &SignalSpool::lcntFinished);
    spool.scan(condition);
    QVERIFY(ended.wait(60000));
    QCOMPARE(encodings.size(), 2);
    QCOMPARE(encodings.at(0), QVariantList({a, 4, 1, true}));
    QCOMPARE(encodings.at(1).at(1).toInt(), -2);
}

QTEST_GUILESS_MAIN(SignalSpoolTest)
#include "SignalSpoolTest.moc"
