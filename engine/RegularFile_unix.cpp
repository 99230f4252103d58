#include "engine/RegularFile.h"

#include "engine/LongPath.h"
#include "engine/NativePath.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isRegular(const QByteArray &name)
{
    struct stat status = {};
    return LongPath::status(name, &status) && S_ISREG(status.st_mode);
}

int openWithoutBlocking(const QByteArray &name)
{
    // O_NONBLOCK: a FIFO without a writer would hold the thread for ever.
    // O_NOCTTY: a terminal must not become the program's own.
    int descriptor = -1;
    do {
        descriptor = LongPath::open(name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (descriptor == -1 && errno == EINTR);
    return descriptor;
}

} // namespace

RegularFile::RegularFile(const QString &path, TypeCheck check)
{
    const QByteArray name = NativePath::toNative(path);
    if (check == TypeCheck::BeforeOpen && !isRegular(name))
        return;
    const int descriptor = openWithoutBlocking(name);
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

qint64 RegularFile::readSome(char *buffer, qint64 maximum)
{
    if (!isOpen())
        return 0;
    ssize_t got = -1;
    do {
        got = ::read(int(m_handle), buffer, size_t(maximum));
    } while (got == -1 && errno == EINTR);
    return got;
}

void RegularFile::rewind()
{
    if (isOpen())
        ::lseek(int(m_handle), 0, SEEK_SET);
}
