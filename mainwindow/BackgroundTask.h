#pragma once

#include <functional>

/// Runs work on a thread of its own and returns when it is done; the event loop
/// goes on meanwhile, so the window answers. Whoever calls this must be ready
/// for everything that an event may bring.
namespace BackgroundTask {

void run(const std::function<void()> &work);

} // namespace BackgroundTask
