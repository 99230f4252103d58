#pragma once

#include <QString>

/// What the disk holds under a path that a person typed; links are followed.
enum class PathKind {
    Missing,
    Unreadable,
    LinkLoop, ///< links that lead back to themselves
    NameTooLong, ///< longer than the system takes
    Broken, ///< the disk or the network does not answer as it should
    Folder,
    File,
    Special ///< FIFO, socket, device: never opened
};

/// path as in NativePath, with or without a "/" at the end of a folder.
/// Re-entrant; never blocks on what the entry is.
PathKind pathKind(const QString &path);

/// A text that is the same for all paths to one entry, links followed; empty
/// where there is none. Two names of one file (hard links) are two entries.
QString canonicalPath(const QString &path);
