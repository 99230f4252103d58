#include "mainwindow/FreeMemory.h"

#include <qt_windows.h>

FreeMemory::Memory FreeMemory::now()
{
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    if (!::GlobalMemoryStatusEx(&status))
        return {};
    return {static_cast<qint64>(status.ullTotalPhys), static_cast<qint64>(status.ullAvailPhys)};
}
