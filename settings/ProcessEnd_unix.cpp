#include "settings/ProcessEnd.h"

#include <cstdlib>

int ProcessEnd::withStatus(int exitStatus)
{
    return exitStatus;
}

void ProcessEnd::atOnce(int exitStatus)
{
    std::_Exit(exitStatus);
}
