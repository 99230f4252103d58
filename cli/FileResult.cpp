#include "cli/FileResult.h"

QVector<FileResult> FileResult::split(const QStringList &entries)
{
    // A hit string begins with blanks, so no hit can be taken for a head.
    QVector<FileResult> files;
    for (const QString &entry : entries) {
        if (entry.startsWith(QLatin1String("::")))
            files.append({entry.mid(2), {}});
        else if (!files.isEmpty())
            files.last().hits.append(entry);
    }
    return files;
}
