#include "engine/FolderLister.h"

#include "engine/WindowsAttributes.h"
#include "engine/WindowsIdentity.h"
#include "engine/WindowsName.h"

#include <qt_windows.h>

namespace {

FolderIdentity identityOf(const QString &path)
{
    return WindowsIdentity::at(path, WindowsIdentity::Of::Folder);
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
