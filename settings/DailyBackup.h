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
/// Failures are not reported. The copy is made first and gets the file's date;
/// earlier generations move only when it stands. They move only up to the first
/// generation that is missing, so that a move that was cut short one day costs
/// nothing the next. Call it with the file's lock held.
void makeDailyBackup(const QString &path, const QDate &today = QDate::currentDate());

} // namespace DailyBackup
