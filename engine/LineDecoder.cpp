#include "engine/LineDecoder.h"

#include "engine/ByteScan.h"
#include "engine/CodeSet.h"
#include "engine/JapaneseCodecFacts.h"
#include "engine/JapaneseTable.h"
#include "engine/TextDecoder.h"

#include <QChar>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

bool areEightAscii(const uchar *bytes)
{
    constexpr quint64 kHighBits = Q_UINT64_C(0x8080808080808080);
    quint64 eight = 0;
    std::memcpy(&eight, bytes, sizeof eight);
    return (eight & kHighBits) == 0;
}

/// The character of a well-formed sequence of more than one byte at *next,
/// which goes behind it; 0 when there is none.
uint takeCharacter(const uchar **next, const uchar *end)
{
    const uchar lead = **next;
    const int length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || end - *next < length)
        return 0;
    uint character = lead & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i) {
        const uchar byte = (*next)[i];
        if ((byte & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (byte & 0x3FU);
    }
    const uint least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    if (character < least || character > QChar::LastValidCodePoint || QChar::isSurrogate(character))
        return 0;
    *next += length;
    return character;
}

/// A line feed ends whatever a broken sequence left behind, so a whole line of
/// well-formed sequences stands for itself. U+FEFF may be dropped as a mark.
bool decodeUtf8(const char *bytes, qint64 size, QString *line)
{
    constexpr qint64 kEight = 8;
    line->resize(int(size));
    auto *const begin = reinterpret_cast<ushort *>(line->data());
    ushort *out = begin;
    const auto *next = reinterpret_cast<const uchar *>(bytes);
    const uchar *const end = next + size;
    while (next != end) {
        if (end - next >= kEight && areEightAscii(next)) {
            for (qint64 i = 0; i < kEight; ++i)
                out[i] = next[i];
            next += kEight;
            out += kEight;
            continue;
        }
        if (*next < 0x80) {
            *out++ = *next++;
            continue;
        }
        const uint character = takeCharacter(&next, end);
        if (character == 0 || character == QChar::ByteOrderMark)
            return false;
        if (QChar::requiresSurrogates(character)) {
            *out++ = QChar::highSurrogate(character);
            *out++ = QChar::lowSurrogate(character);
        } else {
            *out++ = ushort(character);
        }
    }
    line->resize(int(out - begin));
    return true;
}

bool decodeUtf16(const char *bytes, qint64 size, bool bigEndian, QString *line)
{
    const qint64 units = size / 2;
    line->resize(int(units));
    if (bigEndian)
        qFromBigEndian<ushort>(bytes, units, line->data());
    else
        qFromLittleEndian<ushort>(bytes, units, line->data());
    return true;
}

void dropCarriageReturns(QString *line)
{
    const auto end = std::remove(line->begin(), line->end(), QLatin1Char('\r'));
    line->resize(int(end - line->begin()));
}

} // namespace

bool LineDecoder::begin(const char *bytes, qint64 size, int codeSet)
{
    m_codeSet = codeSet;
    m_table = nullptr;
    if (size > kLargestText || CodeSet::codec(codeSet) == nullptr)
        return false;
    switch (codeSet) {
    case CodeSet::Utf8:
    case CodeSet::Utf16Be:
    case CodeSet::Utf16Le:
        return true;
    case CodeSet::ShiftJis:
    case CodeSet::EucJp:
        // Other ASCII may be a shift, which holds beyond the end of its line.
        m_table = JapaneseTable::of(codeSet);
        return m_table != nullptr && JapaneseCodecFacts::lineFeedsAreBytes(codeSet)
            && ByteScan::asciiOf(bytes, size) != ByteScan::Ascii::Other;
    default:
        return false;
    }
}

bool LineDecoder::decode(const char *bytes, qint64 size, QString *line) const
{
    bool known = false;
    // In UTF-16 also as half of another character.
    const bool mayHaveReturn = std::memchr(bytes, '\r', size_t(size)) != nullptr;
    if (m_codeSet == CodeSet::Utf8)
        known = decodeUtf8(bytes, size, line);
    else if (m_table != nullptr)
        known = m_table->decode(bytes, int(size), line);
    else
        known = decodeUtf16(bytes, size, m_codeSet == CodeSet::Utf16Be, line);
    if (!known)
        return false;
    if (mayHaveReturn)
        dropCarriageReturns(line); // first: one may stand between the halves of a pair
    if (m_codeSet != CodeSet::Utf8)
        replaceLoneSurrogates(line);
    return true;
}
