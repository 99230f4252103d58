#pragma once

#include <QObject>
#include <QRunnable>

#include <mutex>

class QThreadPool;

/// Lets one slot of TextGrepCore run on the engine's thread pool: connect
/// start() to the slot with a direct connection.
///
/// A replicating task first asks the pool to run it once more on a free thread,
/// and each copy does the same, so it spreads over every thread that is free
/// when it starts and leaves none waiting in the pool's queue.
///
/// The pool's auto-delete is off: since Qt 5.15 it no longer counts how often a
/// task runs, and a task that runs on several threads would be deleted once for
/// each. The task's owner keeps it until the pool is idle.
class ThreadPoolTask : public QObject, public QRunnable {
    Q_OBJECT

public:
    explicit ThreadPoolTask(QThreadPool *pool);

    /// May be called from any thread; counts for copies that start later.
    void setReplicate(bool replicate);

    void run() override;

signals:
    void start();

private:
    std::mutex m_mutex;
    QThreadPool *const m_pool;
    bool m_replicate = false; // guarded by m_mutex
};
