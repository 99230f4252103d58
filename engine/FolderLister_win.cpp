#include "engine/FolderLister.h"

#include "engine/WindowsAttributes.h"
#include "engine/WindowsName.h"

#include <qt_windows.h>

namespace {

/// Unknown when there is no folder at path or it cannot be asked.
FolderIdentity identityOf(const QString &path)
{
    const std::wstring name = WindowsName::of(path);
    const HANDLE handle =
        ::CreateFileW(name.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return {};
    BY_HANDLE_FILE_INFORMATION information;
    const bool known = ::GetFileInformationByHandle(handle, &information)
        && (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    ::CloseHandle(handle);
    if (!known)
        return {};
    return {information.dwVolumeSerialNumber,
            (static_cast<quint64>(information.nFileIndexHigh) << 32) | information.nFileIndexLow};
}

FolderEntry::Kind kindOf(const WIN32_FIND_DATAW &data)
{
    return WindowsAttributes::kindOf(data.dwFileAttributes, data.dwReserved0);
}

// Without the slash a file's own name would be the start of the pattern.
std::wstring patternFor(const QString &folder)
{
    const QLatin1String all(folder.endsWith(QLatin1Char('/')) ? "*.*" : "/*.*");
    return WindowsName::of(folder + all);
}

} // namespace

QVector<FolderEntry> NativeFolderLister::list(const QString &folder, const Claim &claim,
                                              const KeepGoing &keepGoing) const
{
    QVector<FolderEntry> entries;
    if (folder.isEmpty())
        return entries;
    WIN32_FIND_DATAW data;
    const HANDLE search = ::FindFirstFileW(patternFor(folder).c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return entries;
    if (!claim(identityOf(folder))) {
        ::FindClose(search);
        return entries;
    }
    do {
        const QString name = QString::fromWCharArray(data.cFileName);
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        entries.append({name, kindOf(data)});
        if (!keepGoing())
            break;
    } while (::FindNextFileW(search, &data));
    ::FindClose(search);
    return entries;
}

bool NativeFolderLister::identify(const QString &path, FolderIdentity *identity) const
{
    const FolderIdentity found = identityOf(path);
    if (found.isKnown())
        *identity = found;
    return found.isKnown();
}
