#pragma once

#include "cli/StandardStreams.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// Collects whole lines and writes them in large pieces that end at a line end.
/// After a closed pipe or a failed write everything further is dropped. One
/// thread only.
class LineOutput {
public:
    /// beforeWrite is called each time something is about to be written; giveUp:
    /// see StandardStreams::write.
    LineOutput(StandardStreams::Stream stream, const std::function<void()> &beforeWrite,
               const std::function<bool()> &giveUp);

    /// lines end with a line feed, or are empty.
    void add(const QByteArray &lines);
    void flush();

    /// No more can be written, for whatever reason.
    bool isClosed() const { return m_closed; }
    /// Why a write failed; empty after a closed pipe, which is no failure.
    QString errorText() const { return m_errorText; }

private:
    void write(const QByteArray &bytes);

    const StandardStreams::Stream m_stream;
    const std::function<void()> m_beforeWrite;
    const std::function<bool()> m_giveUp;
    QByteArray m_buffer;
    bool m_closed = false;
    QString m_errorText;
};
