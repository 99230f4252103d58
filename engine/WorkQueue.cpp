#include "engine/WorkQueue.h"

void WorkQueue::append(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const std::lock_guard lock(m_mutex);
    m_paths.append(paths);
    m_permits += paths.size();
    m_released.notify_all();
}

int WorkQueue::length() const
{
    const std::lock_guard lock(m_mutex);
    return m_paths.size();
}

bool WorkQueue::takeFirst(QString *path, int *length)
{
    const std::lock_guard lock(m_mutex);
    *length = m_paths.size();
    if (m_paths.isEmpty())
        return false;
    *path = m_paths.takeFirst();
    return true;
}

void WorkQueue::clear()
{
    const std::lock_guard lock(m_mutex);
    m_paths.clear();
}

void WorkQueue::acquirePermit()
{
    std::unique_lock lock(m_mutex);
    m_released.wait(lock, [this] { return m_permits > 0; });
    --m_permits;
}

void WorkQueue::releasePermit()
{
    const std::lock_guard lock(m_mutex);
    ++m_permits;
    m_released.notify_one();
}

void WorkQueue::drainPermits()
{
    const std::lock_guard lock(m_mutex);
    m_permits = 0;
}

int WorkQueue::permits() const
{
    const std::lock_guard lock(m_mutex);
    return m_permits;
}
