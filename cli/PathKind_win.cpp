#include "cli/PathKind.h"

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
    return QFileInfo(path).canonicalFilePath().toLower();
}
