#pragma once

#include <QtGlobal>

namespace ByteOrderMark {

/// Where the content of a file begins with a byte-order mark, which overrides
/// the code set that it was found to be in, as it does for the decoder: goes
/// behind it and sets *codeSet to the mark's.
void skip(const char **bytes, qint64 *size, int *codeSet);

} // namespace ByteOrderMark
