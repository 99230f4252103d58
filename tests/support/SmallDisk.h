#pragma once

#include "tests/support/ScratchFolder.h"

/// A disk of 512 kilobytes that is there as long as the object, if this user may
/// have one: otherwise the test skips.
class SmallDisk {
public:
    SmallDisk();
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool isMounted() const { return m_mounted; }
    /// Ends in "/".
    QString path() const { return m_folder.path(); }

    /// Fills it but for so many blocks of 4096 bytes, with a file "filler".
    void fill(int blocksLeft);
    void makeRoom();

private:
    ScratchFolder m_folder;
    bool m_mounted;
};
