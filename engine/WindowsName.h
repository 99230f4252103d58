#pragma once

#include <QString>

#include <string>

/// Paths as the Windows functions for files and folders take them. Windows only.
namespace WindowsName {

/// path with backslashes. An absolute path gets the long form ("\\?\C:\..."),
/// which has no limit at 260 characters and takes every name as it stands:
/// without it a dot or blank at the end of a name is lost, and "aux.txt" is a
/// device. The long form has no backslash at the end, but for a drive's own.
std::wstring of(const QString &path);

} // namespace WindowsName
