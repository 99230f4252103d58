#include "engine/ThreadPoolTask.h"

#include <QMutexLocker>
#include <QThreadPool>

ThreadPoolTask::ThreadPoolTask(QThreadPool *pool) : m_pool(pool)
{
    setAutoDelete(true);
}

void ThreadPoolTask::setReplicate(bool replicate)
{
    const QMutexLocker lock(&m_mutex);
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
