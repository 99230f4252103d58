#include "engine/LongPath.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Closes the folder that it holds; errno stays.
class FolderStep {
public:
    FolderStep() = default;
    ~FolderStep() { close(); }
    FolderStep(const FolderStep &) = delete;
    FolderStep &operator=(const FolderStep &) = delete;

    /// Goes on to a folder below the one that it is in.
    bool enter(const QByteArray &folder)
    {
        const int next =
            ::openat(m_descriptor, folder.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        close();
        m_descriptor = next;
        return next != -1;
    }
    int open(const QByteArray &name, int flags) const
    {
        return ::openat(m_descriptor, name.constData(), flags);
    }

private:
    void close()
    {
        const int error = errno;
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        errno = error;
    }

    int m_descriptor = AT_FDCWD;
};

int openInSteps(QByteArray path, int flags)
{
    FolderStep step;
    while (path.size() >= PATH_MAX) {
        const int slash = path.lastIndexOf('/', PATH_MAX - 2);
        if (slash < 0) {
            errno = ENAMETOOLONG;
            return -1;
        }
        if (!step.enter(path.left(slash + 1)))
            return -1;
        path.remove(0, slash + 1);
        while (path.startsWith('/'))
            path.remove(0, 1);
    }
    return step.open(path.isEmpty() ? QByteArrayLiteral(".") : path, flags);
}

} // namespace

int LongPath::open(const QByteArray &path, int flags)
{
    return path.size() < PATH_MAX ? ::open(path.constData(), flags) : openInSteps(path, flags);
}

bool LongPath::status(const QByteArray &path, struct stat *status)
{
    if (path.size() < PATH_MAX)
        return ::stat(path.constData(), status) == 0;
    const int descriptor = openInSteps(path, O_PATH | O_CLOEXEC);
    if (descriptor == -1)
        return false;
    const bool told = ::fstat(descriptor, status) == 0;
    ::close(descriptor);
    return told;
}
