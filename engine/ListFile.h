#pragma once

#include <QString>
#include <QStringList>

/// A list file names what to search instead of folders: ini format, key
/// "files", a string list of file paths and of folder paths that end in "/".
namespace ListFile {

/// The entries of the file at path, which may have a folder's "/" at its end, in
/// its order. Empty when there is no
/// regular file at path, it cannot be read or has no such key; known, when
/// given, tells whether the key is there.
QStringList read(const QString &path, bool *known = nullptr);

} // namespace ListFile
