#include "tests/engine_support/PlainDetection.h"

#include "engine/CodeSetDetector.h"

#include <initializer_list>

Detected Detected::byEngine(const QByteArray &sample, int detectSize)
{
    Detected result;
    result.bom = true;
    result.codeSet =
        detectCodeSet(sample.constData(), sample.size(), &result.lineEnd, &result.bom, detectSize);
    return result;
}

const std::array<PlainDetection::Range, 32> PlainDetection::kAssigned = {{
    {0x0, 0x83F},       {0x900, 0x1AAF},    {0x1B00, 0x1BBF},   {0x1C00, 0x1C7F},
    {0x1CD0, 0x2FDF},   {0x2FF0, 0xA9DF},   {0xAA00, 0xAADF},   {0xABC0, 0x101FF},
    {0x1027F, 0x102DF}, {0x10300, 0x1034F}, {0x10380, 0x103DF}, {0x10400, 0x104AF},
    {0x10800, 0x1085F}, {0x108FF, 0x1093F}, {0x10A00, 0x10A7F}, {0x10AFF, 0x10B7F},
    {0x10BFF, 0x10C4F}, {0x10E5F, 0x10E7F}, {0x1107F, 0x110CF}, {0x11FFF, 0x1247F},
    {0x12FFF, 0x1342F}, {0x1D000, 0x1D24F}, {0x1D300, 0x1D37F}, {0x1D400, 0x1D7FF},
    {0x1F000, 0x1F09F}, {0x1F0FF, 0x1F2FF}, {0x20000, 0x2A6DF}, {0x2A700, 0x2B73F},
    {0x2F800, 0x2FA1F}, {0xE0000, 0xE007F}, {0xE0100, 0xE01EF}, {0xF0000, 0x10FFFF},
}};

bool PlainDetection::isUnassigned(qint32 value)
{
    for (const Range &range : kAssigned) {
        if (value >= range.first && value <= range.last)
            return false;
    }
    return true;
}

namespace {

using PlainDetection::isUnassigned;

bool isUtf16(const QByteArray &b, bool bigEndian)
{
    quint32 score = 0;
    quint32 penalty = 0;
    bool previousZero = false;
    const int n = b.size();
    for (int k = 0; k < n / 2; ++k) {
        const int low = uchar(bigEndian ? b[2 * k + 1] : b[2 * k]);
        const int high = uchar(bigEndian ? b[2 * k] : b[2 * k + 1]);
        const int unit = high * 256 + low;
        if (unit == 0 || isUnassigned(unit))
            return false;
        if (unit < 128) {
            score += 4;
        } else if (low >= 32 && low <= 127 && high >= 32 && high <= 127) {
            score += 2;
            penalty += 1;
        } else if (unit >= 0xD800 && unit <= 0xDBFF) {
            penalty += 1;
        } else {
            score += 1;
        }
        if (previousZero && low == 0)
            penalty += 1;
        previousZero = low == 0;
    }
    return score - penalty > quint32(n / 2);
}

bool isUtf32(const QByteArray &b, bool bigEndian)
{
    int score = 0;
    for (int k = 0; k < b.size() / 4; ++k) {
        quint32 unit = 0;
        for (int i = 0; i < 4; ++i)
            unit += quint32(uchar(b[4 * k + i])) << (bigEndian ? 24 - 8 * i : 8 * i);
        if (isUnassigned(qint32(unit)))
            return false;
        score += unit < 128 ? 4 : 1;
    }
    return score > b.size() / 4;
}

bool isUtf8(const QByteArray &b)
{
    int expected = 1;
    bool lead = true;
    for (const char c : b) {
        const int byte = uchar(c);
        if (!lead) {
            if (byte < 0x80 || byte > 0xBF)
                return false;
            if (--expected == 0)
                lead = true;
            continue;
        }
        if (byte <= 0x7F)
            continue;
        if (byte <= 0xBF || byte >= 0xFE)
            return false;
        expected = byte <= 0xDF ? 1 : byte <= 0xEF ? 2 : byte <= 0xF7 ? 3 : byte <= 0xFB ? 4 : 5;
        lead = false;
    }
    return true;
}

bool startsWith(const QByteArray &b, std::initializer_list<int> mark)
{
    int at = 0;
    for (const int byte : mark) {
        if (uchar(b[at++]) != byte)
            return false;
    }
    return true;
}

int codeSetOfMark(const QByteArray &b)
{
    if (startsWith(b, {0xEF, 0xBB, 0xBF}))
        return 4;
    if (startsWith(b, {0x00, 0x00, 0xFE, 0xFF}))
        return 7;
    if (startsWith(b, {0xFF, 0xFE, 0x00, 0x00}))
        return 8;
    if (startsWith(b, {0xFE, 0xFF}))
        return 5;
    if (startsWith(b, {0xFF, 0xFE}))
        return 6;
    return -1;
}

struct Histogram {
    explicit Histogram(const QByteArray &b)
    {
        for (const char c : b) {
            ++count[uchar(c)];
            high = high || uchar(c) >= 128;
        }
    }

    bool any(int first, int last) const
    {
        for (int byte = first; byte <= last; ++byte) {
            if (count[size_t(byte)] != 0)
                return true;
        }
        return false;
    }

    std::array<int, 256> count = {};
    bool high = false;
};

} // namespace

Detected PlainDetection::detect(const QByteArray &b, int detectSize)
{
    Detected result{1, 2, false};
    if (b.size() <= 4)
        return result;
    const Histogram histogram(b);
    const int lf = histogram.count[0x0A];
    const int cr = histogram.count[0x0D];
    result.lineEnd = cr > 2 * lf ? 0 : lf > 2 * cr ? 1 : 2;
    const int fallBack = result.lineEnd == 1 ? 4 : 1;
    result.codeSet = codeSetOfMark(b);
    result.bom = result.codeSet != -1;
    if (result.bom)
        return result;
    result.codeSet = fallBack;
    if (!histogram.high && histogram.any(0x1B, 0x1B)) {
        result.codeSet = 3;
        return result;
    }
    if (histogram.any(0, 0)) {
        const int wide = isUtf16(b, false) ? 6
            : isUtf16(b, true)             ? 5
            : isUtf32(b, false)            ? 8
            : isUtf32(b, true)             ? 7
                                           : -1;
        if (wide != -1) {
            result.codeSet = wide;
            return result;
        }
    }
    const bool shortRule = b.size() <= detectSize && result.lineEnd != 1
        && !histogram.any(0xFD, 0xFF) && !histogram.any(0x80, 0x80);
    if (!histogram.high || shortRule)
        return result;
    if (!histogram.any(0x7F, 0x8D) && !histogram.any(0x90, 0xA0))
        result.codeSet = 2;
    else if (isUtf8(b))
        result.codeSet = 4;
    return result;
}
