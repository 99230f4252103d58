#pragma once

#include "engine/RegularFile.h"

#include <QByteArray>
#include <QString>

/// Reads whole files into one buffer that is kept from file to file. One object
/// a thread.
class FileReader {
public:
    enum class Status {
        Read, ///< content() holds the file
        CannotOpen, ///< no such file, no permission, or not a regular file
        TooLarge ///< over the limit: nothing was read
    };

    using TypeCheck = RegularFile::TypeCheck;

    /// limit in bytes, on the size that the file has when it is opened; never
    /// more than kLargestText. The open never blocks. A file that grows meanwhile is read up to the
    /// limit, one that shrinks or fails in the middle up to there.
    Status read(const QString &path, qint64 limit, TypeCheck check);

    const char *content() const { return m_buffer.constData(); }
    /// Bytes that were read.
    qint64 size() const { return m_size; }
    /// Bytes that the file said it has when it was opened; 0 for the files of
    /// some virtual file systems that hold text all the same.
    qint64 sizeAtOpen() const { return m_sizeAtOpen; }

private:
    void reserve(qint64 bytes);

    QByteArray m_buffer;
    qint64 m_size = 0;
    qint64 m_sizeAtOpen = 0;
};
