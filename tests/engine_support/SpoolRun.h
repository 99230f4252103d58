#pragma once

#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

#include <QObject>
#include <QPair>
#include <QStringList>
#include <QThread>
#include <QVariantList>
#include <QVector>

#include <memory>

class SignalSpool;

/// A spool on a thread of its own, as its owner keeps it, and what it said so
/// far. The signals are received on the test's thread.
class SpoolRun : public QObject {
    Q_OBJECT

public:
    explicit SpoolRun(const EngineOptions &options = EngineOptions());
    /// Ends the spool's thread and then deletes the spool.
    ~SpoolRun() override;
    /// The same before the object goes, so that what was said to the very last can be
    /// looked at.
    void finish();

    SignalSpool *operator->() const { return m_spool.get(); }

    /// Queues the spool's scan slot, by its name and arguments.
    void scan(const SearchCondition &condition);
    /// Returns once the spool's thread has done all that was queued for it.
    void settle();
    /// Waits until so many runs have ended; false when they do not.
    bool waitForEnds(int count);
    QStringList takeAll();

    QVector<bool> finishedFlags;
    QVector<bool> lcntFinishedFlags;
    QVector<QPair<QString, int>> lineCounts;
    QVector<QVariantList> encodings; ///< the arguments of encodingAt

private:
    void listen();

    // The thread ends before the spool is deleted.
    std::unique_ptr<SignalSpool> m_spool;
    QThread m_thread;
};
