#include "view/LogPreview.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

QString LogPreview::textOf(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return QString();
    QFile file(path);
    // Only a regular file: opening a FIFO would wait for somebody to write.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 プレビューできません。").arg(info.absoluteFilePath());
    return QTextStream(&file).read(kMostCharacters);
}
