#pragma once

#include <QDate>
#include <QString>

/// Copies of a file from the days before, beside it: ".bak1" (the newest),
/// ".bak2" and ".bak3".
namespace DailyBackup {

/// Keeps the file as it is now as ".bak1" and moves the earlier ones up by one,
/// the third dropping out. Does nothing when there is no file, when it was last
/// changed today (at most one generation for each day of change), or when the
/// date of ".bak1" says that it is this version already: however often the file
/// cannot be replaced afterwards, no generation is lost.
///
/// Failures are not reported. The copy is made first, as ".bak.next", gets the
/// file's date and becomes ".bak.new"; earlier generations move only when it stands. One that can
/// be neither moved nor removed stays where it is; another drops out instead, so that the newest is
/// kept. A ".bak.new" from before tells that the generations were left half moved: then only those
/// before the first one missing move, and what was cut short one day costs nothing the next. Call
/// it with the file's lock held.
void makeDailyBackup(const QString &path, const QDate &today = QDate::currentDate());

} // namespace DailyBackup
