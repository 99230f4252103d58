#pragma once

#include "engine/WindowsName.h"

#include <QString>

#include <qt_windows.h>

/// Holds a file open as another program does, so that others may do with it only
/// what shared (FILE_SHARE_...) allows. Windows only.
class WindowsLock {
public:
    WindowsLock(const QString &path, DWORD shared)
        : m_handle(CreateFileW(WindowsName::of(path).c_str(), GENERIC_READ | GENERIC_WRITE, shared,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~WindowsLock() { CloseHandle(m_handle); }
    Q_DISABLE_COPY(WindowsLock)

    bool isHeld() const { return m_handle != INVALID_HANDLE_VALUE; }

private:
    const HANDLE m_handle;
};
