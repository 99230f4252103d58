#pragma once

#include <QByteArray>

/// Tells whether anybody opened a file, FIFO or folder since the object was
/// made.
class OpenWatch {
public:
    /// path: the platform's own bytes.
    explicit OpenWatch(const QByteArray &path);
    ~OpenWatch();
    OpenWatch(const OpenWatch &) = delete;
    OpenWatch &operator=(const OpenWatch &) = delete;

    /// False where the platform cannot tell: the test skips.
    bool isWatching() const { return m_descriptor >= 0; }
    bool wasOpened() const;

private:
    int m_descriptor = -1;
};
