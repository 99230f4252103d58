#pragma once

#include <QDateTime>
#include <QString>

/// Edited texts that could not be saved where they belong.
namespace RescueFile {

/// Writes text as UTF-8 into a new file of directory, which ends in "/" and is made
/// when it is missing: time, "-", the name of the file that the text belongs to,
/// cut where the name would be too long for a file system, and ".txt". Where there
/// is such a file, "_02", "_03" and so on follow the time. Returns the file's path;
/// empty when it could not be written, and then no part of it is left. The file gets this
/// name when it is whole: what a program that is killed meanwhile leaves has a further
/// ending, ".saving-" and a number.
QString write(const QString &directory, const QString &fileName, const QString &text,
              const QDateTime &time);

} // namespace RescueFile
