#pragma once

#include <QByteArray>
#include <QStringView>

namespace Utf8Text {

/// Appends text in UTF-8 to bytes, as QString::toUtf8() gives it. Most of what is
/// printed is ASCII, which takes one pass and no string of its own.
void append(QByteArray *bytes, QStringView text);

} // namespace Utf8Text
