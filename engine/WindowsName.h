#pragma once

#include <QString>

/// Paths as the Windows functions for files and folders take them. Windows only.
namespace WindowsName {

/// path with backslashes; where it is too long for the usual form, its absolute
/// long form, which has no backslash at the end.
QString of(const QString &path);

/// For the functions' wide-character arguments; valid as long as name is.
inline const wchar_t *wide(const QString &name)
{
    return reinterpret_cast<const wchar_t *>(name.utf16());
}

} // namespace WindowsName
