#include "engine/ByteSearch.h"

#include "engine/ByteFrequency.h"

#include <utility>

namespace {

// Several needles take turns on pieces of this many bytes, so that a piece is in
// the first-level cache for all but the first of them, and a needle that is
// nowhere does not read the whole buffer before another one's hit is found.
constexpr qint64 PieceSize = 8192;

SearchKernels::BytePair rarestPair(const BytePattern &pattern)
{
    int first = -1;
    int second = -1;
    int firstFrequency = 0;
    int secondFrequency = 0;
    for (int i = 0; i < pattern.value.size(); ++i) {
        const int frequency = ByteFrequency::ofMasked(static_cast<uchar>(pattern.mask.at(i)),
                                                      static_cast<uchar>(pattern.value.at(i)));
        if (first < 0 || frequency < firstFrequency) {
            second = std::exchange(first, i);
            secondFrequency = std::exchange(firstFrequency, frequency);
        } else if (second < 0 || frequency < secondFrequency) {
            second = i;
            secondFrequency = frequency;
        }
    }
    const auto place = [&pattern](int i) {
        return SearchKernels::BytePair::Place{i, static_cast<uchar>(pattern.mask.at(i)),
                                              static_cast<uchar>(pattern.value.at(i))};
    };
    return {place(first), place(second < 0 ? first : second)};
}

} // namespace

ByteSearch::ByteSearch(const QVector<BytePattern> &patterns, const SearchKernels::Table &kernels)
    : m_kernels(&kernels)
{
    if (patterns.size() > kMostNeedles) {
        m_table = BytePatternTable(patterns);
        return;
    }
    for (const BytePattern &pattern : patterns)
        m_needles.append({pattern, rarestPair(pattern)});
}

qint64 ByteSearch::indexIn(const char *bytes, qint64 size, qint64 from) const
{
    if (!m_table.isEmpty())
        return m_table.indexIn(bytes, size, from);
    const auto *data = reinterpret_cast<const uchar *>(bytes);
    const qint64 piece = m_needles.size() > 1 ? PieceSize : size;
    for (qint64 start = from; start < size && !isEmpty(); start += piece) {
        qint64 end = qMin(start + piece, size);
        qint64 found = -1;
        for (const Needle &needle : m_needles) {
            const qint64 last = qMin(end, size - needle.pattern.value.size() + 1);
            const qint64 at = find(needle, data, start, last);
            if (at < last)
                found = end = at;
        }
        if (found >= 0)
            return found;
    }
    return -1;
}

qint64 ByteSearch::find(const Needle &needle, const uchar *bytes, qint64 from, qint64 end) const
{
    qint64 at = from;
    while (at < end) {
        at = m_kernels->findBytePair(bytes, at, end, needle.pair);
        if (at < end && at % needle.pattern.alignment == 0
            && needle.pattern.matchesAt(reinterpret_cast<const char *>(bytes + at)))
            return at;
        ++at;
    }
    return end;
}
