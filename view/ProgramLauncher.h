#pragma once

#include "view/LaunchCommand.h"

/// The start of other programs: the one place where the platform is asked for
/// it, and where a test looks on instead.
///
/// Used on the user interface's thread. Nothing waits for a started program
/// and nothing ends it.
class ProgramLauncher {
public:
    virtual ~ProgramLauncher();

    virtual PathStyle pathStyle() const = 0;

    /// Makes command.directory the current directory, if it is there, and
    /// starts the program. False when it could not be started.
    virtual bool startDetached(const LaunchCommand &command) = 0;

    /// As startDetached, but the way a file manager opens a program.
    virtual bool open(const LaunchCommand &command) = 0;

    /// The platform's own; lives until the process ends.
    static ProgramLauncher &native();
};
