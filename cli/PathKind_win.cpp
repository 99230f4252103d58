#include "cli/PathKind.h"

#include "engine/WindowsIdentity.h"

#include <QFileInfo>

PathKind pathKind(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return PathKind::Missing;
    if (!info.isReadable())
        return PathKind::Unreadable;
    if (info.isDir())
        return PathKind::Folder;
    return info.isFile() ? PathKind::File : PathKind::Special;
}

QString canonicalPath(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    if (canonical.isEmpty())
        return canonical;
    const FolderIdentity identity = WindowsIdentity::at(
        canonical, info.isDir() ? WindowsIdentity::Of::Folder : WindowsIdentity::Of::File);
    // A folder may hold names that differ in their case only; then their identities do.
    // These alone would make one entry of two names of a file.
    return QStringLiteral("%1 %2 %3")
        .arg(identity.device)
        .arg(identity.file)
        .arg(canonical.toLower());
}
