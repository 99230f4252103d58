#include "mainwindow/BackgroundTask.h"

#include <QThread>

#include <memory>

void BackgroundTask::run(const std::function<void()> &work, QEventLoop::ProcessEventsFlags events)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QEventLoop loop;
    // Queued to the loop's thread, so an end before exec() is not missed.
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    thread->start();
    loop.exec(events);
    thread->wait();
}
