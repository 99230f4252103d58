#pragma once

#include "engine/FolderLister.h"

/// Lists as the platform does, but holds each listing back: a cold disk or a
/// slow network folder.
class SlowLister : public NativeFolderLister {
public:
    explicit SlowLister(unsigned long delayMs) : m_delayMs(delayMs) { }

    QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                              const KeepGoing &keepGoing) const override;

private:
    unsigned long m_delayMs;
};
