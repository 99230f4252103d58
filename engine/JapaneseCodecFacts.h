#pragma once

/// What the toolkit's codec of a Japanese code set was found to do, by trying
/// it. The codecs differ between platforms (the toolkit's own, or those of
/// ICU), so a short cut that relies on such a fact asks here first.
///
/// A fact is found at the first question about the code set, which takes up to
/// some milliseconds. It is never claimed for a codec that the toolkit lacks.
/// May be called from any thread.
namespace JapaneseCodecFacts {

/// Text that is all steady ASCII (see ByteScan) decodes to itself. Asked of
/// CodeSet::ShiftJis, EucJp and Iso2022Jp; false for any other number.
bool keepsSteadyAscii(int codeSet);

/// Decoded text, also of broken content, holds exactly one line feed for each
/// byte 0A of the content, and no other. Asked of CodeSet::ShiftJis and EucJp;
/// false for any other number: in ISO 2022-JP a line feed may stand inside
/// two-byte mode.
bool lineFeedsAreBytes(int codeSet);

} // namespace JapaneseCodecFacts
