#include "cli/StandardStreams.h"

#include <QtGlobal>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

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
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(static_cast<int>(stream), bytes.constData() + done,
                                      static_cast<size_t>(bytes.size() - done));
        const int error = count < 0 ? errno : 0;
        done += qMax<ssize_t>(count, 0);
        // A signal ends a write that has begun with a short count, not an error.
        const bool cut = error == EINTR || (error == 0 && done < bytes.size());
        if (error == EPIPE || (cut && giveUp()))
            return WriteResult::Closed;
        if (error != 0 && error != EINTR) {
            *errorText = QString::fromLocal8Bit(std::strerror(error));
            return WriteResult::Failed;
        }
    }
    return WriteResult::Written;
}
