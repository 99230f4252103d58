#include "mainwindow/preview/NativeFile.h"

#include "engine/NativePath.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t kPermissions = 0777;
constexpr mode_t kOwnerOnly = 0600;

bool statusOf(const QString &path, struct stat *status)
{
    return ::stat(NativePath::toNative(path).constData(), status) == 0;
}

bool writeAll(int descriptor, const QByteArray &content)
{
    const char *next = content.constData();
    const char *const end = next + content.size();
    while (next != end) {
        const ssize_t count = ::write(descriptor, next, size_t(end - next));
        if (count == -1 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        next += count;
    }
    return true;
}

void takeOwner(int descriptor, const QString &like)
{
    struct stat status = {};
    // Only the super-user may give files away; for others it stays their own.
    if (statusOf(like, &status) && ::fchown(descriptor, status.st_uid, status.st_gid) != 0)
        return;
}

} // namespace

NativeFile::Stamp NativeFile::stampOf(const QString &path)
{
    struct stat status = {};
    Stamp stamp;
    if (!statusOf(path, &status))
        return stamp;
    stamp.exists = true;
    stamp.regular = S_ISREG(status.st_mode);
    stamp.size = status.st_size;
    stamp.changed = qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
    stamp.id = status.st_ino;
    return stamp;
}

quint32 NativeFile::attributesOf(const QString &path)
{
    struct stat status = {};
    return statusOf(path, &status) ? quint32(status.st_mode & kPermissions) : kNoAttributes;
}

bool NativeFile::setAttributes(const QString &path, quint32 attributes)
{
    return attributes == kNoAttributes
        || ::chmod(NativePath::toNative(path).constData(), mode_t(attributes) & kPermissions) == 0;
}

void NativeFile::clearAttributes(const QString &)
{
    // Deleting asks for the folder's permission, not the file's.
}

NativeFile::Written NativeFile::writeNew(const QString &path, const QByteArray &content,
                                         const QString &like)
{
    const QByteArray name = NativePath::toNative(path);
    const int descriptor =
        ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
    if (descriptor == -1)
        return Written::NotCreated;
    takeOwner(descriptor, like);
    // Some file systems cannot sync; that is no reason to refuse.
    const bool synced = writeAll(descriptor, content)
        && (::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS);
    const bool closed = ::close(descriptor) == 0;
    if (synced && closed)
        return Written::Yes;
    ::unlink(name.constData());
    return Written::Failed;
}

bool NativeFile::remove(const QString &path)
{
    return ::unlink(NativePath::toNative(path).constData()) == 0;
}

bool NativeFile::link(const QString &path, const QString &name)
{
    return ::link(NativePath::toNative(path).constData(), NativePath::toNative(name).constData())
        == 0;
}

bool NativeFile::rename(const QString &path, const QString &name)
{
    return ::rename(NativePath::toNative(path).constData(), NativePath::toNative(name).constData())
        == 0;
}

QString NativeFile::targetOf(const QString &path)
{
    const QByteArray name = NativePath::toNative(path);
    struct stat status = {};
    if (::lstat(name.constData(), &status) != 0 || !S_ISLNK(status.st_mode))
        return path;
    char *const target = ::realpath(name.constData(), nullptr);
    if (target == nullptr)
        return path;
    QString result = NativePath::fromNative(QByteArray(target));
    std::free(target);
    return result;
}
