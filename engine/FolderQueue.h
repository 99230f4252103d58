#pragma once

#include "engine/WorkQueue.h"

#include <QMap>

#include <mutex>

/// The folders still to list. Besides the queue itself it knows the listings
/// that are under way, which still count as queued until their entries are
/// queued, so that a slow folder never looks like the end of the walk, and the
/// links to folders that wait until no real folder is left: these are handed
/// out one at a time in the order of their paths, each with all that is below
/// it before the next.
///
/// All functions may be called from any thread.
class FolderQueue {
public:
    /// Counts as a listing under way until finishListing is called for it: for
    /// whoever queues the first folders.
    void holdOpen();

    void append(const QString &folder);
    void append(const QStringList &folders);
    /// folder ends in "/" and leads through a link.
    void appendLink(const QString &folder);

    /// Takes the next folder, which counts as being listed until finishListing
    /// is called for it. See WorkQueue::takeFirst.
    bool beginListing(QString *folder, int *length);
    /// Call after the folder's entries are queued. Queues the next link when
    /// nothing else is left; true when then nothing at all is left.
    bool finishListing();

    /// True from the first link that was queued on: whatever is listed then is
    /// reached through a link.
    bool followsLinks() const;

    int length() const { return m_queue.length(); }
    /// Queued, being listed, or waiting behind a link.
    bool hasWork() const;
    void clear();

    void acquirePermit() { m_queue.acquirePermit(); }
    void releasePermit() { m_queue.releasePermit(); }
    void drainPermits() { m_queue.drainPermits(); }
    int permits() const { return m_queue.permits(); }

private:
    mutable std::mutex m_mutex; // taken before the queue's own
    WorkQueue m_queue;
    int m_unfinished = 0; // queued or being listed; guarded by m_mutex
    bool m_followsLinks = false; // guarded by m_mutex
    QMap<QString, bool> m_links; // a sorted set; guarded by m_mutex
};
