#include "engine/CallQueue.h"

#include <QTimer>

#include <utility>

CallQueue::CallQueue(QObject *parent) : QObject(parent)
{
}

CallQueue::~CallQueue()
{
    // What the other thread did to the calls last was under the lock, too; how the
    // toolkit waits for the end of a thread is nothing that a checker sees.
    const std::lock_guard lock(*m_lock);
    m_calls.clear();
}

void CallQueue::add(std::function<void()> call)
{
    const std::lock_guard lock(*m_lock);
    m_calls.push_back(std::move(call));
    if (std::exchange(m_awake, true))
        return;
    QMetaObject::invokeMethod(this, &CallQueue::runAll, Qt::QueuedConnection);
}

void CallQueue::runAll()
{
    const std::shared_ptr<std::mutex> afterwards = m_lock;
    std::vector<std::function<void()>> calls;
    {
        const std::lock_guard lock(*m_lock);
        calls.swap(m_calls);
        m_awake = !calls.empty();
    }
    if (calls.empty())
        return;
    // Before the calls: one of them may delete the object.
    QTimer::singleShot(kPauseMs, Qt::PreciseTimer, this, &CallQueue::runAll);
    for (const std::function<void()> &call : calls)
        call();
    calls.clear();
    // What the calls did comes before what is done after the object's end.
    const std::lock_guard lock(*afterwards);
}
