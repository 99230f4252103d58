#pragma once

#include <QtGlobal>

namespace LoneCarriageReturn {

/// Whether a CR has another unit than LF behind it. Units of unitSize bytes,
/// 1, 2 or 4, begin at multiples of that.
bool isIn(const char *bytes, qint64 size, int unitSize, bool bigEndian);

} // namespace LoneCarriageReturn
