#include "engine/ListFile.h"

#include <QFileInfo>
#include <QSettings>

QStringList ListFile::read(const QString &path, bool *known)
{
    const QString key = QStringLiteral("files");
    // Asked before it is opened: opening a FIFO would wait for its writer.
    const bool readable = QFileInfo(path).isFile();
    if (known)
        *known = false;
    if (!readable)
        return {};
    const QSettings file(path, QSettings::IniFormat);
    if (known)
        *known = file.contains(key);
    return file.value(key).toStringList();
}
