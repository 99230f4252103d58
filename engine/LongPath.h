#pragma once

#include <QByteArray>

struct stat;

/// Unix only: what the system does with a path, for paths of any length. The
/// system itself takes 4096 bytes, which twenty folders with long names can pass;
/// what lies deeper is reached folder by folder. Re-entrant.
namespace LongPath {

/// As open(2), of an existing file or folder: the descriptor, or -1 with errno.
int open(const QByteArray &path, int flags);

/// As stat(2), links followed; false when there is nothing at path.
bool status(const QByteArray &path, struct stat *status);

} // namespace LongPath
