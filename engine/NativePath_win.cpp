#include "engine/NativePath.h"

QString NativePath::fromNative(const char *name, int size)
{
    return QString::fromUtf8(name, size);
}

QString NativePath::fromNative(const QByteArray &name)
{
    return QString::fromUtf8(name);
}

QByteArray NativePath::toNative(const QString &path)
{
    return path.toUtf8();
}
