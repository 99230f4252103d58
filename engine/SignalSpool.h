#pragma once

#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

#include <QMap>
#include <QObject>
#include <QStringList>

#include <atomic>
#include <mutex>
#include <optional>

class CallQueue;
class QThread;
class TextGrepCore;

/// Stands between the engine and whoever shows its results: receives the
/// engine's many small signals, keeps counters, the latest file name and a
/// queue of result lines, and lets one reader collect them in batches at its
/// own pace. Owns the engine of a run and the engine's thread.
///
/// The result queue holds, in order of arrival, a head for each file ("::" and
/// the path) and right behind it the file's hit strings; a file reported
/// without hits has a head alone.
///
/// Threads: the spool lives on a worker thread of its owner, where scan and the
/// slots for results, messages and the end run. The slots for progress (file
/// name, queue lengths, counts) are called by the engine's pool threads
/// directly: one event for each directory entry would cost more than the walk.
/// The read operations and abort() may be called from any thread.
///
/// Deleting the spool (from its own thread, or from any once its thread has
/// ended) aborts a run and waits for the engine.
class SignalSpool : public QObject {
    Q_OBJECT

signals:
    /// The run is over; true when it was aborted. The results are all here.
    void finished(bool aborted);
    void linecntAt(QString filename, int linecnt);
    void lcntFinished(bool aborted);
    /// See TextGrepCore.
    void encodingAt(QString filename, int codeSet, int lineEnd, bool bom);

public slots:
    /// Starts a run on a new engine. A run that is still under way is stopped
    /// first and waited for; nothing of it arrives any more, not even its end.
    /// The hit-line total, the queue lengths, the
    /// result queue, the errors and the per-thread counts start empty; the
    /// other counters and the warnings go on from where they are.
    void scan(QStringList pathlist, QString mask, QString keyword1, QString keyword2,
              QString keyword3, int plusline, int flg, bool fnameflg, bool subdir, bool linecount);
    void onDirSemaphoreCount(int cnt);
    void onFileSemaphoreCount(int cnt);
    void onWarningMsg(QString errmsg);
    void onErrorMsg(QString errmsg);
    void slotThreadCount(int threadid, int cnt);
    void onfinished(bool sw);
    void showSearchResultList(QString filename, QStringList list);
    void onFileAllCount(int cnt);
    void onFileCount();
    void onSrchCount();
    void progressFileReport(QString filename);
    void showSearchResultFile(QString filename);

public:
    explicit SignalSpool(QObject *parent = nullptr);
    ~SignalSpool() override;

    /// For the engines of later scans. Without it they take the limits from
    /// AppSettings.
    void setEngineOptions(const EngineOptions &options);

    /// Queues a scan with condition on the spool's thread and returns at once.
    /// Unlike a scan that its owner queues, an abort that follows this call
    /// stops it even when the scan has not begun yet. Any thread.
    void requestScan(const SearchCondition &condition);

    /// Asks the engine, if there is one, to end the run; the end still comes as
    /// finished(true) or lcntFinished(true). Stops the scans that were requested
    /// before as soon as they begin, which end in the same way; does nothing
    /// otherwise. Returns at once.
    void abort();

    /// Result lines that wait to be taken; none, nor any file or hit counted, where
    /// EngineOptions::hitSink takes them.
    int resultCount() const;
    /// Moves up to max result lines (all when max is below 1) to the end of
    /// lines; returns how many. A batch may end between a head and its hits.
    int takeResults(QStringList *lines, int max);
    /// Move all entries to the end of messages; return how many.
    int takeErrors(QStringList *messages);
    int takeWarnings(QStringList *messages);

    /// The file or entry that the engine looked at last.
    QString currentFile() const;
    int dirQueueLength() const;
    int fileQueueLength() const;
    int announcedCount() const { return m_announced; } ///< entries of the list file
    int topEntryCount() const { return m_topEntries; } ///< top entries handled
    int searchedCount() const { return m_searched; } ///< files that were matched
    int resultFileCount() const; ///< files with a head in the results
    int hitLineCount() const;
    /// Thread number to entries listed or files loaded by it.
    QMap<int, int> threadCounts() const;

private:
    void queueResults(TextGrepCore *engine);
    template <typename... Arguments>
    void connectQueued(TextGrepCore *engine, void (TextGrepCore::*signal)(Arguments...),
                       void (SignalSpool::*member)(Arguments...));
    void takeProgress(const TextGrepCore *engine);
    /// The result lock is held.
    void addResult(QString &&line);
    void endEngine();
    void abortEngine();

    CallQueue *const m_calls; // a child, lives on the same thread
    std::optional<EngineOptions> m_engineOptions;

    // The engine lives on the thread; both are made by scan and live until
    // the run's end, after a line count until the next run.
    std::mutex m_engineLock; // guards the next three, for abort()
    TextGrepCore *m_engine = nullptr;
    int m_requests = 0; // scans requested so far
    int m_abortedRequests = 0; // of these, the ones that an abort came after
    QThread *m_engineThread = nullptr;
    int m_run = 0; // number of the present run, used on the spool's thread only

    std::atomic<int> m_announced{0};
    std::atomic<int> m_topEntries{0};
    std::atomic<int> m_searched{0};
    std::atomic<int> m_dirQueueLength{0};
    std::atomic<int> m_fileQueueLength{0};

    mutable std::mutex m_resultLock;
    QStringList m_results; // guarded by m_resultLock, as the next two
    int m_resultFiles = 0;
    int m_hitLines = 0;

    mutable std::mutex m_currentFileLock;
    QString m_currentFile;

    mutable std::mutex m_errorLock;
    QStringList m_errors;

    mutable std::mutex m_warningLock;
    QStringList m_warnings;

    mutable std::mutex m_threadCountLock;
    QMap<int, int> m_threadCounts;
};
