#include "engine/ByteScan.h"

namespace {

// A whole number of vectors, and no more bytes than a counter of one byte can
// count: with such counters one instruction counts in a whole vector.
constexpr int kCountBlock = 240;
// How much is looked at before asking whether the answer is already known.
constexpr int kFlagBlock = 4096;

inline void summariseBlock(const uchar *bytes, int size, ByteScan::Summary *summary)
{
    uchar joined = 0;
    uchar zeros = 0;
    uchar escapes = 0;
    uchar lineFeeds = 0;
    uchar carriageReturns = 0;
    for (int i = 0; i < size; ++i) {
        const uchar byte = bytes[i];
        joined = uchar(joined | byte);
        zeros = uchar(zeros | uchar(byte == 0));
        escapes = uchar(escapes | uchar(byte == 0x1B));
        lineFeeds = uchar(lineFeeds + uchar(byte == '\n'));
        carriageReturns = uchar(carriageReturns + uchar(byte == '\r'));
    }
    summary->high |= joined >= 0x80;
    summary->zero |= zeros != 0;
    summary->escape |= escapes != 0;
    summary->lineFeeds += lineFeeds;
    summary->carriageReturns += carriageReturns;
}

struct Unsteady {
    uchar high = 0;
    uchar ascii = 0;
};

inline void findUnsteady(const uchar *bytes, int size, Unsteady *unsteady)
{
    uchar high = 0;
    uchar ascii = 0;
    for (int i = 0; i < size; ++i) {
        const uchar byte = bytes[i];
        const uchar shift = uchar(uchar(byte - 0x0E) <= 1);
        const uchar exchanged = uchar(uchar(byte - 0x1A) <= 2); // the escape 1B among them
        const uchar end = uchar(uchar(byte == 0) | uchar(byte == 0x7F));
        ascii = uchar(ascii | end | shift | exchanged);
        high = uchar(high | byte);
    }
    unsteady->high = uchar(unsteady->high | (high & 0x80));
    unsteady->ascii = uchar(unsteady->ascii | ascii);
}

inline int countBlock(const uchar *bytes, int size, uchar wanted)
{
    uchar found = 0;
    for (int i = 0; i < size; ++i)
        found = uchar(found + uchar(bytes[i] == wanted));
    return found;
}

} // namespace

ByteScan::Summary ByteScan::summarise(const char *bytes, int size)
{
    const auto *next = reinterpret_cast<const uchar *>(bytes);
    Summary summary;
    for (; size >= kCountBlock; size -= kCountBlock, next += kCountBlock)
        summariseBlock(next, kCountBlock, &summary);
    summariseBlock(next, size, &summary);
    return summary;
}

ByteScan::Ascii ByteScan::asciiOf(const char *bytes, qint64 size)
{
    const auto *next = reinterpret_cast<const uchar *>(bytes);
    Unsteady unsteady;
    for (; size >= kFlagBlock; size -= kFlagBlock, next += kFlagBlock) {
        findUnsteady(next, kFlagBlock, &unsteady);
        if (unsteady.ascii != 0)
            return Ascii::Other;
    }
    findUnsteady(next, int(size), &unsteady);
    if (unsteady.ascii != 0)
        return Ascii::Other;
    return unsteady.high != 0 ? Ascii::SteadyAndHigh : Ascii::AllSteady;
}

qint64 ByteScan::count(const char *bytes, qint64 size, char wanted)
{
    const auto *next = reinterpret_cast<const uchar *>(bytes);
    qint64 found = 0;
    for (; size >= kCountBlock; size -= kCountBlock, next += kCountBlock)
        found += countBlock(next, kCountBlock, uchar(wanted));
    return found + countBlock(next, int(size), uchar(wanted));
}
