#include "cli/Interrupt.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::atomic<bool> g_pending{false};
std::atomic<int> g_wakeUp{-1}; // written by the signal handler, read by the event loop
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler may take no lock");

void handleSignal(int)
{
    const int savedError = errno;
    g_pending = true;
    const char byte = 0;
    // One byte fits an empty pipe; nothing can be done in a handler if not.
    const ssize_t written = ::write(g_wakeUp, &byte, 1);
    static_cast<void>(written);
    errno = savedError;
}

void listen(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    // Without SA_RESTART: a write to a pipe that nobody reads must end, too.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGINT, &action, nullptr);
}

} // namespace

Interrupt::Interrupt(QObject *parent) : QObject(parent)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // Ctrl+C keeps its usual meaning
    g_wakeUp = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit interrupted();
    });
    listen(handleSignal);
}

Interrupt::~Interrupt()
{
    if (g_wakeUp >= 0)
        listen(SIG_DFL);
}

bool Interrupt::isPending()
{
    return g_pending;
}
