#pragma once

#include <QByteArray>
#include <QStringView>

namespace Utf8Text {

/// Appends text in UTF-8 to bytes, as QString::toUtf8() gives it. Most of what is
/// printed is ASCII, which takes one pass and no string of its own. Throws
/// std::bad_alloc when bytes would hold more than an array can, some 2 GiB.
void append(QByteArray *bytes, QStringView text);

} // namespace Utf8Text
