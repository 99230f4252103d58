#pragma once

#include "engine/FolderLister.h"

/// Lists as the platform does, but stands still at every folder below one until the run
/// is told to end: a run that is certainly under way, however slow the machine is. It
/// goes on by itself after a minute, so that a test that has failed still ends.
class StandingLister : public NativeFolderLister {
public:
    /// top: a path ending in "/"; it is itself listed at once.
    explicit StandingLister(const QString &top) : m_top(top) { }

    QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                              const KeepGoing &keepGoing) const override;

private:
    const QString m_top;
};
