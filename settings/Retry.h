#pragma once

#include "settings/SaveSteps.h"

#include <QOperatingSystemVersion>
#include <QThread>

namespace Retry {

/// What fails because somebody else has the file open at this instant (another
/// instance, a virus scanner) succeeds a moment later. Windows keeps a file from
/// being replaced for that, and a scanner takes its time. Returns what attempt does,
/// as soon as it is true, or what its last call does: there are 20 more after the first
/// (2 elsewhere), each after a pause of 30 milliseconds. The pauses are counted, since on
/// a busy machine a single one may take as long as all together should.
template <typename Attempt> auto whileHeld(const Attempt &attempt)
{
    constexpr unsigned long kPauseMilliseconds = 30;
    const bool onWindows =
        QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    const int mostPauses = onWindows ? 20 : 2;
    auto result = attempt();
    for (int pause = 0; !result && pause < mostPauses; ++pause) {
        if (!SaveSteps::mayTake(SaveSteps::Step::TryAgain))
            break;
        QThread::msleep(kPauseMilliseconds);
        result = attempt();
    }
    return result;
}

} // namespace Retry
