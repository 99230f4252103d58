#pragma once

#include <functional>

/// The steps by which a file is replaced safely, in their order. Each is
/// announced just before it is taken, so that a test can make any of them fail,
/// or end the process there, and see what is left on the disk.
namespace SaveSteps {

enum class Step {
    TakeLock,
    ReadOld,
    WriteNew,
    LinkForBackup,
    CopyForBackup,
    DateBackup,
    DropBackup, // one that gives way, usually the oldest
    ShiftBackup,
    PlaceBackup,
    ReplaceOld,
    TryAgain, // what somebody else seems to hold; reading, too
    Finished
};

/// Returns whether the step may be tried; a step that may not counts as failed.
using Observer = std::function<bool(Step)>;

/// For tests; nothing observes the steps otherwise. Not to be called while a
/// file is saved or read.
void setObserver(Observer observer);

/// For the code that saves: announces the step.
bool mayTake(Step step);

} // namespace SaveSteps
