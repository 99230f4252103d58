#pragma once

#include <QString>

/// A regular file opened for reading from its beginning, as lean as the
/// platform allows: a search opens tens of thousands. Opening never blocks; a
/// FIFO, a device, a socket or a folder counts as a file that cannot be opened,
/// a symbolic link counts as what it names. One object belongs to one thread
/// at a time; the file is closed with it.
class RegularFile {
public:
    enum class TypeCheck {
        WhenOpen, ///< for a name that a listing told to be a regular file's
        BeforeOpen ///< for any other name: a device is not even opened
    };

    explicit RegularFile(const QString &path, TypeCheck check = TypeCheck::BeforeOpen);
    ~RegularFile();
    RegularFile(const RegularFile &) = delete;
    RegularFile &operator=(const RegularFile &) = delete;

    bool isOpen() const { return m_handle != kClosed; }

    /// Bytes the file held when it was opened; 0 when it could not be opened.
    qint64 size() const { return m_size; }

    /// Reads the next bytes, at most maximum (not negative), into buffer.
    /// Returns how many; fewer than maximum only at the end of the file or
    /// after an error, 0 when it is not open.
    qint64 read(char *buffer, qint64 maximum);

    /// The same with one call to the system: may return less in the middle of
    /// the file, but 0 only at its end and -1 after an error.
    qint64 readSome(char *buffer, qint64 maximum);

    /// The next read begins at the beginning again.
    void rewind();

private:
    static constexpr qintptr kClosed = -1;

    qintptr m_handle = kClosed; // file descriptor or HANDLE
    qint64 m_size = 0;
};
