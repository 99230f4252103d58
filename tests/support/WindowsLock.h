#pragma once

#include <QProcess>
#include <QString>

#include <qt_windows.h>

/// A program of its own that holds a file open, so that others may do with it only
/// what shared (FILE_SHARE_...) allows. Windows only.
class WindowsLock {
public:
    /// Until release() or the object's end; waits until the file is held.
    WindowsLock(const QString &path, DWORD shared);
    ~WindowsLock();
    Q_DISABLE_COPY(WindowsLock)

    bool isHeld() const { return m_held; }
    /// Returns once nobody holds the file any more.
    void release();

private:
    QProcess m_holder;
    bool m_held = false;
};
