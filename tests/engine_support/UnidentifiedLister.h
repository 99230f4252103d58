#pragma once

#include "engine/FolderLister.h"

/// Lists as the platform does, on a file system that tells no folder from
/// another: each has the file number 0 of the same device.
class UnidentifiedLister : public NativeFolderLister {
public:
    QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                              const KeepGoing &keepGoing) const override;
    bool identify(const QString &path, FolderIdentity *identity) const override;
};
