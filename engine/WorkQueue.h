#pragma once

#include <QMutex>
#include <QSemaphore>
#include <QStringList>

/// A queue of paths that one kind of worker fills and another empties, with one
/// permit for each entry. A worker takes a permit, which may wait, and then the
/// entry; an empty queue met after a permit is the signal to end.
///
/// All functions may be called from any thread.
class WorkQueue {
public:
    /// Appends and releases the permits inside the lock, so that a permit never
    /// precedes its entry.
    void append(const QStringList &paths);

    int length() const;
    /// The first entry; false when there is none. length becomes the number of
    /// entries before the call.
    bool takeFirst(QString *path, int *length);
    void clear();

    void acquirePermit() { m_permits.acquire(); }
    /// A permit without an entry, to wake a worker that waits.
    void releasePermit() { m_permits.release(); }
    void drainPermits();
    int permits() const { return m_permits.available(); }

private:
    mutable QMutex m_mutex;
    QStringList m_paths; // guarded by m_mutex
    QSemaphore m_permits;
};
