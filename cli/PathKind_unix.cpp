#include "cli/PathKind.h"

#include "engine/NativePath.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

PathKind pathKind(const QString &path)
{
    const QByteArray name = NativePath::toNative(path);
    struct stat status;
    if (::stat(name.constData(), &status) != 0)
        return errno == EACCES ? PathKind::Unreadable : PathKind::Missing;
    if (S_ISDIR(status.st_mode))
        return ::access(name.constData(), R_OK | X_OK) == 0 ? PathKind::Folder
                                                            : PathKind::Unreadable;
    if (!S_ISREG(status.st_mode))
        return PathKind::Special;
    return ::access(name.constData(), R_OK) == 0 ? PathKind::File : PathKind::Unreadable;
}
