#pragma once

#include <QString>

/// The orders of --sort; the same on every locale.
namespace PathOrder {

/// By the bytes of the path, as "LC_ALL=C sort" does.
bool byBytes(const QString &a, const QString &b);

/// By folder, then by name: the files of one folder stand together, so that a
/// line count has one subtotal for each folder.
bool byFolder(const QString &a, const QString &b);

} // namespace PathOrder
