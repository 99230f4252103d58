#pragma once

/// What the toolkit's codec of a Japanese code set was found to do, by trying
/// it. The codecs differ between platforms (the toolkit's own, or those of
/// ICU), so a short cut that relies on such a fact asks here first.
struct JapaneseCodecFacts {
    /// Text that ByteScan::isSteadyAscii() accepts decodes to itself.
    bool keepsSteadyAscii = false;

    /// Decoded text, also of broken content, holds exactly one line feed for
    /// each byte 0A of the content, and no other.
    bool lineFeedsAreBytes = false;

    /// The facts for CodeSet::ShiftJis, EucJp or Iso2022Jp; none hold for any
    /// other number or a codec that the toolkit lacks. Found at the first call
    /// for the number. May be called from any thread.
    static const JapaneseCodecFacts &of(int codeSet);
};
