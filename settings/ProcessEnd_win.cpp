#include "settings/ProcessEnd.h"

#include <qt_windows.h>

#include <cstdio>
#include <cstdlib>

int ProcessEnd::withStatus(int exitStatus)
{
    // What the program writes itself is not buffered; its libraries' messages may be.
    std::fflush(nullptr);
    atOnce(exitStatus);
}

void ProcessEnd::atOnce(int exitStatus)
{
    // std::_Exit() still waits for locks that libraries take at their end.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitStatus));
    std::_Exit(exitStatus);
}
