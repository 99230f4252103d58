#include "mainwindow/history/FirstName.h"

#include "engine/NativePath.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// For file systems that know neither a plain renaming nor second names. An empty file
/// stands there for an instant; who deletes it meanwhile does no harm.
FirstName::Result giveByClaiming(const QByteArray &temporary, const QByteArray &path)
{
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor == -1)
        return errno == EEXIST ? FirstName::Result::Taken : FirstName::Result::Failed;
    ::close(descriptor);
    if (::rename(temporary.constData(), path.constData()) == 0)
        return FirstName::Result::Given;
    ::unlink(path.constData());
    return FirstName::Result::Failed;
}

/// For file systems that know no renaming without replacing. A kill between the two
/// steps leaves a whole file under both names.
FirstName::Result giveByLinking(const QByteArray &temporary, const QByteArray &path)
{
    if (::link(temporary.constData(), path.constData()) == 0) {
        ::unlink(temporary.constData());
        return FirstName::Result::Given;
    }
    switch (errno) {
    case EEXIST:
        return FirstName::Result::Taken;
    case EPERM:
    case ENOSYS:
    case EOPNOTSUPP:
        return giveByClaiming(temporary, path);
    default:
        return FirstName::Result::Failed;
    }
}

} // namespace

FirstName::Result FirstName::give(const QString &temporary, const QString &path)
{
    const QByteArray from = NativePath::toNative(temporary);
    const QByteArray to = NativePath::toNative(path);
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return Result::Given;
    if (errno == EEXIST)
        return Result::Taken;
    if (errno != EINVAL && errno != ENOSYS)
        return Result::Failed;
#endif
    return giveByLinking(from, to);
}
