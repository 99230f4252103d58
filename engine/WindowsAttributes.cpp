#include "engine/WindowsAttributes.h"

namespace {

// As in Windows' own headers; spelled out so that the rule builds everywhere.
constexpr quint32 kDirectory = 0x10;
constexpr quint32 kDevice = 0x40;
constexpr quint32 kReparsePoint = 0x400;
/// The bit of a reparse tag that says that the entry stands for another name.
constexpr quint32 kNameSurrogate = 0x20000000;

} // namespace

FolderEntry::Kind WindowsAttributes::kindOf(quint32 attributes, quint32 reparseTag)
{
    if ((attributes & kDirectory) == 0)
        return (attributes & kDevice) != 0 ? FolderEntry::Other : FolderEntry::File;
    const bool link = (attributes & kReparsePoint) != 0 && (reparseTag & kNameSurrogate) != 0;
    return link ? FolderEntry::FolderLink : FolderEntry::Folder;
}
