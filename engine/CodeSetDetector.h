#pragma once

#include <QtGlobal>

/// Guesses the code set and the line end of a text from the first bytes of its
/// file. The rule, in order of precedence:
///
///  1. Four bytes or fewer are Shift-JIS.
///  2. A byte-order mark decides (FF FE 00 00 is UTF-32LE, not UTF-16LE).
///  3. ASCII with an escape is ISO 2022-JP.
///  4. With a zero byte: the first of UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE
///     that reads as plausible text.
///  5. ASCII is UTF-8 with LF line ends and Shift-JIS with others; this is also
///     the answer ("fall-back") where what follows does not say better.
///  6. Short samples (up to detectSize bytes) without LF line ends and without
///     the bytes 80, FD, FE and FF: the fall-back.
///  7. Neither 7F to 8D nor 90 to A0: EUC-JP.
///  8. Well-formed UTF-8 (in its old, wide form of up to six bytes; the last
///     sequence may be cut off by the end of the sample): UTF-8.
///  9. The fall-back.
///
/// All functions here may run on any thread.

/// Returns a CodeSet::Number from 1 to 8, never Default. *lineEnd becomes a
/// CodeSet::LineEnd, *bom whether a byte-order mark was recognised; either
/// pointer may be null. size and detectSize are in bytes, size is not
/// negative.
int detectCodeSet(const char *sample, int size, int *lineEnd, bool *bom, int detectSize);

/// True for values that no plausible text holds: outside the blocks in use, or
/// negative. Surrogates and the private use area count as assigned.
bool isUnassignedCodePoint(qint32 value);

/// True when the sample holds four consecutive zero bytes.
bool isBinarySample(const char *sample, int size);
