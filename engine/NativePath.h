#pragma once

#include <QByteArray>
#include <QString>

/// File names as the platform holds them and as the program shows them.
///
/// A Unix file name is any bytes but "/" and NUL. One that is valid UTF-8 is
/// shown as that text; each byte that is not part of a valid sequence becomes
/// the lone low surrogate U+DC00 + byte (U+DC80..U+DCFF), which no valid name
/// holds, so the way back gives the same bytes and the file can still be
/// searched and opened. On Windows names are UTF-16 already and both functions
/// only convert to and from UTF-8.
///
/// All functions are re-entrant.
namespace NativePath {

QString fromNative(const char *name, int size);
QString fromNative(const QByteArray &name);

/// The bytes to hand to the platform; the reverse of fromNative.
QByteArray toNative(const QString &path);

} // namespace NativePath
