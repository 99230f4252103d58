#include "engine/CodeSetDetector.h"

#include "engine/ByteScan.h"
#include "engine/CodeSet.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

struct CodeRange {
    qint32 first;
    qint32 last;
};

// In ascending order. Nine ranges begin one below a block (1027F, 108FF, 10AFF,
// 10BFF, 10E5F, 1107F, 11FFF, 12FFF, 1F0FF); that is how files have always been
// judged, so it stays.
constexpr std::array<CodeRange, 32> kAssignedRanges = {{
    {0x0000, 0x083F},   {0x0900, 0x1AAF},   {0x1B00, 0x1BBF},   {0x1C00, 0x1C7F},
    {0x1CD0, 0x2FDF},   {0x2FF0, 0xA9DF},   {0xAA00, 0xAADF},   {0xABC0, 0x101FF},
    {0x1027F, 0x102DF}, {0x10300, 0x1034F}, {0x10380, 0x103DF}, {0x10400, 0x104AF},
    {0x10800, 0x1085F}, {0x108FF, 0x1093F}, {0x10A00, 0x10A7F}, {0x10AFF, 0x10B7F},
    {0x10BFF, 0x10C4F}, {0x10E5F, 0x10E7F}, {0x1107F, 0x110CF}, {0x11FFF, 0x1247F},
    {0x12FFF, 0x1342F}, {0x1D000, 0x1D24F}, {0x1D300, 0x1D37F}, {0x1D400, 0x1D7FF},
    {0x1F000, 0x1F09F}, {0x1F0FF, 0x1F2FF}, {0x20000, 0x2A6DF}, {0x2A700, 0x2B73F},
    {0x2F800, 0x2FA1F}, {0xE0000, 0xE007F}, {0xE0100, 0xE01EF}, {0xF0000, 0x10FFFF},
}};

constexpr bool isInAssignedRange(qint32 value)
{
    for (const CodeRange &range : kAssignedRanges) {
        if (value >= range.first && value <= range.last)
            return true;
    }
    return false;
}

// In the basic plane every range begins and ends with a row of 16 values. A
// UTF-16 sample asks for two thousand of them, which a table answers at once.
constexpr int kRowShift = 4;
constexpr size_t kBasicRows = 0x10000 >> kRowShift;

constexpr std::array<bool, kBasicRows> assignedRows()
{
    std::array<bool, kBasicRows> rows = {};
    for (size_t row = 0; row < kBasicRows; ++row)
        rows[row] = isInAssignedRange(qint32(row << kRowShift));
    return rows;
}

constexpr std::array<bool, kBasicRows> kAssignedRows = assignedRows();

constexpr bool rowsAreWhole()
{
    for (size_t row = 0; row < kBasicRows; ++row) {
        if (isInAssignedRange(qint32((row << kRowShift) + 15)) != kAssignedRows[row])
            return false;
    }
    return true;
}
static_assert(rowsAreWhole(), "a range that ends inside a row needs another table");

/// unit is in the basic plane.
inline bool isUnassignedUnit(quint32 unit)
{
    return !kAssignedRows[unit >> kRowShift];
}

constexpr int kNoDecision = -1;
constexpr int kShortestSample = 5;

enum class ByteOrder { Little, Big };

int lineEndOf(const ByteScan::Summary &summary)
{
    const qint64 lineFeeds = summary.lineFeeds;
    const qint64 carriageReturns = summary.carriageReturns;
    if (carriageReturns > 2 * lineFeeds)
        return CodeSet::Cr;
    if (lineFeeds > 2 * carriageReturns)
        return CodeSet::Lf;
    return CodeSet::CrLf;
}

// At least four bytes are needed.
int codeSetOfMark(const char *sample)
{
    if (std::memcmp(sample, "\xEF\xBB\xBF", 3) == 0)
        return CodeSet::Utf8;
    if (std::memcmp(sample, "\x00\x00\xFE\xFF", 4) == 0)
        return CodeSet::Utf32Be;
    if (std::memcmp(sample, "\xFF\xFE\x00\x00", 4) == 0)
        return CodeSet::Utf32Le;
    if (std::memcmp(sample, "\xFE\xFF", 2) == 0)
        return CodeSet::Utf16Be;
    if (std::memcmp(sample, "\xFF\xFE", 2) == 0)
        return CodeSet::Utf16Le;
    return kNoDecision;
}

bool isPrintableRange(quint32 byte)
{
    return byte >= 32 && byte <= 127;
}

// How much a text in two-byte units looks like one.
class Utf16Score {
public:
    void add(quint32 low, quint32 high)
    {
        const quint32 unit = high * 256 + low;
        if (unit < 128) {
            m_score += 4;
        } else if (isPrintableRange(low) && isPrintableRange(high)) {
            // Two ASCII characters read as one unit look like this.
            m_score += 2;
            m_penalty += 1;
        } else if (unit >= 0xD800 && unit <= 0xDBFF) {
            m_penalty += 1;
        } else {
            m_score += 1;
        }
        const bool lowIsZero = low == 0;
        if (m_previousLowWasZero && lowIsZero)
            m_penalty += 1;
        m_previousLowWasZero = lowIsZero;
    }

    // Unsigned on purpose: a penalty above the score counts as a match too.
    quint32 difference() const { return m_score - m_penalty; }

private:
    quint32 m_score = 0;
    quint32 m_penalty = 0;
    bool m_previousLowWasZero = false;
};

bool looksLikeUtf16(const uchar *sample, int size, ByteOrder order)
{
    const int lowAt = order == ByteOrder::Little ? 0 : 1;
    Utf16Score score;
    for (int i = 0; i + 1 < size; i += 2) {
        const quint32 low = sample[i + lowAt];
        const quint32 high = sample[i + 1 - lowAt];
        const quint32 unit = high * 256 + low;
        if (unit == 0 || isUnassignedUnit(unit))
            return false;
        score.add(low, high);
    }
    return score.difference() > quint32(size / 2);
}

qint32 unitOfFour(const uchar *bytes, ByteOrder order)
{
    quint32 unit = 0;
    for (int i = 0; i < 4; ++i)
        unit = unit * 256 + bytes[order == ByteOrder::Big ? i : 3 - i];
    return qint32(unit);
}

bool looksLikeUtf32(const uchar *sample, int size, ByteOrder order)
{
    quint32 score = 0;
    for (int i = 0; i + 3 < size; i += 4) {
        const qint32 unit = unitOfFour(sample + i, order);
        if (isUnassignedCodePoint(unit))
            return false;
        score += unit < 128 ? 4 : 1;
    }
    return score > quint32(size / 4);
}

int codeSetOfWideText(const uchar *sample, int size)
{
    if (looksLikeUtf16(sample, size, ByteOrder::Little))
        return CodeSet::Utf16Le;
    if (looksLikeUtf16(sample, size, ByteOrder::Big))
        return CodeSet::Utf16Be;
    if (looksLikeUtf32(sample, size, ByteOrder::Little))
        return CodeSet::Utf32Le;
    if (looksLikeUtf32(sample, size, ByteOrder::Big))
        return CodeSet::Utf32Be;
    return kNoDecision;
}

// Which of the bytes that tell the Japanese sets apart occur.
struct HighBytes {
    bool neverInShiftJis = false; ///< 80, FD, FE, FF
    bool neverInEucJp = false; ///< 7F to 8D, 90 to A0; 8E and 8F are single shifts
};

HighBytes highBytesOf(const uchar *sample, int size)
{
    uchar notShiftJis = 0;
    uchar notEucJp = 0;
    for (int i = 0; i < size; ++i) {
        const uchar byte = sample[i];
        const uchar below8E = uchar(uchar(byte - 0x7F) <= 0x8D - 0x7F);
        const uchar above8F = uchar(uchar(byte - 0x90) <= 0xA0 - 0x90);
        notShiftJis = uchar(notShiftJis | uchar(byte == 0x80) | uchar(byte >= 0xFD));
        notEucJp = uchar(notEucJp | below8E | above8F);
    }
    return {notShiftJis != 0, notEucJp != 0};
}

// Bytes that must follow a lead byte; -1 for one that leads nothing.
int continuationBytes(uchar lead)
{
    if (lead < 0x80)
        return 0;
    if (lead < 0xC0)
        return -1;
    if (lead < 0xE0)
        return 1;
    if (lead < 0xF0)
        return 2;
    if (lead < 0xF8)
        return 3;
    if (lead < 0xFC)
        return 4;
    return lead < 0xFE ? 5 : -1;
}

int skipAscii(const uchar *sample, int from, int size)
{
    constexpr quint64 kHighBits = Q_UINT64_C(0x8080808080808080);
    quint64 eightBytes = 0;
    while (size - from >= int(sizeof eightBytes)) {
        std::memcpy(&eightBytes, sample + from, sizeof eightBytes);
        if ((eightBytes & kHighBits) != 0)
            break;
        from += int(sizeof eightBytes);
    }
    while (from < size && sample[from] < 0x80)
        ++from;
    return from;
}

bool isWellFormedUtf8(const uchar *sample, int size)
{
    int next = skipAscii(sample, 0, size);
    while (next < size) {
        const int expected = continuationBytes(sample[next++]);
        if (expected < 0)
            return false;
        const int end = std::min(next + expected, size);
        for (; next < end; ++next) {
            if ((sample[next] & 0xC0) != 0x80)
                return false;
        }
        next = skipAscii(sample, next, size);
    }
    return true;
}

// For samples with a byte of 128 or above.
int codeSetOfHighText(const uchar *sample, int size, int lineEnd, int fallBack, int detectSize)
{
    const HighBytes present = highBytesOf(sample, size);
    if (size <= detectSize && lineEnd != CodeSet::Lf && !present.neverInShiftJis)
        return fallBack;
    if (!present.neverInEucJp)
        return CodeSet::EucJp;
    return isWellFormedUtf8(sample, size) ? int(CodeSet::Utf8) : fallBack;
}

int codeSetWithoutMark(const uchar *sample, int size, const ByteScan::Summary &summary, int lineEnd,
                       int detectSize)
{
    if (!summary.high && summary.escape)
        return CodeSet::Iso2022Jp;
    if (summary.zero) {
        const int wide = codeSetOfWideText(sample, size);
        if (wide != kNoDecision)
            return wide;
    }
    const int fallBack = lineEnd == CodeSet::Lf ? CodeSet::Utf8 : CodeSet::ShiftJis;
    if (!summary.high)
        return fallBack;
    return codeSetOfHighText(sample, size, lineEnd, fallBack, detectSize);
}

void store(int lineEnd, bool bom, int *lineEndOut, bool *bomOut)
{
    if (lineEndOut != nullptr)
        *lineEndOut = lineEnd;
    if (bomOut != nullptr)
        *bomOut = bom;
}

} // namespace

int detectCodeSet(const char *sample, int size, int *lineEnd, bool *bom, int detectSize)
{
    if (size < kShortestSample) {
        store(CodeSet::CrLf, false, lineEnd, bom);
        return CodeSet::ShiftJis;
    }
    const ByteScan::Summary summary = ByteScan::summarise(sample, size);
    const int foundLineEnd = lineEndOf(summary);
    const int marked = codeSetOfMark(sample);
    store(foundLineEnd, marked != kNoDecision, lineEnd, bom);
    if (marked != kNoDecision)
        return marked;
    return codeSetWithoutMark(reinterpret_cast<const uchar *>(sample), size, summary, foundLineEnd,
                              detectSize);
}

bool isUnassignedCodePoint(qint32 value)
{
    const bool basic = value >= 0 && value <= 0xFFFF;
    return basic ? isUnassignedUnit(quint32(value)) : !isInAssignedRange(value);
}

bool isBinarySample(const char *sample, int size)
{
    constexpr int kBinaryZeros = 4;
    if (size < kBinaryZeros)
        return false;
    const auto *next = static_cast<const char *>(std::memchr(sample, 0, size_t(size)));
    if (next == nullptr)
        return false;
    // Texts of wide units are full of zero bytes, so no branch looks for the next.
    uchar found = 0;
    for (const char *const end = sample + size - (kBinaryZeros - 1); next < end; ++next)
        found = uchar(found | uchar((next[0] | next[1] | next[2] | next[3]) == 0));
    return found != 0;
}
