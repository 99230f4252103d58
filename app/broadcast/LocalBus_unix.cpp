#include "app/broadcast/LocalBus.h"

#include <QByteArray>
#include <QFile>
#include <QStringList>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

namespace {

constexpr int kSliceMilliseconds = 50;
constexpr int kSlices = 100;

const QLatin1String kPath("unix:path=");
const QLatin1String kAbstract("unix:abstract=");

class Socket {
public:
    Socket() : m_fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) { }
    ~Socket()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    int fd() const { return m_fd; }

private:
    const int m_fd;
};

// The name of the socket as the system takes it: an abstract one begins with a
// NUL byte. The first key counts; a guid may follow. Bytes may be written %xx.
QByteArray socketName(const QString &address)
{
    const bool abstract = address.startsWith(kAbstract);
    const QString value = address.mid(abstract ? kAbstract.size() : kPath.size());
    const QByteArray name =
        QByteArray::fromPercentEncoding(QFile::encodeName(value.section(QLatin1Char(','), 0, 0)));
    return abstract ? QByteArray(1, '\0') + name : name;
}

bool connectTo(int fd, const QByteArray &name)
{
    sockaddr_un target{};
    target.sun_family = AF_UNIX;
    if (fd < 0 || size_t(name.size()) >= sizeof target.sun_path)
        return false;
    std::memcpy(target.sun_path, name.constData(), size_t(name.size()));
    // The NUL byte after the path may be left out, and must be after an
    // abstract name.
    const size_t length = offsetof(sockaddr_un, sun_path) + size_t(name.size());
    return ::connect(fd, reinterpret_cast<const sockaddr *>(&target), socklen_t(length)) == 0;
}

// How every client begins: a NUL byte, then who it is, in hexadecimal digits.
QByteArray greeting()
{
    return QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::geteuid()).toHex()
        + "\r\n";
}

} // namespace

QString LocalBus::address()
{
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    for (const QString &one : given.split(QLatin1Char(';'))) {
        if (one.startsWith(kPath) || one.startsWith(kAbstract))
            return one;
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + QLatin1String("/bus");
    if (!given.isEmpty() || folder.isEmpty() || !QFile::exists(socket))
        return {};
    return kPath + QString::fromLatin1(QFile::encodeName(socket).toPercentEncoding("/"));
}

bool LocalBus::answers(const QString &address, const std::atomic<bool> &giveUp)
{
    const Socket socket;
    if (!connectTo(socket.fd(), socketName(address)))
        return false;
    const QByteArray hello = greeting();
    if (::send(socket.fd(), hello.constData(), size_t(hello.size()), MSG_NOSIGNAL) != hello.size())
        return false;
    pollfd waiting{socket.fd(), POLLIN, 0};
    for (int i = 0; i < kSlices && !giveUp; ++i) {
        if (::poll(&waiting, 1, kSliceMilliseconds) <= 0)
            continue;
        char first = 0;
        return ::recv(socket.fd(), &first, 1, 0) == 1;
    }
    return false;
}
