#include "engine/FolderLister.h"

#include <windows.h>

namespace {

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

bool identityOf(const QString &path, FolderIdentity *identity)
{
    const HANDLE handle =
        ::CreateFileW(wide(path), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION information;
    const bool known = ::GetFileInformationByHandle(handle, &information)
        && (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    ::CloseHandle(handle);
    if (!known)
        return false;
    identity->device = information.dwVolumeSerialNumber;
    identity->file =
        (static_cast<quint64>(information.nFileIndexHigh) << 32) | information.nFileIndexLow;
    return true;
}

FolderEntry::Kind kindOf(const WIN32_FIND_DATAW &data)
{
    const bool folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!folder)
        return (data.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) != 0 ? FolderEntry::Other
                                                                    : FolderEntry::File;
    return (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? FolderEntry::FolderLink
                                                                       : FolderEntry::Folder;
}

} // namespace

QVector<FolderEntry> NativeFolderLister::list(const QString &folder, const Claim &claim,
                                              const KeepGoing &keepGoing) const
{
    QVector<FolderEntry> entries;
    FolderIdentity identity;
    if (!identityOf(folder, &identity) || !claim(identity))
        return entries;
    QString pattern = folder + QStringLiteral("*.*");
    pattern.replace(QLatin1Char('/'), QLatin1Char('\\'));
    WIN32_FIND_DATAW data;
    const HANDLE search = ::FindFirstFileW(wide(pattern), &data);
    if (search == INVALID_HANDLE_VALUE)
        return entries;
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
    return identityOf(path, identity);
}
