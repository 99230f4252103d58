#pragma once

#include "mainwindow/history/ResultLog.h"

#include <QString>

#include <optional>

/// Result logs on the disk: text in the locale's encoding, with the platform's
/// line ends.
///
/// What is written is read again letter by letter. A text that the locale's
/// encoding cannot hold is therefore written as UTF-8 with a byte-order mark,
/// which every reading text stream obeys. Where the locale's encoding is UTF-8,
/// the bytes of a file name that are no valid text (see NativePath) are written
/// as they are, so that the file can still be opened from an old log. What is
/// lost: other halves of surrogate pairs, which become "?".
///
/// All functions may run on any thread.
namespace ResultLogFile {

/// Replaces the file at path. At every moment path names the old file or the
/// new one, whole; on failure (an empty path, a folder that is not there or
/// cannot be written, a full disk) the old one. The folder is not made.
bool write(const QString &path, const ResultLog &log);

/// The whole content, lines ended by "\n", carriage returns dropped. Nothing
/// when the file cannot be opened, is no regular file (a FIFO is not waited
/// for) or is too large for a string.
std::optional<QString> read(const QString &path);

/// What the menu shows for the log at path: the values of line 2, "　---　", the
/// first ", "-separated part of line 8's value and line 9's value. Reads the
/// first 64 KiB at most; a line that is missing, or a file that cannot be read,
/// gives empty values. A menu takes an "&" in it for a mark.
QString label(const QString &path);

} // namespace ResultLogFile
