#include "cli/StandardStreams.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kAskAgainMs = 50;
/// How long a reader may keep an interrupted run waiting for the rest of a line.
constexpr int kFinishLineMs = 3000;

bool g_outputWasClosed = false;

/// A pipe or a terminal that has room takes this much without waiting for its
/// reader, and a pipe takes it as one piece, however many write to it. Whatever
/// never waits takes any amount.
int largestPiece(int descriptor)
{
    struct stat status = {};
    const bool known = ::fstat(descriptor, &status) == 0;
    const bool device = known && S_ISCHR(status.st_mode) && ::isatty(descriptor) == 0;
    const bool neverWaits = device || (known && S_ISREG(status.st_mode));
    return neverWaits ? INT_MAX : PIPE_BUF;
}

/// How much of bytes goes out next: as many whole lines as fit, since whatever
/// comes between two pieces must not come between the parts of a line.
int nextPiece(const QByteArray &bytes, int done, int largest)
{
    const int left = bytes.size() - done;
    if (left <= largest)
        return left;
    // In this piece only: searched back to the line's start, a long line would
    // be searched again for each of its pieces.
    const int lineEnd =
        QByteArray::fromRawData(bytes.constData() + done, largest).lastIndexOf('\n');
    return lineEnd >= 0 ? lineEnd + 1 : largest;
}

/// Waits until a stream has room, or something to say about itself. Ctrl+C may
/// be told to any thread, so that a wait inside write() would not end with it.
class Room {
public:
    Room(int descriptor, const std::function<bool()> &giveUp)
        : m_descriptor(descriptor), m_giveUp(giveUp)
    {
    }

    /// False once the write is given up: between lines at once, inside a line
    /// when the reader does not take the rest of it in time.
    bool wait(bool insideLine)
    {
        struct pollfd room = {m_descriptor, POLLOUT, 0};
        while (::poll(&room, 1, kAskAgainMs) <= 0) {
            if (!m_giveUp())
                continue;
            m_msGivingUp += kAskAgainMs;
            if (!insideLine || m_msGivingUp > kFinishLineMs)
                return false;
        }
        // A reader who still reads gets the line, and no more.
        return m_msGivingUp == 0 || insideLine;
    }

private:
    const int m_descriptor;
    const std::function<bool()> &m_giveUp;
    int m_msGivingUp = 0;
};

/// Opens /dev/null in the place of a standard stream that the program was
/// started without: else the next file or socket that is opened gets its number,
/// and what is meant for the stream.
bool occupy(int descriptor)
{
    if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF)
        return false;
    // The lowest free number is this one: those below are taken already.
    ::open("/dev/null", O_RDWR);
    return true;
}

} // namespace

void StandardStreams::prepare()
{
    occupy(STDIN_FILENO);
    g_outputWasClosed = occupy(STDOUT_FILENO);
    occupy(STDERR_FILENO);
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
    if (stream == Stream::Output && g_outputWasClosed && !bytes.isEmpty()) {
        *errorText = QString::fromLocal8Bit(std::strerror(EBADF));
        return WriteResult::Failed;
    }
    const int descriptor = static_cast<int>(stream);
    const int largest = largestPiece(descriptor);
    Room room(descriptor, giveUp);
    int done = 0;
    while (done < bytes.size()) {
        if (!room.wait(done > 0 && bytes.at(done - 1) != '\n'))
            return WriteResult::Closed;
        const int wanted = nextPiece(bytes, done, largest);
        const ssize_t count =
            ::write(descriptor, bytes.constData() + done, static_cast<size_t>(wanted));
        const int error = count < 0 ? errno : 0;
        done += static_cast<int>(std::max<ssize_t>(count, 0));
        if (error == EPIPE)
            return WriteResult::Closed;
        if (error != 0 && error != EINTR && error != EAGAIN) {
            *errorText = QString::fromLocal8Bit(std::strerror(error));
            return WriteResult::Failed;
        }
    }
    return WriteResult::Written;
}
