#pragma once

#include <cstdlib>

#ifdef _WIN32
    #include <qt_windows.h>
#endif

/// Ends the process as a kill does, with this exit code. On Windows std::_Exit() still
/// waits for locks that libraries take at their end.
[[noreturn]] inline void endAtOnce(int exitCode)
{
#ifdef _WIN32
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
#endif
    std::_Exit(exitCode);
}
