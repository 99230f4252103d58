#include "cli/FileResult.h"

QVector<FileResult> FileResult::split(QStringList entries)
{
    // A hit string begins with blanks, so no hit can be taken for a head.
    QVector<FileResult> files;
    QStringList *hits = nullptr;
    for (QString &entry : entries) {
        if (entry.startsWith(QLatin1String("::"))) {
            files.append({entry.mid(2), {}});
            hits = &files.last().hits;
        } else if (hits != nullptr) {
            hits->append(QString());
            hits->last().swap(entry);
        }
    }
    return files;
}
