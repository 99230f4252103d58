#pragma once

#include "engine/FolderLister.h"

/// What the attributes of a directory entry say of it on Windows.
namespace WindowsAttributes {

/// attributes: dwFileAttributes of an entry; reparseTag: its dwReserved0, which
/// means something for a reparse point only. A folder is a link when its tag
/// stands for another name (a junction, a symbolic link, a mounted volume); the
/// folders of cloud storage are reparse points, too, and hold what they hold.
FolderEntry::Kind kindOf(quint32 attributes, quint32 reparseTag);

} // namespace WindowsAttributes
