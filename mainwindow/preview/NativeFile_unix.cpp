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
constexpr mode_t kOwnerPermissions = 0700;

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

bool sync(int descriptor)
{
    // Some file systems cannot; that is no reason to refuse.
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS;
}

bool copyAll(int from, int to)
{
    QByteArray piece(1 << 16, Qt::Uninitialized);
    for (;;) {
        const ssize_t count = ::read(from, piece.data(), size_t(piece.size()));
        if (count == -1 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0;
        if (!writeAll(to, QByteArray::fromRawData(piece.constData(), int(count))))
            return false;
    }
}

/// Only the super-user may give files away, but the members of a group share them. True
/// when the file has that group.
bool takeOwner(int descriptor, const struct stat &status)
{
    return ::fchown(descriptor, status.st_uid, status.st_gid) == 0
        || ::fchown(descriptor, uid_t(-1), status.st_gid) == 0;
}

/// What a file system has no place for stays as it is.
void takeStatus(int descriptor, const struct stat &status)
{
    const struct timespec times[] = {status.st_atim, status.st_mtim};
    if (!takeOwner(descriptor, status)
        || ::fchmod(descriptor, status.st_mode & kPermissions) != 0) {
        // At least not for more people than may read it now.
        ::fchmod(descriptor, status.st_mode & kOwnerPermissions);
    }
    ::futimens(descriptor, times);
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

quint32 NativeFile::attributesFor(const QString &path, quint32 attributes, const QString &like)
{
    struct stat status = {};
    struct stat former = {};
    if (attributes == kNoAttributes || !statusOf(path, &status) || !statusOf(like, &former)
        || status.st_gid == former.st_gid)
        return attributes;
    const quint32 everybody = attributes & S_IRWXO;
    return (attributes & ~quint32(S_IRWXG)) | (attributes & S_IRWXG & (everybody << 3));
}

NativeFile::Written NativeFile::writeNew(const QString &path, const QByteArray &content,
                                         const QString &like)
{
    const QByteArray name = NativePath::toNative(path);
    const int descriptor =
        ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
    if (descriptor == -1)
        return errno == EEXIST ? Written::Taken : Written::NotCreated;
    struct stat status = {};
    if (statusOf(like, &status))
        takeOwner(descriptor, status);
    const bool synced = writeAll(descriptor, content) && sync(descriptor);
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

bool NativeFile::isTaken(const QString &path)
{
    struct stat status = {};
    return ::lstat(NativePath::toNative(path).constData(), &status) == 0;
}

bool NativeFile::copy(const QString &path, const QString &name)
{
    const QByteArray to = NativePath::toNative(name);
    // Not to wait for a FIFO that has taken the file's place.
    const int source = ::open(NativePath::toNative(path).constData(),
                              O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status = {};
    const bool isFile = source != -1 && ::fstat(source, &status) == 0 && S_ISREG(status.st_mode);
    const int target =
        isFile ? ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly) : -1;
    bool copied = false;
    if (target != -1) {
        copied = copyAll(source, target);
        takeStatus(target, status);
        copied = sync(target) && copied;
        copied = ::close(target) == 0 && copied;
        if (!copied)
            ::unlink(to.constData());
    }
    if (source != -1)
        ::close(source);
    return copied;
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
