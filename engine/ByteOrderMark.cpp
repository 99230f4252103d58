#include "engine/ByteOrderMark.h"

#include "engine/CodeSet.h"

#include <cstring>

namespace {

struct Mark {
    const char *bytes;
    int size;
    CodeSet::Number codeSet;
};

// In the order in which the decoder looks for them.
constexpr Mark kMarks[] = {
    {"\x00\x00\xFE\xFF", 4, CodeSet::Utf32Be}, {"\xFF\xFE\x00\x00", 4, CodeSet::Utf32Le},
    {"\xFE\xFF", 2, CodeSet::Utf16Be},         {"\xFF\xFE", 2, CodeSet::Utf16Le},
    {"\xEF\xBB\xBF", 3, CodeSet::Utf8},
};

} // namespace

void ByteOrderMark::skip(const char **bytes, qint64 *size, int *codeSet)
{
    for (const Mark &mark : kMarks) {
        if (*size < mark.size
            || std::memcmp(*bytes, mark.bytes, static_cast<size_t>(mark.size)) != 0)
            continue;
        *bytes += mark.size;
        *size -= mark.size;
        *codeSet = mark.codeSet;
        return;
    }
}
