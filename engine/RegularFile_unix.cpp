#include "engine/RegularFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int openWithoutBlocking(const QString &path)
{
    // O_NONBLOCK: a FIFO without a writer would hold the thread for ever.
    // O_NOCTTY: a terminal must not become the program's own.
    const QByteArray name = QFile::encodeName(path);
    int descriptor = -1;
    do {
        descriptor = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (descriptor == -1 && errno == EINTR);
    return descriptor;
}

} // namespace

RegularFile::RegularFile(const QString &path)
{
    const int descriptor = openWithoutBlocking(path);
    if (descriptor == -1)
        return;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return;
    }
    m_handle = descriptor;
    m_size = status.st_size;
}

RegularFile::~RegularFile()
{
    if (isOpen())
        ::close(int(m_handle));
}

qint64 RegularFile::read(char *buffer, qint64 maximum)
{
    if (!isOpen())
        return 0;
    qint64 total = 0;
    while (total < maximum) {
        const ssize_t got = ::read(int(m_handle), buffer + total, size_t(maximum - total));
        if (got == -1 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        total += got;
    }
    return total;
}
