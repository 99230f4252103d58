#include "mainwindow/BackgroundTask.h"

#include <QMetaObject>

#include <thread>

void BackgroundTask::run(const std::function<void()> &work, QEventLoop::ProcessEventsFlags events)
{
    QEventLoop loop;
    std::thread thread([&] {
        work();
        // Queued to the loop's thread, so an end before exec() is not missed.
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec(events);
    thread.join();
}
