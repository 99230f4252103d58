#include "engine/WindowsName.h"

#include <QDir>

#include <qt_windows.h>

// Names of MAX_PATH and more characters need the long form, which takes
// absolute paths with backslashes only and no "." or "..".
QString WindowsName::of(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    if (native.size() < MAX_PATH || native.startsWith(QLatin1String("\\\\?\\")))
        return native;
    const QString absolute =
        QDir::toNativeSeparators(QDir::cleanPath(QDir().absoluteFilePath(path)));
    if (absolute.startsWith(QLatin1String("\\\\")))
        return QLatin1String("\\\\?\\UNC\\") + absolute.mid(2);
    return QLatin1String("\\\\?\\") + absolute;
}
