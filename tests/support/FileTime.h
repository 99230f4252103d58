#pragma once

#include <QDate>
#include <QString>

/// Ages files. A failed operation fails the test's process with a message.
namespace FileTime {

/// Sets the time of the last change to noon of day, local time.
void setDayOfChange(const QString &path, const QDate &day);

/// The day of the last change, local time.
QDate dayOfChange(const QString &path);

} // namespace FileTime
