#include "engine/ByteScan.h"

namespace {

// How much is looked at before asking whether the answer is already known.
constexpr int kFlagBlock = 4096;

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

} // namespace

ByteScan::Summary ByteScan::summarise(const char *bytes, int size)
{
    return SearchKernels::best().summarise(reinterpret_cast<const uchar *>(bytes), size);
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
    return SearchKernels::best().count(reinterpret_cast<const uchar *>(bytes), size, uchar(wanted));
}
