#include "cli/StandardStreams.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kAskAgainMs = 50;

/// Only a disk takes any amount at once; a pipe or a terminal that has room
/// takes this much without waiting for its reader.
size_t largestPiece(int descriptor)
{
    struct stat status = {};
    const bool onDisk = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return onDisk ? SSIZE_MAX : PIPE_BUF;
}

/// Waits until the stream has room, or something to say about itself. Ctrl+C may
/// be told to any thread, so that a wait inside write() would not end with it.
bool waitForRoom(int descriptor, const std::function<bool()> &giveUp)
{
    struct pollfd room = {descriptor, POLLOUT, 0};
    while (::poll(&room, 1, kAskAgainMs) <= 0) {
        if (giveUp())
            return false;
    }
    return true;
}

} // namespace

void StandardStreams::prepare()
{
    std::signal(SIGPIPE, SIG_IGN);
}

bool StandardStreams::isTerminal(Stream stream)
{
    return ::isatty(static_cast<int>(stream)) == 1 && qgetenv("TERM") != "dumb";
}

int StandardStreams::terminalColumns(Stream stream)
{
    constexpr int kUsualColumns = 80;
    struct winsize size = {};
    const bool known = ::ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0;
    return known && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

StandardStreams::WriteResult StandardStreams::write(Stream stream, const QByteArray &bytes,
                                                    const std::function<bool()> &giveUp,
                                                    QString *errorText)
{
    const int descriptor = static_cast<int>(stream);
    const size_t piece = largestPiece(descriptor);
    qint64 done = 0;
    while (done < bytes.size()) {
        if (!waitForRoom(descriptor, giveUp))
            return WriteResult::Closed;
        const size_t wanted = std::min(static_cast<size_t>(bytes.size() - done), piece);
        const ssize_t count = ::write(descriptor, bytes.constData() + done, wanted);
        const int error = count < 0 ? errno : 0;
        done += std::max<ssize_t>(count, 0);
        if (error == EPIPE)
            return WriteResult::Closed;
        if (error != 0 && error != EINTR && error != EAGAIN) {
            *errorText = QString::fromLocal8Bit(std::strerror(error));
            return WriteResult::Failed;
        }
    }
    return WriteResult::Written;
}
