#pragma once

#include <QString>
#include <QStringList>

/// The rules between the lines of the path editor and a search's path list.
///
/// A path names a folder and ends in "/". One that begins with "@" names a list
/// file instead; it ends the list, and what comes after it is not searched.
namespace SearchPaths {

/// path with a "/" at its end.
QString withSlash(const QString &path);

/// The path list that text, the path editor's, stands for: each line that is not
/// empty, with its "/" (a list file has none added), up to the first list file;
/// nothing twice.
QStringList fromText(const QString &text);

/// The lines that the path editor shows for a path list that was handed over or
/// is taken from a log: no empty one, no list file with a "/" at its end, nothing
/// after a list file.
QStringList toLines(const QStringList &paths);

/// The first of paths, as fromText() gives them, that is no folder, or no list file,
/// of this machine; empty when all are there. Asks the file system.
QString firstMissing(const QStringList &paths);

} // namespace SearchPaths
