#include "engine/LoneCarriageReturn.h"

#include <cstddef>
#include <cstring>

namespace {

bool isUnit(const char *at, char16_t value, int unitSize, bool bigEndian)
{
    for (int i = 0; i < unitSize; ++i) {
        const int shift = 8 * (bigEndian ? unitSize - 1 - i : i);
        const int expected = shift < 16 ? (value >> shift) & 0xFF : 0;
        if (static_cast<uchar>(at[i]) != expected)
            return false;
    }
    return true;
}

} // namespace

bool LoneCarriageReturn::isIn(const char *bytes, qint64 size, int unitSize, bool bigEndian)
{
    const char *const end = bytes + size;
    const char *at = bytes;
    while (at != end) {
        at = static_cast<const char *>(std::memchr(at, '\r', static_cast<size_t>(end - at)));
        if (at == nullptr)
            return false;
        const char *const unit = at - (at - bytes) % unitSize;
        if (end - unit >= std::ptrdiff_t(2) * unitSize && isUnit(unit, '\r', unitSize, bigEndian)
            && !isUnit(unit + unitSize, '\n', unitSize, bigEndian))
            return true;
        ++at;
    }
    return false;
}
