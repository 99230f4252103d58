#include "settings/DailyBackup.h"

#include "settings/SaveSteps.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

using SaveSteps::mayTake;
using SaveSteps::Step;

namespace {

constexpr int kGenerations = 3;

QString generation(const QString &path, int number)
{
    return path + QStringLiteral(".bak%1").arg(number);
}

QString dayOf(const QDate &date)
{
    return date.toString(QStringLiteral("yyyy.MM.dd"));
}

QString dayOfChange(const QString &path)
{
    return dayOf(QFileInfo(path).lastModified().date());
}

bool isDue(const QString &path, const QDate &today)
{
    if (!QFileInfo(path).isFile() || dayOfChange(path) == dayOf(today))
        return false;
    const QString newest = generation(path, 1);
    return !QFileInfo::exists(newest) || dayOfChange(newest) != dayOfChange(path);
}

/// A copy keeps the date of its source on Windows only.
bool copyWithDate(const QString &path, const QString &copy)
{
    if (!mayTake(Step::CopyForBackup) || !QFile::copy(path, copy))
        return false;
    QFile file(copy);
    if (!mayTake(Step::DateBackup) || !file.open(QIODevice::ReadWrite))
        return false;
    const QDateTime time = QFileInfo(path).lastModified();
    const bool dated = file.setFileTime(time, QFileDevice::FileModificationTime);
    file.close();
    return dated && dayOfChange(copy) == dayOfChange(path);
}

void makeRoomForNewest(const QString &path)
{
    int free = 1;
    while (free < kGenerations && QFileInfo::exists(generation(path, free)))
        ++free;
    const bool full = free == kGenerations && QFileInfo::exists(generation(path, free));
    if (full && (!mayTake(Step::DropOldestBackup) || !QFile::remove(generation(path, free))))
        return;
    for (int i = free; i > 1; --i) {
        if (!mayTake(Step::ShiftBackup)
            || !QFile::rename(generation(path, i - 1), generation(path, i)))
            return;
    }
}

} // namespace

void DailyBackup::makeDailyBackup(const QString &path, const QDate &today)
{
    if (!isDue(path, today))
        return;
    const QString copy = path + QStringLiteral(".bak.new");
    // Left over when an earlier backup was cut short.
    QFile::remove(copy);
    if (copyWithDate(path, copy)) {
        makeRoomForNewest(path);
        // Does not overwrite: when no room was made the copy goes.
        if (mayTake(Step::PlaceBackup) && QFile::rename(copy, generation(path, 1)))
            return;
    }
    QFile::remove(copy);
}
