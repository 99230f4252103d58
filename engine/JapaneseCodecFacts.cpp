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
        if (ByteScan::asciiOf(&character, 1) == ByteScan::Ascii::AllSteady)
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

bool findKeepsSteadyAscii(int codeSet)
{
    const QTextCodec *codec = CodeSet::codec(codeSet);
    if (codec == nullptr)
        return false;
    const QByteArray pairs = allSteadyPairs();
    return codec->toUnicode(pairs) == QLatin1String(pairs.constData(), pairs.size());
}

// Every beginning of a character, one or two bytes long, whole or broken, each
// followed by ending.
QByteArray allBeginnings(const QByteArray &ending)
{
    constexpr int kBeginnings = 0x80 * 0x100;
    QByteArray bytes;
    // At once: an appended expression asks for its own size, no more, each time.
    bytes.reserve(kBeginnings * (2 + ending.size()));
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
bool findLineFeedsAreBytes(int codeSet)
{
    const QTextCodec *codec = CodeSet::codec(codeSet);
    if (codec == nullptr)
        return false;
    const QByteArray broken = allBeginnings("\n");
    const QByteArray other = allBeginnings(QByteArray());
    const QLatin1Char lineFeed('\n');
    return codec->toUnicode(broken).count(lineFeed) == broken.count('\n')
        && !codec->toUnicode(other).contains(lineFeed);
}

// Asked once for each code set, by whichever thread comes first.
template <int codeSet> bool steadyAsciiFact()
{
    static const bool fact = findKeepsSteadyAscii(codeSet);
    return fact;
}

template <int codeSet> bool lineFeedFact()
{
    static const bool fact = findLineFeedsAreBytes(codeSet);
    return fact;
}

} // namespace

bool JapaneseCodecFacts::keepsSteadyAscii(int codeSet)
{
    switch (codeSet) {
    case CodeSet::ShiftJis:
        return steadyAsciiFact<CodeSet::ShiftJis>();
    case CodeSet::EucJp:
        return steadyAsciiFact<CodeSet::EucJp>();
    case CodeSet::Iso2022Jp:
        return steadyAsciiFact<CodeSet::Iso2022Jp>();
    default:
        return false;
    }
}

bool JapaneseCodecFacts::lineFeedsAreBytes(int codeSet)
{
    switch (codeSet) {
    case CodeSet::ShiftJis:
        return lineFeedFact<CodeSet::ShiftJis>();
    case CodeSet::EucJp:
        return lineFeedFact<CodeSet::EucJp>();
    default:
        return false;
    }
}
