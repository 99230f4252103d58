#pragma once

#include <QOperatingSystemVersion>
#include <QThread>

namespace Retry {

/// What fails because somebody else has the file open at this instant (another
/// instance, a virus scanner) succeeds a moment later. Windows keeps a file from
/// being replaced for that, and a scanner takes its time. Returns what attempt does,
/// as soon as it is true, or at the latest after 600 milliseconds (60 elsewhere).
template <typename Attempt> auto whileHeld(const Attempt &attempt)
{
    constexpr unsigned long kPauseMilliseconds = 30;
    const bool onWindows =
        QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    const int attempts = onWindows ? 20 : 3;
    auto result = attempt();
    for (int i = 1; i < attempts && !result; ++i) {
        QThread::msleep(kPauseMilliseconds);
        result = attempt();
    }
    return result;
}

} // namespace Retry
