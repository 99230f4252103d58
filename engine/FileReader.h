#pragma once

#include "engine/PieceSource.h"
#include "engine/RegularFile.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

/// Reads files, as a whole or in pieces, into one buffer that is kept from file
/// to file. One object a thread.
///
/// A piece stays in the processor's cache from when it is read until it is
/// searched, and large files take no memory of their size.
class FileReader : public PieceSource {
public:
    enum class Status {
        Read, ///< content() holds the file
        /// No such file, no permission, not a regular file, or none of its bytes
        /// can be read.
        CannotOpen,
        TooLarge ///< over the limit: nothing was read
    };

    using TypeCheck = RegularFile::TypeCheck;

    /// What a piece holds at least, unless the file ends before.
    static constexpr qint64 kPieceSize = 128 << 10;

    /// Asked again and again while a large file is read; once it says true, the
    /// file ends there and wasStopped() is true until the next one is opened.
    void stopWhen(const std::function<bool()> &stop) { m_stop = stop; }
    bool wasStopped() const { return m_stopped; }

    /// The system could not read on in the middle of the file, which ends there.
    bool hasFailed() const { return m_failed; }

    /// Opens a file and reads its first piece, of kPieceSize or atLeast bytes,
    /// whichever is more.
    ///
    /// limit in bytes, on the size that the file has when it is opened; never
    /// more than kLargestText. The open never blocks. A file that grows meanwhile is read up to the
    /// limit, one that shrinks or fails in the middle (see hasFailed()) up to there.
    Status open(const QString &path, qint64 limit, TypeCheck check, qint64 atLeast = 0);
    /// The same, and reads the whole file.
    Status read(const QString &path, qint64 limit, TypeCheck check);

    const char *content() const override { return m_buffer.constData(); }
    /// Bytes that were read.
    qint64 size() const override { return m_size; }
    bool atEnd() const override { return m_atEnd; }
    void advance(qint64 used) override;
    void readWhole() override;
    /// Bytes that the file said it has when it was opened; 0 for the files of
    /// some virtual file systems that hold text all the same.
    qint64 sizeAtOpen() const { return m_sizeAtOpen; }

private:
    void reserve(qint64 bytes);
    void fill();

    std::optional<RegularFile> m_file; // until all of it is in the buffer
    QByteArray m_buffer;
    qint64 m_room = 0; // bytes of the buffer that are used for this file
    qint64 m_size = 0;
    qint64 m_dropped = 0; // bytes of the file before the piece
    qint64 m_sizeAtOpen = 0;
    qint64 m_limit = 0;
    bool m_atEnd = true;
    bool m_stopped = false;
    bool m_failed = false;
    std::function<bool()> m_stop;
};
