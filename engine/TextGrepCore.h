#pragma once

#include "engine/EngineOptions.h"
#include "engine/SharedRun.h"

#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

struct SearchCondition;
class ThreadPoolTask;

/// The search engine: walks folders on a thread pool of its own, queues the
/// files that pass mask and exclusions, then loads, decodes and matches them,
/// or counts their lines, and tells everything by signals.
///
/// Threads of a run, all of the pool: the supervisor (doWalkDirs), the walkers
/// (doWalkSubDirs), and the loaders (doLoadFile). In search mode walk and load
/// are two phases, so that all threads serve one at a time; in line-count mode
/// one loader runs from the start, so that counts arrive in walk order.
///
/// Cancelling: abort() sets a flag that loaders look at before each file, each
/// piece of a large one and, with a pattern, each line that it is tried on;
/// walkers at each entry of a listing and every 100 queued entries; and the
/// supervisor at least every 5 ms. Nothing looks at it while a pattern is tried
/// on one line. Hits of files that were finished before may still arrive; the end
/// signal comes last, once no other worker runs.
///
/// Every signal but the end's is emitted from pool threads.
class TextGrepCore : public QObject {
    Q_OBJECT

signals:
    void progressReport(int filecount, qulonglong totalchars, qulonglong totalCompressedChars);
    void progressFileReport(QString filename);
    /// This and the next: not where EngineOptions::hitSink takes the hits.
    void foundAtFile(QString filename);
    /// One list a file, lines in order. It travels as a value: a list that is
    /// never delivered frees itself.
    void foundAtList(QString filename, QStringList list);
    void finished(bool aborted);
    void linecntAt(QString filename, int linecnt);
    void lcntFinished(bool aborted);
    void progressFileSemaphoreCount(int count);
    void progressDirSemaphoreCount(int count);
    void progressFileCount();
    void progressFileAllCount(int count);
    void progressSrchCount();
    void ThreadCount(int threadid, int count);
    void ErrorMsg(QString message);
    void WarningMsg(QString message);
    /// In line-count mode with EngineOptions::reportEncodings, instead of
    /// linecntAt: what detection finds in each file (codeSet -2: refused).
    void encodingAt(QString filename, int codeSet, int lineEnd, bool bom);

public slots:
    /// Starts a run with the request (see SearchCondition); a run that is under
    /// way is stopped first. Returns once the run's workers are started.
    void scan(QStringList pathlist, QString mask, QString keyword1, QString keyword2,
              QString keyword3, int plusline, int flg, bool fnameflg, bool subdir, bool linecount);
    /// Asks the run to end and returns at once. Any thread.
    void abort();
    /// abort(), and waits without limit until no worker runs. Not from a worker.
    void abortBlocking();

    // The workers' own: for the tasks that scan starts, nobody else.
    void doLoadFile();
    void doWalkDirs();
    void doWalkSubDirs();

public:
    explicit TextGrepCore(QObject *parent = nullptr);
    ~TextGrepCore() override;

    /// Before scan; kept for later runs too. Without it each scan takes the
    /// limits from AppSettings.
    void setOptions(const EngineOptions &options);

    /// Threads of the pool on a machine with that ideal thread count.
    static int threadLimit(int idealThreadCount);
    int maxThreadCount() const { return m_maxThreadCount; }

    /// What ErrorMsg says of a file whose code set detection refused with the
    /// negative number codeSet; bigsize in MiB. A number that is none of the
    /// detection's is written to the debug log as well.
    static QString refusalMessage(int codeSet, int bigsize, const QString &path);

private:
    /// The time in which one worker runs.
    class WorkerScope {
        Q_DISABLE_COPY(WorkerScope)

    public:
        explicit WorkerScope(TextGrepCore &core) : m_core(core) { m_core.meetWorkers(); }
        ~WorkerScope() { m_core.meetWorkers(); }

    private:
        TextGrepCore &m_core;
    };

    void meetWorkers();
    void prepareRun(const SearchCondition &condition);
    void startTasks();
    void startTask(void (TextGrepCore::*slot)(), bool replicate);

    void supervise();
    void startLoadPhase(int fileCount);
    void endWorkers();
    template <typename Queue> void wake(Queue &queue) const;

    bool waitWhileHeldBack() const;
    int otherWorkers() const;
    void wakeSupervisor();

    const int m_maxThreadCount;
    bool m_optionsGiven = false;
    SharedRun m_run; // as scan prepared it

    std::mutex m_abortLock; // for setting the run's flag and emptying its semaphores as one step

    // Held while scan starts the tasks and while the supervisor reads the
    // counters, so that it never sees a run that is half started.
    std::mutex m_samplingLock;
    std::condition_variable m_changed;

    // Of the present run. Filled by scan and then by the supervisor alone.
    std::vector<std::unique_ptr<ThreadPoolTask>> m_tasks;

    // Last: its destructor waits for the workers, which use all of the above.
    QThreadPool m_pool;
};
