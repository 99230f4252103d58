#include "mainwindow/SearchRun.h"

#include "engine/SignalSpool.h"
#include "settings/AppSettings.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

/// Searches of small trees, through the engine.
class SearchRunTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void aRunExistsFromStartToEnd();
    void theHitsWaitAlsoAfterTheFinish();
    void theConditionReachesTheEngine();
    void theSpoolLivesOnAThreadOfItsOwn();
    void aLineCountTellsEachFileThenItsEnd();
    void signalsArriveOnTheThreadOfTheRun();

    void aStartEndsTheFormerRun();
    void anEndThatIsOnItsWayReachesNoLaterRun();
    void fileCountsThatAreOnTheirWayReachNoLaterRun();
    void afterTheEndNothingArrives();

    void anAbortedRunFinishesAsAborted();
    void anAbortRightAfterTheStartIsHeardInTheEnd();
    void withoutARunAbortAndEndDoNothing();
    void endRightAfterTheStartWaitsForTheThread();
    void aRunThatGoesOnEndsWithItsObject();
    void aRunIsNotWaitedForBeyondItsTime_data();
    void aRunIsNotWaitedForBeyondItsTime();
    void anEndThatCameBeforeTheWaitIsKnown();
    void manyRunsInTurn();

private:
    SearchCondition condition(const QString &keyword) const;

    ScratchFolder m_settings;
    ScratchFolder m_tree;
};

namespace {

/// Waits, without processing an event here, until the run's end has been sent.
/// A run that ended before it was watched is over by the time-out.
void waitUntilSent(const SearchRun &run)
{
    // What runs on the spool's thread, which goes on already, holds nothing: nobody
    // would tell the thread sanitizer that it was made before.
    static QSemaphore ended;
    ended.acquire(ended.available());
    const auto release = [] {
        ended.release();
    };
    QObject::connect(run.spool(), &SignalSpool::finished, run.spool(), release,
                     Qt::DirectConnection);
    QObject::connect(run.spool(), &SignalSpool::lcntFinished, run.spool(), release,
                     Qt::DirectConnection);
    ended.tryAcquire(1, kPatienceMilliseconds);
}

} // namespace

void SearchRunTest::initTestCase()
{
    AppSettings::instance().load(m_settings.path());
    m_tree.write(QStringLiteral("a.txt"), "needle\nhay\n");
    m_tree.write(QStringLiteral("inner/b.txt"), "hay\nneedle needle\nhay needle\n");
    m_tree.write(QStringLiteral("inner/c.txt"), "hay\n");
}

SearchCondition SearchRunTest::condition(const QString &keyword) const
{
    SearchCondition condition;
    condition.pathlist = QStringList(m_tree.path());
    condition.mask = QStringLiteral("*.txt");
    condition.keyword1 = keyword;
    return condition;
}

void SearchRunTest::aRunExistsFromStartToEnd()
{
    SearchRun run;
    QVERIFY(!run.exists());
    QVERIFY(!run.spool());
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    QVERIFY(run.exists());
    QVERIFY(run.spool());
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QVERIFY(run.exists());
    run.end();
    QVERIFY(!run.exists());
    QVERIFY(!run.spool());
}

void SearchRunTest::theHitsWaitAlsoAfterTheFinish()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    QSignalSpy lineCountFinished(&run, &SearchRun::lineCountFinished);
    run.start(condition(QStringLiteral("needle")));
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QCOMPARE(finished.first().first().toBool(), false);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(lineCountFinished.count(), 0);
    QCOMPARE(run.spool()->resultFileCount(), 2);
    QCOMPARE(run.spool()->hitLineCount(), 3);
    QCOMPARE(run.spool()->searchedCount(), 3);
    QStringList lines;
    QCOMPARE(run.spool()->takeResults(&lines, 0), 5);
    QVERIFY(lines.contains(QStringLiteral("      1:    1:needle")));
}

void SearchRunTest::theConditionReachesTheEngine()
{
    m_tree.write(QStringLiteral("conditions/a.c"), "KEY a\nnear\nKEY no\nnear\nKEYS\nnear\n");
    m_tree.write(QStringLiteral("conditions/b.c"), "nothing\n");
    m_tree.write(QStringLiteral("conditions/inner/c.c"), "key\nnear\n");
    SearchCondition all;
    all.pathlist = QStringList(m_tree.filePath(QStringLiteral("conditions/")));
    all.mask = QStringLiteral("*.c");
    all.keyword1 = QStringLiteral("k.y");
    all.keyword2 = QStringLiteral("n.ar");
    all.keyword3 = QStringLiteral("n.$");
    all.plusline = 1;
    all.flg =
        SearchCondition::IgnoreCaseFlag | SearchCondition::WordFlag | SearchCondition::RegExpFlag;
    all.fnameflg = true;
    all.subdir = false;
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(all);
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QStringList lines;
    run.spool()->takeResults(&lines, 0);
    const QStringList hits = lines.filter(QStringLiteral("KEY"));
    QCOMPARE(hits, QStringList(QStringLiteral("      1:    1:KEY a")));
    // A file without a hit is named, one of an inner folder is not.
    QCOMPARE(lines.filter(QStringLiteral("b.c")).size(), 1);
    QCOMPARE(lines.filter(QStringLiteral("c.c")).size(), 0);
}

void SearchRunTest::theSpoolLivesOnAThreadOfItsOwn()
{
    SearchRun run;
    run.start(condition(QStringLiteral("needle")));
    QVERIFY(run.spool()->thread() != thread());
    QVERIFY(run.spool()->thread()->isRunning());
    const QPointer<QThread> thread(run.spool()->thread());
    run.end();
    QVERIFY(thread.isNull());
}

void SearchRunTest::aLineCountTellsEachFileThenItsEnd()
{
    SearchRun run;
    QStringList told;
    connect(&run, &SearchRun::lineCounted, this, [&told](const QString &filename, int count) {
        told += QStringLiteral("%1 %2").arg(QFileInfo(filename).fileName()).arg(count);
    });
    connect(&run, &SearchRun::lineCountFinished, this,
            [&told](bool aborted) { told += QStringLiteral("end %1").arg(aborted); });
    QSignalSpy finished(&run, &SearchRun::lineCountFinished);
    QSignalSpy searchFinished(&run, &SearchRun::searchFinished);
    SearchCondition counting = condition(QString());
    counting.pathlist = QStringList(m_tree.filePath(QStringLiteral("inner/")));
    counting.linecount = true;
    run.start(counting);
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QCOMPARE(searchFinished.count(), 0);
    QCOMPARE(told.size(), 3);
    QCOMPARE(told.takeLast(), QStringLiteral("end 0"));
    told.sort();
    // The empty line behind the last line feed counts.
    QCOMPARE(told, (QStringList{QStringLiteral("b.txt 4"), QStringLiteral("c.txt 2")}));
}

void SearchRunTest::signalsArriveOnTheThreadOfTheRun()
{
    SearchRun run;
    QThread *arrivedOn = nullptr;
    connect(
        &run, &SearchRun::searchFinished, this,
        [&arrivedOn] { arrivedOn = QThread::currentThread(); }, Qt::DirectConnection);
    run.start(condition(QStringLiteral("needle")));
    QTRY_VERIFY_WITH_TIMEOUT(arrivedOn, kPatienceMilliseconds);
    QCOMPARE(arrivedOn, thread());
}

void SearchRunTest::aStartEndsTheFormerRun()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    const QPointer<SignalSpool> former(run.spool());
    run.start(condition(QStringLiteral("hay")));
    QVERIFY(former.isNull());
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QCOMPARE(run.spool()->hitLineCount(), 4);
    QTest::qWait(50);
    QCOMPARE(finished.count(), 1);
}

void SearchRunTest::anEndThatIsOnItsWayReachesNoLaterRun()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    waitUntilSent(run);
    QCOMPARE(finished.count(), 0);
    run.start(condition(QStringLiteral("hay")));
    waitUntilSent(run);
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(run.spool()->hitLineCount(), 4);
}

void SearchRunTest::fileCountsThatAreOnTheirWayReachNoLaterRun()
{
    SearchRun run;
    QSignalSpy counted(&run, &SearchRun::lineCounted);
    QSignalSpy counts(&run, &SearchRun::lineCountFinished);
    SearchCondition counting = condition(QString());
    counting.linecount = true;
    run.start(counting);
    waitUntilSent(run);
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("hay")));
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QCOMPARE(counted.count(), 0);
    QCOMPARE(counts.count(), 0);
}

void SearchRunTest::afterTheEndNothingArrives()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    waitUntilSent(run);
    run.end();
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
}

void SearchRunTest::anAbortedRunFinishesAsAborted()
{
    // Large enough to be still under way when the abort is said.
    const ScratchFolder large;
    constexpr int kFiles = 2000;
    for (int i = 0; i < kFiles; ++i)
        large.write(QStringLiteral("%1.txt").arg(i), QByteArray("needle\n").repeated(2000));
    SearchCondition condition = this->condition(QStringLiteral("n[e]+dle"));
    condition.pathlist = QStringList(large.path());
    condition.flg = SearchCondition::RegExpFlag;
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition);
    QTRY_VERIFY_WITH_TIMEOUT(run.spool()->searchedCount() > 0 || finished.count() > 0,
                             kPatienceMilliseconds);
    run.abort();
    QVERIFY(finished.count() > 0 || finished.wait(kPatienceMilliseconds));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toBool(), true);
    QVERIFY(run.spool()->searchedCount() < kFiles);
    QVERIFY(run.exists());
}

void SearchRunTest::anAbortRightAfterTheStartIsHeardInTheEnd()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    // As the window says it: at once, and again while the engine goes on.
    run.abort();
    QTimer again;
    connect(&again, &QTimer::timeout, &run, &SearchRun::abort);
    again.start(0);
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, kPatienceMilliseconds);
    QTest::qWait(50);
    QCOMPARE(finished.count(), 1);
    run.end();
}

void SearchRunTest::withoutARunAbortAndEndDoNothing()
{
    SearchRun run;
    run.abort();
    run.end();
    QVERIFY(!run.exists());
}

void SearchRunTest::endRightAfterTheStartWaitsForTheThread()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    for (int round = 0; round < 20; ++round) {
        run.start(condition(QStringLiteral("needle")));
        run.end();
        QVERIFY(!run.exists());
    }
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
}

void SearchRunTest::aRunThatGoesOnEndsWithItsObject()
{
    QPointer<QThread> thread;
    {
        SearchRun run;
        run.start(condition(QStringLiteral("needle")));
        thread = run.spool()->thread();
        QVERIFY(thread);
    }
    QVERIFY(thread.isNull());
}

void SearchRunTest::aRunIsNotWaitedForBeyondItsTime_data()
{
    QTest::addColumn<bool>("linecount");
    QTest::newRow("search") << false;
    QTest::newRow("line count") << true;
}

void SearchRunTest::aRunIsNotWaitedForBeyondItsTime()
{
    QFETCH(bool, linecount);
    SearchRun run;
    QVERIFY(run.endWithin(0));
    // More than is read before the next line is reached, however late that is.
    const ScratchFolder large;
    for (int i = 0; i < 1000; ++i)
        large.write(QStringLiteral("%1.txt").arg(i), QByteArray("needle\n").repeated(2000));
    SearchCondition wanted = condition(QStringLiteral("n[e]+dle"));
    wanted.pathlist = QStringList(large.path());
    wanted.flg = SearchCondition::RegExpFlag;
    wanted.linecount = linecount;
    run.start(wanted);
    QVERIFY(!run.endWithin(0));
    QVERIFY(run.exists());
    QVERIFY(run.endWithin(kPatienceMilliseconds));
    QVERIFY(!run.exists());
    QVERIFY(run.endWithin(0));
}

void SearchRunTest::anEndThatCameBeforeTheWaitIsKnown()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    run.start(condition(QStringLiteral("needle")));
    QVERIFY(finished.wait(kPatienceMilliseconds));
    QVERIFY(run.endWithin(0));
}

void SearchRunTest::manyRunsInTurn()
{
    SearchRun run;
    QSignalSpy finished(&run, &SearchRun::searchFinished);
    for (int round = 1; round <= 20; ++round) {
        run.start(condition(QStringLiteral("needle")));
        QVERIFY(finished.wait(kPatienceMilliseconds));
        QCOMPARE(finished.count(), round);
        QCOMPARE(run.spool()->hitLineCount(), 3);
        run.end();
    }
}

QTEST_GUILESS_MAIN(SearchRunTest)

#include "SearchRunTest.moc"
