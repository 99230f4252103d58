#pragma once

#include <QStringList>

#include <condition_variable>
#include <mutex>

/// A queue of paths that one kind of worker fills and another empties, with a
/// counting semaphore: one permit for each entry. A worker takes a permit,
/// which may wait, and then the entry; an empty queue met after a permit is the
/// signal to end.
///
/// All functions may be called from any thread.
class WorkQueue {
public:
    /// Appends the paths and releases as many permits in one step, so that a
    /// permit never precedes its entry.
    void append(const QStringList &paths);

    int length() const;
    /// The first entry; false when there is none. length becomes the number of
    /// entries before the call.
    bool takeFirst(QString *path, int *length);
    void clear();

    /// Waits for a permit and takes it.
    void acquirePermit();
    /// A permit without an entry, to wake a worker that waits.
    void releasePermit();
    void drainPermits();
    int permits() const;

private:
    mutable std::mutex m_mutex; // guards both members
    std::condition_variable m_released;
    QStringList m_paths;
    int m_permits = 0;
};
