#include "cli/Interrupt.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::atomic<bool> g_pending{false};
std::atomic<int> g_wakeUp{-1}; // written by the signal handler, read by the event loop
std::atomic<const char *> g_farewell{nullptr};
static_assert(std::atomic<int>::is_always_lock_free
                  && std::atomic<const char *>::is_always_lock_free,
              "a signal handler may take no lock");

void handleInterrupt(int)
{
    const int savedError = errno;
    g_pending = true;
    const char byte = 0;
    // One byte fits an empty pipe; nothing can be done in a handler if not.
    const ssize_t written = ::write(g_wakeUp, &byte, 1);
    static_cast<void>(written);
    errno = savedError;
}

/// The process ends by the signal, as if nobody listened; SA_RESETHAND has set
/// the usual meaning again, and the signal is delivered on return.
void handleEnd(int signalNumber)
{
    const char *const farewell = g_farewell;
    if (farewell != nullptr) {
        const ssize_t written = ::write(STDERR_FILENO, farewell, std::strlen(farewell));
        static_cast<void>(written);
    }
    ::raise(signalNumber);
}

/// False where whoever started the program wants the signal ignored, as nohup
/// and a shell's "&" do: it stays ignored.
bool listen(int signalNumber, void (*handler)(int))
{
    struct sigaction before = {};
    if (::sigaction(signalNumber, nullptr, &before) != 0 || before.sa_handler == SIG_IGN)
        return false;
    struct sigaction action = {};
    action.sa_handler = handler;
    // Without SA_RESTART: a write to a pipe that nobody reads must end, too.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    return ::sigaction(signalNumber, &action, nullptr) == 0;
}

} // namespace

Interrupt::Interrupt(QObject *parent) : QObject(parent)
{
    for (const int signalNumber : {SIGTERM, SIGHUP})
        listen(signalNumber, handleEnd);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // Ctrl+C keeps its usual meaning
    g_wakeUp = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit interrupted();
    });
    listen(SIGINT, handleInterrupt);
}

Interrupt::~Interrupt()
{
    g_farewell = nullptr;
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
        listen(signalNumber, SIG_DFL);
}

bool Interrupt::isPending()
{
    return g_pending;
}

void Interrupt::setFarewell(const char *bytes)
{
    g_farewell = bytes;
}
