#include "engine/WindowsIdentity.h"

#include "engine/WindowsName.h"

#include <qt_windows.h>

FolderIdentity WindowsIdentity::at(const QString &path, Of kind)
{
    const std::wstring name = WindowsName::of(path);
    const HANDLE handle =
        ::CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return {};
    BY_HANDLE_FILE_INFORMATION information;
    const bool told = ::GetFileInformationByHandle(handle, &information) != 0;
    ::CloseHandle(handle);
    if (!told)
        return {};
    const bool folder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (folder != (kind == Of::Folder))
        return {};
    return {information.dwVolumeSerialNumber,
            (static_cast<quint64>(information.nFileIndexHigh) << 32) | information.nFileIndexLow};
}
