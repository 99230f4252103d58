#pragma once

#include <QString>

/// The directory that every file of the program is named from.
namespace ApplicationDirectory {

/// The directory that holds the executable, ending in "/". Needs the
/// application object.
QString path();

/// directory with exactly the "/" at its end that names are appended to.
QString withSlash(const QString &directory);

/// Whether files can be made in directory. It is tried, since what permissions say
/// does not tell; nothing is left behind.
bool canBeWritten(const QString &directory);

} // namespace ApplicationDirectory
