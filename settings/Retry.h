#pragma once

#include <QElapsedTimer>
#include <QOperatingSystemVersion>
#include <QThread>

namespace Retry {

/// What fails because somebody else has the file open at this instant (another
/// instance, a virus scanner) succeeds a moment later. Windows keeps a file from
/// being replaced for that, and a scanner takes its time. Returns what attempt does,
/// as soon as it is true, or what it does when 600 milliseconds (60 elsewhere) are over.
template <typename Attempt> auto whileHeld(const Attempt &attempt)
{
    constexpr unsigned long kPauseMilliseconds = 30;
    const bool onWindows =
        QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    const int patience = onWindows ? 600 : 60;
    QElapsedTimer elapsed;
    elapsed.start();
    auto result = attempt();
    while (!result && elapsed.elapsed() < patience) {
        QThread::msleep(kPauseMilliseconds);
        result = attempt();
    }
    return result;
}

} // namespace Retry
