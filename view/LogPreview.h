#pragma once

#include <QString>

/// What the log chooser shows of a file.
namespace LogPreview {

/// How much of a file is read, in UTF-16 code units: enough for the conditions
/// and the first hits, however large the log is.
constexpr int kMostCharacters = 1024;

/// The beginning of the file at path, decoded with the platform's default codec
/// (or as Unicode, when a byte-order mark says so); nothing for a folder. A file
/// that cannot be opened, or is none (a FIFO, a dangling link), gives a message
/// with its path. Any bytes give some text.
QString textOf(const QString &path);

} // namespace LogPreview
