#include "engine/CurrentThread.h"

#include <sys/syscall.h>
#include <unistd.h>

int CurrentThread::id()
{
    thread_local const int threadId = static_cast<int>(::syscall(SYS_gettid));
    return threadId;
}
