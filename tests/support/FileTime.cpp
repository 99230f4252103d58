#include "tests/support/FileTime.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

void FileTime::setDayOfChange(const QString &path, const QDate &day)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)
        || !file.setFileTime(QDateTime(day, QTime(12, 0)), QFileDevice::FileModificationTime))
        qFatal("cannot date %s: %s", qPrintable(path), qPrintable(file.errorString()));
}

QDate FileTime::dayOfChange(const QString &path)
{
    return QFileInfo(path).lastModified().date();
}
