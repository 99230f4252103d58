#pragma once

#include "engine/FolderLister.h"

#include <condition_variable>
#include <mutex>

/// Lists as the platform does once its gate is open: for looking at a walk that
/// stands still. The gate opens by itself after a minute, so that a test
/// that has failed still ends.
class GatedLister : public NativeFolderLister {
public:
    enum Gate {
        BeforeIdentifying, ///< of the first top folder: nothing is queued yet
        BeforeListing ///< of any folder: it is taken from the queue
    };

    explicit GatedLister(Gate gate) : m_gate(gate) { }

    void open();
    /// Threads that have come to the gate so far, and wait there or waited.
    int arrived() const;

    QVector<FolderEntry> list(const QString &folder, const Claim &claim,
                              const KeepGoing &keepGoing) const override;
    bool identify(const QString &path, FolderIdentity *identity) const override;

private:
    void pass(Gate gate) const;

    const Gate m_gate;
    mutable std::mutex m_mutex; // guards the next two
    mutable int m_arrived = 0;
    bool m_open = false;
    mutable std::condition_variable m_opened;
};
