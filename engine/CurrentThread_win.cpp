#include "engine/CurrentThread.h"

#include <windows.h>

int CurrentThread::id()
{
    return static_cast<int>(::GetCurrentThreadId());
}
