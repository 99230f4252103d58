#pragma once

#include "engine/FolderLister.h"

#include <QString>

/// What tells files and folders apart whatever path leads to them. Windows only.
namespace WindowsIdentity {

enum class Of { File, Folder };

/// Links followed; unknown when there is no such entry at path or it cannot be asked.
FolderIdentity at(const QString &path, Of kind);

} // namespace WindowsIdentity
