#include "engine/ThreadPoolTask.h"

#include <QThreadPool>

ThreadPoolTask::ThreadPoolTask(QThreadPool *pool) : m_pool(pool)
{
    setAutoDelete(false);
}

void ThreadPoolTask::setReplicate(bool replicate)
{
    const std::lock_guard lock(m_mutex);
    m_replicate = replicate;
}

void ThreadPoolTask::run()
{
    m_mutex.lock();
    const bool replicate = m_replicate;
    m_mutex.unlock();
    if (replicate)
        m_pool->tryStart(this);
    emit start();
}
