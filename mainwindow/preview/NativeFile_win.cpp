#include "mainwindow/preview/NativeFile.h"

#include "engine/WindowsName.h"

#include <QFileInfo>

#include <algorithm>
#include <qt_windows.h>

namespace {

bool writeAll(HANDLE handle, const QByteArray &content)
{
    constexpr int kPiece = 1 << 24;
    for (int at = 0; at < content.size();) {
        DWORD count = 0;
        const DWORD wanted = DWORD(std::min(kPiece, content.size() - at));
        if (WriteFile(handle, content.constData() + at, wanted, &count, nullptr) == 0 || count == 0)
            return false;
        at += int(count);
    }
    return true;
}

// False while another program holds the file and lets nobody delete it.
bool mayBeReplaced(const std::wstring &name)
{
    const HANDLE handle =
        CreateFileW(name.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    CloseHandle(handle);
    return true;
}

} // namespace

NativeFile::Stamp NativeFile::stampOf(const QString &path)
{
    Stamp stamp;
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (GetFileAttributesExW(WindowsName::of(path).c_str(), GetFileExInfoStandard, &data) == 0)
        return stamp;
    stamp.exists = true;
    stamp.regular =
        (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
    stamp.size = (qint64(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    stamp.changed =
        (qint64(data.ftLastWriteTime.dwHighDateTime) << 32) | data.ftLastWriteTime.dwLowDateTime;
    return stamp;
}

quint32 NativeFile::attributesOf(const QString &path)
{
    return GetFileAttributesW(WindowsName::of(path).c_str());
}

bool NativeFile::setAttributes(const QString &path, quint32 attributes)
{
    return attributes == kNoAttributes
        || SetFileAttributesW(WindowsName::of(path).c_str(), attributes) != 0;
}

void NativeFile::clearAttributes(const QString &path)
{
    SetFileAttributesW(WindowsName::of(path).c_str(), FILE_ATTRIBUTE_NORMAL);
}

// The owner of a new file is who makes it.
quint32 NativeFile::attributesFor(const QString &, quint32 attributes, const QString &)
{
    return attributes;
}

NativeFile::Written NativeFile::writeNew(const QString &path, const QByteArray &content,
                                         const QString &)
{
    const std::wstring name = WindowsName::of(path);
    const HANDLE handle = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_EXISTS ? Written::Taken : Written::NotCreated;
    const bool synced = writeAll(handle, content) && FlushFileBuffers(handle) != 0;
    const bool closed = CloseHandle(handle) != 0;
    if (synced && closed)
        return Written::Yes;
    DeleteFileW(name.c_str());
    return Written::Failed;
}

bool NativeFile::remove(const QString &path)
{
    return DeleteFileW(WindowsName::of(path).c_str()) != 0;
}

bool NativeFile::isTaken(const QString &path)
{
    return GetFileAttributesW(WindowsName::of(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool NativeFile::copy(const QString &path, const QString &name)
{
    const std::wstring from = WindowsName::of(path);
    const std::wstring to = WindowsName::of(name);
    if (!mayBeReplaced(from) || CopyFileW(from.c_str(), to.c_str(), TRUE) == 0)
        return false;
    // A file that may only be read cannot be opened for being flushed.
    const DWORD attributes = GetFileAttributesW(to.c_str());
    SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
    const HANDLE handle = CreateFileW(to.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    const bool flushed = handle != INVALID_HANDLE_VALUE && FlushFileBuffers(handle) != 0;
    if (handle != INVALID_HANDLE_VALUE)
        CloseHandle(handle);
    if (flushed && SetFileAttributesW(to.c_str(), attributes) != 0)
        return true;
    DeleteFileW(to.c_str());
    return false;
}

bool NativeFile::link(const QString &path, const QString &name)
{
    // Two names share the attributes, and a file that may only be read cannot
    // be replaced. Of a file that is held the second name could not be taken away
    // again.
    const std::wstring file = WindowsName::of(path);
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) != 0
        || !mayBeReplaced(file))
        return false;
    return CreateHardLinkW(WindowsName::of(name).c_str(), file.c_str(), nullptr) != 0;
}

bool NativeFile::rename(const QString &path, const QString &name)
{
    return MoveFileExW(WindowsName::of(path).c_str(), WindowsName::of(name).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
        != 0;
}

QString NativeFile::targetOf(const QString &path)
{
    return QFileInfo(path).isSymLink() ? QFileInfo(path).canonicalFilePath() : path;
}
