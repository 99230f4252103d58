#include "engine/FileReader.h"

#include "engine/NativePath.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A buffer that grew beyond this is given back after the file.
constexpr qint64 kKeptBytes = 8 << 20;
constexpr qint64 kFirstBytes = 64 << 10;

class Descriptor {
public:
    explicit Descriptor(const char *path)
        : m_value(::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
    {
    }
    ~Descriptor()
    {
        if (m_value >= 0)
            ::close(m_value);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int value() const { return m_value; }

private:
    int m_value;
};

bool isRegular(const char *path)
{
    struct stat status;
    return ::stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

/// Bytes read, 0 at the end or on an error.
qint64 readSome(int descriptor, char *target, qint64 size)
{
    ssize_t count;
    do {
        count = ::read(descriptor, target, static_cast<size_t>(size));
    } while (count < 0 && errno == EINTR);
    return std::max<ssize_t>(count, 0);
}

} // namespace

void FileReader::reserve(qint64 bytes)
{
    if (m_buffer.size() < bytes || m_buffer.size() > std::max(kKeptBytes, bytes))
        m_buffer = QByteArray(static_cast<int>(bytes), Qt::Uninitialized);
}

FileReader::Status FileReader::read(const QString &path, qint64 limit, TypeCheck check)
{
    m_size = 0;
    m_sizeAtOpen = 0;
    const QByteArray native = NativePath::toNative(path);
    if (check == TypeCheck::BeforeOpen && !isRegular(native.constData()))
        return Status::CannotOpen;
    const Descriptor file(native.constData());
    struct stat status;
    if (file.value() < 0 || ::fstat(file.value(), &status) != 0 || !S_ISREG(status.st_mode))
        return Status::CannotOpen;
    m_sizeAtOpen = status.st_size;
    limit = std::min(limit, kMaxBytes);
    if (m_sizeAtOpen > limit)
        return Status::TooLarge;
    // One byte more than the file has: a read that leaves it unused has met
    // the end, which saves the further call that would say so. A virtual file
    // that tells no size hands out a page a call and ends only with nothing.
    reserve(std::max(m_sizeAtOpen + 1, kFirstBytes));
    for (;;) {
        const qint64 wanted = m_buffer.size() - m_size;
        const qint64 count = readSome(file.value(), m_buffer.data() + m_size, wanted);
        m_size += count;
        const bool atEnd =
            count == 0 || (count < wanted && m_sizeAtOpen > 0 && m_size >= m_sizeAtOpen);
        if (atEnd || m_size > limit)
            break;
        if (m_size < m_buffer.size())
            continue;
        m_buffer.resize(static_cast<int>(std::min(m_size * 2, std::max(limit, m_size) + 1)));
    }
    m_size = std::min(m_size, std::max(limit, m_sizeAtOpen));
    return Status::Read;
}
