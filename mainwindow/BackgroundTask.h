#pragma once

#include <QEventLoop>

#include <functional>

/// Runs work on a thread of its own and returns when it is done; the event loop
/// goes on meanwhile, so the window answers. Whoever calls this must be ready
/// for everything that an event of the given kinds may bring; other events wait.
namespace BackgroundTask {

void run(const std::function<void()> &work,
         QEventLoop::ProcessEventsFlags events = QEventLoop::AllEvents);

} // namespace BackgroundTask
