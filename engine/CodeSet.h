#pragma once

#include <QString>

class QTextCodec;

/// The numbered character sets in which files are read. The number is what
/// detection returns and what the settings store.
namespace CodeSet {

enum Number {
    Default = 0, ///< no codec is set: the toolkit's locale codec decodes
    ShiftJis = 1,
    EucJp = 2,
    Iso2022Jp = 3,
    Utf8 = 4,
    Utf16Be = 5,
    Utf16Le = 6,
    Utf32Be = 7,
    Utf32Le = 8
};
constexpr int kCount = 9;

/// Line-end numbers, as detection reports them and the settings store them.
enum LineEnd { Cr = 0, Lf = 1, CrLf = 2 };

/// The name shown to the user and asked of the toolkit; empty for a number
/// outside 0 to 8.
QString name(int number);

/// "CR", "LF" or "CRLF"; empty for a number outside 0 to 2.
QString lineEndName(int lineEnd);

/// The toolkit's codec; null for Default, for a number outside 1 to 8 and
/// where the toolkit lacks the codec: such files are decoded as Default. The
/// toolkit owns the codec. May be called from any thread; the codecs are
/// looked up once, at the first call, so whatever the environment must say
/// about Japanese codecs has to be said before that.
QTextCodec *codec(int number);

} // namespace CodeSet
