#include "cli/PathKind.h"

#include "engine/NativePath.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

PathKind kindOfError(int error)
{
    switch (error) {
    case EACCES:
        return PathKind::Unreadable;
    case ELOOP:
        return PathKind::LinkLoop;
    case ENAMETOOLONG:
        return PathKind::NameTooLong;
    case EIO:
        return PathKind::Broken;
    default:
        return PathKind::Missing;
    }
}

} // namespace

PathKind pathKind(const QString &path)
{
    const QByteArray name = NativePath::toNative(path);
    struct stat status;
    if (::stat(name.constData(), &status) != 0)
        return kindOfError(errno);
    if (S_ISDIR(status.st_mode))
        return ::access(name.constData(), R_OK | X_OK) == 0 ? PathKind::Folder
                                                            : PathKind::Unreadable;
    if (!S_ISREG(status.st_mode))
        return PathKind::Special;
    return ::access(name.constData(), R_OK) == 0 ? PathKind::File : PathKind::Unreadable;
}

QString canonicalPath(const QString &path)
{
    const std::unique_ptr<char, void (*)(void *)> name(
        ::realpath(NativePath::toNative(path).constData(), nullptr), &std::free);
    return name ? NativePath::fromNative(QByteArray(name.get())) : QString();
}
