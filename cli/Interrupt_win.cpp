#include "cli/Interrupt.h"

#include <atomic>
#include <windows.h>

namespace {

std::atomic<bool> g_pending{false};
std::atomic<Interrupt *> g_listener{nullptr};

// The system calls this on a thread of its own.
BOOL WINAPI handleControl(DWORD event)
{
    Interrupt *const listener = g_listener;
    if (event != CTRL_C_EVENT || listener == nullptr || g_pending.exchange(true))
        return FALSE;
    QMetaObject::invokeMethod(listener, &Interrupt::interrupted, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

Interrupt::Interrupt(QObject *parent) : QObject(parent)
{
    g_listener = this;
    SetConsoleCtrlHandler(handleControl, TRUE);
}

Interrupt::~Interrupt()
{
    SetConsoleCtrlHandler(handleControl, FALSE);
    g_listener = nullptr;
}

bool Interrupt::isPending()
{
    return g_pending;
}

void Interrupt::setFarewell(const char *)
{
}
