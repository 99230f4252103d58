#include "engine/WorkQueue.h"

#include <QMutexLocker>

void WorkQueue::append(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const QMutexLocker lock(&m_mutex);
    m_paths.append(paths);
    m_permits.release(paths.size());
}

int WorkQueue::length() const
{
    const QMutexLocker lock(&m_mutex);
    return m_paths.size();
}

bool WorkQueue::takeFirst(QString *path, int *length)
{
    const QMutexLocker lock(&m_mutex);
    *length = m_paths.size();
    if (m_paths.isEmpty())
        return false;
    *path = m_paths.takeFirst();
    return true;
}

void WorkQueue::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_paths.clear();
}

void WorkQueue::drainPermits()
{
    // Another thread may take permits between the two calls, hence the loop.
    while (!m_permits.tryAcquire(m_permits.available())) { }
}
