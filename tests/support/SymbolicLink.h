#pragma once

#include <QFile>
#include <QFileInfo>

/// Makes name a symbolic link to target. False where there are none: what the
/// toolkit makes on Windows is a file that the desktop takes for a link; it is
/// taken away again.
inline bool makeLink(const QString &target, const QString &name)
{
    QFile::link(target, name);
    if (QFileInfo(name).isSymLink())
        return true;
    QFile::remove(name);
    return false;
}
