#include "engine/FolderLister.h"
#include "engine/LongPath.h"
#include "engine/NativePath.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

FolderIdentity identityOf(const struct stat &status)
{
    return {static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)};
}

FolderEntry::Kind kindOfTarget(mode_t mode, bool throughLink)
{
    if (S_ISREG(mode))
        return FolderEntry::File;
    if (S_ISDIR(mode))
        return throughLink ? FolderEntry::FolderLink : FolderEntry::Folder;
    return FolderEntry::Other;
}

FolderEntry::Kind askKind(int folder, const char *name)
{
    struct stat status;
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return FolderEntry::Other;
    if (!S_ISLNK(status.st_mode))
        return kindOfTarget(status.st_mode, false);
    if (::fstatat(folder, name, &status, 0) != 0)
        return FolderEntry::Other;
    return kindOfTarget(status.st_mode, true);
}

/// The type comes with the entry on most file systems; only links and file
/// systems that do not tell it cost a further call.
FolderEntry::Kind kindOf(int folder, const dirent &entry)
{
    switch (entry.d_type) {
    case DT_REG:
        return FolderEntry::File;
    case DT_DIR:
        return FolderEntry::Folder;
    case DT_LNK:
    case DT_UNKNOWN:
        return askKind(folder, entry.d_name);
    default:
        return FolderEntry::Other;
    }
}

/// Opens nothing but a folder, and without waiting; null when there is none. A
/// descriptor of our own would only be asked by two further calls what it is, so
/// it is opened for a path that is too long for one call only.
DIR *openFolder(const QByteArray &path)
{
    DIR *const directory = ::opendir(path.constData());
    if (directory || errno != ENAMETOOLONG)
        return directory;
    const int descriptor = LongPath::open(path, O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    DIR *const deep = ::fdopendir(descriptor);
    if (!deep)
        ::close(descriptor);
    return deep;
}

bool isDotOrDotDot(const char *name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

} // namespace

QVector<FolderEntry> NativeFolderLister::list(const QString &folder, const Claim &claim,
                                              const KeepGoing &keepGoing) const
{
    QVector<FolderEntry> entries;
    DIR *const directory = openFolder(NativePath::toNative(folder));
    if (!directory)
        return entries;
    const int descriptor = ::dirfd(directory);
    struct stat status;
    const bool told = ::fstat(descriptor, &status) == 0;
    if (claim(told ? identityOf(status) : FolderIdentity())) {
        while (const dirent *const entry = ::readdir(directory)) {
            if (isDotOrDotDot(entry->d_name))
                continue;
            entries.append({NativePath::fromNative(entry->d_name,
                                                   static_cast<int>(std::strlen(entry->d_name))),
                            kindOf(descriptor, *entry)});
            if (!keepGoing())
                break;
        }
    }
    ::closedir(directory);
    return entries;
}

bool NativeFolderLister::identify(const QString &path, FolderIdentity *identity) const
{
    struct stat status;
    if (!LongPath::status(NativePath::toNative(path), &status) || !S_ISDIR(status.st_mode))
        return false;
    *identity = identityOf(status);
    return identity->isKnown();
}
