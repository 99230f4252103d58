#include "engine/SignalSpool.h"
#include "engine/TextGrepCore.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/engine_support/SpoolRun.h"
#include "tests/support/OneProcessor.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"

#include <QScopeGuard>
#include <QSet>
#include <QTest>

#include <random>
#include <unistd.h>

namespace {

/// What the machine is said to have; 0 for what it has. Set while no search runs.
int g_processors = 0;

} // namespace

extern "C" long __sysconf(int name); // NOLINT(bugprone-reserved-identifier)

/// In the place of the system's own, which the toolkit asks for the number of processors
/// and the engine follows with its threads. The sanitizers ask before they can watch.
extern "C" __attribute__((no_sanitize("address", "thread"))) long sysconf(int name) noexcept
{
    const bool pretends = g_processors != 0 && name == _SC_NPROCESSORS_ONLN;
    return pretends ? g_processors : ::__sysconf(name);
}

/// Searches and line counts that are started, aborted, replaced and given up at
/// random moments.
class SearchStressTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyRunEndsOnceWithAllThatItFound_data();
    void everyRunEndsOnceWithAllThatItFound();

private:
    using Hits = QMap<QString, QStringList>;

    SearchCondition request(bool lineCount);
    void runToTheEnd();
    void abortInTheMiddle();
    void replaceInTheMiddle();
    void giveUpInTheMiddle();
    void verifyResults(SpoolRun &run, bool lineCount);
    void verifyNothingTwice(SpoolRun &run);
    void verifyCountsOnce(const SpoolRun &run);
    void verifyEnds(SpoolRun &run, int searches, int lineCounts);
    EngineOptions otherOptions();
    void pause();
    int number(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    ScratchFolder m_tree;
    int m_files = 0;
    std::mt19937 m_random{20260101};
    int m_aborted = 0;
    int m_replaced = 0;
    int m_partial = 0; ///< runs that ended with something, and maybe not with all
};

namespace {

constexpr int kFolders = 40;
constexpr int kFilesInAFolder = 8;
constexpr int kLines = 30;
constexpr int kHitsInAFile = 5;

} // namespace

void SearchStressTest::initTestCase()
{
    QByteArray content;
    for (int line = 1; line <= kLines; ++line)
        content += line % (kLines / kHitsInAFile) == 0 ? "a needle here\n" : "hay and straw\n";
    for (int folder = 0; folder < kFolders; ++folder) {
        for (int file = 0; file < kFilesInAFolder; ++file) {
            m_tree.write(QStringLiteral("%1/%2.txt").arg(folder).arg(file), content);
            ++m_files;
        }
    }
}

/// The keywords differ, what they find does not.
SearchCondition SearchStressTest::request(bool lineCount)
{
    if (lineCount)
        return countLinesIn({m_tree.path()});
    SearchCondition condition = searchFor(QStringLiteral("needle"), {m_tree.path()});
    switch (number(3)) {
    case 0:
        condition.flg = SearchCondition::RegExpFlag;
        condition.keyword1 = QStringLiteral("ne+dle|nothing%1").arg(number(1000));
        break;
    case 1:
        condition.flg = SearchCondition::IgnoreCaseFlag | SearchCondition::WordFlag;
        condition.keyword1 = QStringLiteral("NEEDLE");
        break;
    default:
        condition.keyword3 = QStringLiteral("nothing%1").arg(number(1000));
    }
    return condition;
}

/// From nothing to about as long as a run takes.
void SearchStressTest::pause()
{
    constexpr int kLongestMicroseconds = 12000;
    if (number(4) != 0)
        QThread::usleep(static_cast<unsigned long>(number(kLongestMicroseconds)));
}

void SearchStressTest::verifyResults(SpoolRun &run, bool lineCount)
{
    if (lineCount) {
        QMap<QString, int> counts;
        for (const auto &count : qAsConst(run.lineCounts)) {
            QCOMPARE(count.second, kLines + 1);
            ++counts[count.first];
        }
        QCOMPARE(counts.size(), m_files);
        QCOMPARE(run.lineCounts.size(), m_files);
        return;
    }
    Hits hits;
    QString file;
    int heads = 0;
    for (const QString &line : run.takeAll()) {
        if (line.startsWith(QLatin1String("::"))) {
            file = line;
            ++heads;
        } else {
            hits[file].append(line);
        }
    }
    QCOMPARE(heads, m_files);
    QCOMPARE(hits.size(), m_files);
    // The same lines in every file, and each of them once.
    QStringList once = hits.first();
    QCOMPARE(once.removeDuplicates(), 0);
    QCOMPARE(once.size(), kHitsInAFile);
    for (const QStringList &lines : qAsConst(hits))
        QCOMPARE(lines, hits.first());
    QCOMPARE(run->hitLineCount(), m_files * kHitsInAFile);
}

/// An aborted run may miss what is there to find, and nothing else.
void SearchStressTest::verifyNothingTwice(SpoolRun &run)
{
    QSet<QString> seen;
    QString file;
    for (const QString &line : run.takeAll()) {
        const bool isHead = line.startsWith(QLatin1String("::"));
        if (isHead)
            file = line;
        const QString place =
            isHead ? file : file + QLatin1Char('\n') + line.section(QLatin1Char(':'), 0, 0);
        QVERIFY2(!seen.contains(place), qPrintable(place));
        seen.insert(place);
    }
    verifyCountsOnce(run);
    m_partial += seen.isEmpty() && run.lineCounts.isEmpty() ? 0 : 1;
}

void SearchStressTest::verifyCountsOnce(const SpoolRun &run)
{
    QSet<QString> counted;
    for (const auto &count : qAsConst(run.lineCounts)) {
        QVERIFY2(!counted.contains(count.first), qPrintable(count.first));
        counted.insert(count.first);
        QCOMPARE(count.second, kLines + 1);
    }
}

/// Once nothing is left that could end once more.
void SearchStressTest::verifyEnds(SpoolRun &run, int searches, int lineCounts)
{
    run.finish();
    QCOMPARE(run.finishedFlags.size(), searches);
    QCOMPARE(run.lcntFinishedFlags.size(), lineCounts);
}

/// As after a change of the settings; what is found stays the same.
EngineOptions SearchStressTest::otherOptions()
{
    EngineOptions options;
    options.limits.bigsize = 1 + number(10);
    options.limits.codechksize = 16 << number(10);
    options.limits.detectsize = 16 << number(10);
    options.limits.tabcolm = 1 + number(8);
    if (number(2) == 0)
        options.limits.excludedFolders = QStringList{QStringLiteral("nothing")};
    if (number(2) == 0)
        options.limits.excludedFiles = QStringList{QStringLiteral("nothing")};
    options.loadThreshold = 1 + number(2);
    options.visitEveryLine = number(2) == 0;
    return options;
}

void SearchStressTest::runToTheEnd()
{
    const bool lineCount = number(3) == 0;
    SpoolRun run(otherOptions());
    run->requestScan(request(lineCount));
    QVERIFY(run.waitForEnds(1));
    run.settle();
    QTest::qWait(0);
    QCOMPARE(lineCount ? run.lcntFinishedFlags : run.finishedFlags, QVector<bool>{false});
    verifyResults(run, lineCount);
    verifyEnds(run, lineCount ? 0 : 1, lineCount ? 1 : 0);
}

void SearchStressTest::abortInTheMiddle()
{
    const bool lineCount = number(3) == 0;
    SpoolRun run;
    run->requestScan(request(lineCount));
    pause();
    run->abort();
    QVERIFY(run.waitForEnds(1));
    run.settle();
    QTest::qWait(0);
    QCOMPARE(run.finishedFlags.size(), lineCount ? 0 : 1);
    QCOMPARE(run.lcntFinishedFlags.size(), lineCount ? 1 : 0);
    const bool aborted = (run.finishedFlags + run.lcntFinishedFlags).constFirst();
    m_aborted += aborted ? 1 : 0;
    if (aborted)
        verifyNothingTwice(run);
    else
        verifyResults(run, lineCount);
    verifyEnds(run, lineCount ? 0 : 1, lineCount ? 1 : 0);
}

/// By a run of the other kind, so that their ends cannot be mistaken.
void SearchStressTest::replaceInTheMiddle()
{
    const bool lineCount = number(2) == 0;
    SpoolRun run;
    run->requestScan(request(!lineCount));
    pause();
    const bool abortFirst = number(2) == 0;
    if (abortFirst)
        run->abort();
    // Between the two runs: the spool's own thread looks at the options.
    SignalSpool *const spool = run.operator->();
    QMetaObject::invokeMethod(
        spool, [spool, options = otherOptions()] { spool->setEngineOptions(options); },
        Qt::QueuedConnection);
    run->requestScan(request(lineCount));
    const QVector<bool> &first = lineCount ? run.finishedFlags : run.lcntFinishedFlags;
    const QVector<bool> &second = lineCount ? run.lcntFinishedFlags : run.finishedFlags;
    QTRY_VERIFY_WITH_TIMEOUT(!second.isEmpty(), 60000);
    run.settle();
    QTest::qWait(0);
    QCOMPARE(second, QVector<bool>{false});
    QVERIFY(first.size() <= 1);
    m_replaced += first.isEmpty() ? 1 : 0;
    // What the first run has found is still there, too.
    if (!lineCount || first.isEmpty())
        verifyResults(run, lineCount);
    if (lineCount)
        verifyNothingTwice(run);
    else
        verifyCountsOnce(run);
    const int ofFirst = first.size();
    verifyEnds(run, lineCount ? ofFirst : 1, lineCount ? 1 : ofFirst);
}

void SearchStressTest::giveUpInTheMiddle()
{
    SpoolRun run;
    const bool lineCount = number(3) == 0;
    run->requestScan(request(lineCount));
    pause();
    run.finish();
    QVERIFY((lineCount ? run.lcntFinishedFlags : run.finishedFlags).size() <= 1);
    QCOMPARE((lineCount ? run.finishedFlags : run.lcntFinishedFlags).size(), 0);
}

void SearchStressTest::everyRunEndsOnceWithAllThatItFound_data()
{
    QTest::addColumn<int>("processors");
    QTest::addColumn<int>("threads");
    const int here = QThread::idealThreadCount();
    QTest::newRow("on every processor") << here << TextGrepCore::threadLimit(here);
    QTest::newRow("on one processor") << 1 << 4;
    QTest::newRow("with the threads of sixteen") << 16 << 17;
}

void SearchStressTest::everyRunEndsOnceWithAllThatItFound()
{
    QFETCH(int, processors);
    QFETCH(int, threads);
    const OneProcessor pinned(processors == 1);
    g_processors = processors;
    const auto restore = qScopeGuard([] { g_processors = 0; });
    QCOMPARE(TextGrepCore().maxThreadCount(), threads);
    m_aborted = 0;
    m_replaced = 0;
    m_partial = 0;
    const int rounds = TestLength::rounds(100, 1000);
    for (int round = 0; round < rounds && !QTest::currentTestFailed(); ++round) {
        switch (number(4)) {
        case 0:
            runToTheEnd();
            break;
        case 1:
            abortInTheMiddle();
            break;
        case 2:
            replaceInTheMiddle();
            break;
        default:
            giveUpInTheMiddle();
        }
    }
    QVERIFY2(m_partial > rounds / 50, qPrintable(QString::number(m_partial)));
    // Pauses that are too short or too long would race nothing.
    QVERIFY2(m_aborted > rounds / 50, qPrintable(QString::number(m_aborted)));
    QVERIFY2(m_replaced > rounds / 50, qPrintable(QString::number(m_replaced)));
}

QTEST_GUILESS_MAIN(SearchStressTest)
#include "SearchStressTest.moc"
