#include "settings/DailyBackup.h"

#include "settings/Retry.h"
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

/// Does not overwrite. Somebody who reads a backup just then costs no generation.
bool rename(const QString &from, const QString &to)
{
    return Retry::whileHeld([&] { return QFile::rename(from, to); });
}

bool exists(const QString &path, int number)
{
    return QFileInfo::exists(generation(path, number));
}

bool drop(const QString &path, int number)
{
    const QString backup = generation(path, number);
    return mayTake(Step::DropBackup) && Retry::whileHeld([&] { return QFile::remove(backup); });
}

bool move(const QString &path, int from, int to)
{
    return mayTake(Step::ShiftBackup) && rename(generation(path, from), generation(path, to));
}

/// Moves every generation up by one. What cannot be moved or removed stays where it
/// is, and the one below it drops out in its place.
void shiftAll(const QString &path)
{
    for (int i = kGenerations; i > 1; --i) {
        if (exists(path, i))
            drop(path, i);
        if (exists(path, i - 1))
            move(path, i - 1, i);
    }
    // Behind a second one that stays there may be room; without it the first goes.
    const bool blocked = exists(path, 1) && exists(path, 2);
    if (blocked && !move(path, 1, kGenerations))
        drop(path, 1);
}

/// Ends a shift that was cut short: moves up what stands before the gap that it left.
void closeGap(const QString &path, int gap)
{
    for (int i = gap; i > 1 && exists(path, i - 1) && move(path, i - 1, i);)
        --i;
}

int firstGap(const QString &path)
{
    int number = 1;
    while (number <= kGenerations && exists(path, number))
        ++number;
    return number;
}

} // namespace

void DailyBackup::makeDailyBackup(const QString &path, const QDate &today)
{
    if (!isDue(path, today))
        return;
    const QString copy = path + QStringLiteral(".bak.new");
    const QString unfinished = path + QStringLiteral(".bak.next");
    QFile::rename(unfinished, copy); // unless there is one
    // It stays behind when an earlier backup was cut short, and until there is a newer
    // one: it is the only sign of the gap.
    const bool cutShort = QFileInfo::exists(copy);
    QFile::remove(unfinished);
    if (!copyWithDate(path, unfinished)) {
        QFile::remove(unfinished);
        return;
    }
    QFile::remove(copy);
    if (!rename(unfinished, copy))
        return;
    const int gap = firstGap(path);
    if (cutShort && gap <= kGenerations)
        closeGap(path, gap);
    else
        shiftAll(path);
    // Does not overwrite. A copy that finds no room stays, as after a kill.
    if (mayTake(Step::PlaceBackup))
        rename(copy, generation(path, 1));
}
