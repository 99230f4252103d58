#pragma once

#include "cli/FileResult.h"

#include <QPair>
#include <QString>
#include <QVector>

/// Takes what a run reports and writes it to the output; one class a mode. A
/// report that sorts keeps everything until finish(). Main thread only, but for
/// what says otherwise.
class RunReport {
public:
    using Counts = QVector<QPair<QString, qint64>>;

    virtual ~RunReport() = default;

    /// Any thread, several at a time.
    virtual void addHits(const FileResult &file) { Q_UNUSED(file) }
    /// What addHits has left to write, in bytes. Any thread.
    virtual qint64 waitingBytes() const { return 0; }
    /// Writes it.
    virtual void writeWaiting() { }
    virtual void addLineCount(const QString &path, int count)
    {
        Q_UNUSED(path)
        Q_UNUSED(count)
    }
    /// codeSet is -2 for a refused file; lineEnd and bom then mean nothing.
    virtual void addEncoding(const QString &path, int codeSet, int lineEnd, bool bom)
    {
        Q_UNUSED(path)
        Q_UNUSED(codeSet)
        Q_UNUSED(lineEnd)
        Q_UNUSED(bom)
    }
    virtual void finish(bool aborted) = 0;

    /// Whether the run counts as one with hits.
    virtual bool foundAny() const = 0;
    /// Hits so far.
    virtual qint64 hitCount() const { return 0; }
    /// What --stats shows of this mode, by its label. searched: files that the
    /// spool counted as searched.
    virtual Counts counts(int searched) const = 0;
};
