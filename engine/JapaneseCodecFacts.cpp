#include "engine/JapaneseCodecFacts.h"

#include "engine/ByteScan.h"
#include "engine/CodeSet.h"

#include <QString>
#include <QTextCodec>

namespace {

// Every steady character follows every other, and so meets every state that a
// character can leave behind it.
QByteArray allSteadyPairs()
{
    QByteArray steady;
    for (int byte = 0; byte < 0x80; ++byte) {
        const char character = char(byte);
        if (ByteScan::isSteadyAscii(&character, 1))
            steady += character;
    }
    QByteArray pairs;
    for (const char first : qAsConst(steady)) {
        for (const char second : qAsConst(steady)) {
            pairs += first;
            pairs += second;
        }
    }
    return pairs;
}

bool keepsSteadyAscii(const QTextCodec &codec)
{
    const QByteArray pairs = allSteadyPairs();
    return codec.toUnicode(pairs) == QLatin1String(pairs);
}

// Every beginning of a character, one or two bytes long, whole or broken, each
// followed by ending.
QByteArray allBeginnings(const QByteArray &ending)
{
    QByteArray bytes;
    for (int first = 0x80; first <= 0xFF; ++first) {
        bytes += char(first) + ending;
        for (int second = 0; second <= 0xFF; ++second) {
            if (second != '\n')
                bytes += char(first) + (char(second) + ending);
        }
    }
    return bytes;
}

// No character of Shift-JIS and EUC-JP is longer than three bytes, so a line
// feed byte meets a state that one or two bytes left behind it, or none. Each
// beginning follows a line feed that was taken as such, that is no state.
bool lineFeedsAreBytes(const QTextCodec &codec)
{
    const QByteArray broken = allBeginnings("\n");
    const QByteArray other = allBeginnings(QByteArray());
    const QLatin1Char lineFeed('\n');
    return codec.toUnicode(broken).count(lineFeed) == broken.count('\n')
        && !codec.toUnicode(other).contains(lineFeed);
}

JapaneseCodecFacts findOut(int codeSet)
{
    const QTextCodec *codec = CodeSet::codec(codeSet);
    if (codec == nullptr)
        return {};
    // In ISO 2022-JP any byte may stand inside two-byte mode, so its line
    // feeds have to be decoded.
    return {keepsSteadyAscii(*codec), codeSet != CodeSet::Iso2022Jp && lineFeedsAreBytes(*codec)};
}

} // namespace

const JapaneseCodecFacts &JapaneseCodecFacts::of(int codeSet)
{
    static const JapaneseCodecFacts none;
    switch (codeSet) {
    case CodeSet::ShiftJis: {
        static const JapaneseCodecFacts facts = findOut(codeSet);
        return facts;
    }
    case CodeSet::EucJp: {
        static const JapaneseCodecFacts facts = findOut(codeSet);
        return facts;
    }
    case CodeSet::Iso2022Jp: {
        static const JapaneseCodecFacts facts = findOut(codeSet);
        return facts;
    }
    default:
        return none;
    }
}
