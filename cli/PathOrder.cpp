#include "cli/PathOrder.h"

#include "engine/NativePath.h"

#include <QFileInfo>

bool PathOrder::byBytes(const QString &a, const QString &b)
{
    return NativePath::toNative(a) < NativePath::toNative(b);
}

bool PathOrder::byFolder(const QString &a, const QString &b)
{
    const QString folderOfA = QFileInfo(a).path();
    const QString folderOfB = QFileInfo(b).path();
    return folderOfA == folderOfB ? byBytes(a, b) : byBytes(folderOfA, folderOfB);
}
