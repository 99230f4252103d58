#include "mainwindow/history/FirstName.h"

#include "engine/WindowsName.h"

#include <qt_windows.h>

namespace {

/// A virus scanner holds a file that has just been written for a moment.
constexpr int kAttempts = 20;
constexpr DWORD kPauseMilliseconds = 30;

} // namespace

FirstName::Result FirstName::give(const QString &temporary, const QString &path)
{
    const std::wstring from = WindowsName::of(temporary);
    const std::wstring to = WindowsName::of(path);
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0)
            return Result::Given;
        const DWORD error = GetLastError();
        if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS)
            return Result::Taken;
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED)
            return Result::Failed;
        Sleep(kPauseMilliseconds);
    }
    return Result::Failed;
}
