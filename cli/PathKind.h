#pragma once

#include <QString>

/// What the disk holds under a path that a person typed; links are followed.
enum class PathKind {
    Missing,
    Unreadable,
    Folder,
    File,
    Special ///< FIFO, socket, device: never opened
};

/// path as in NativePath, with or without a "/" at the end of a folder.
/// Re-entrant; never blocks on what the entry is.
PathKind pathKind(const QString &path);
