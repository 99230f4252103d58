#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The optional style sheet "sarvify.qss" in the application directory, which
/// ends in "/".
namespace StyleSheet {

/// The sheet to apply; empty when the file cannot be read; nothing when there
/// is no file, and then no sheet is to be set.
std::optional<QString> read(const QString &appDir);

/// The text of a sheet's bytes: UTF-8 up to the first NUL, with the paths after
/// "url(" (in this case of letters) made to start from appDir.
QString fromBytes(const QByteArray &bytes, const QString &appDir);

} // namespace StyleSheet
