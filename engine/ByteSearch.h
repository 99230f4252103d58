#pragma once

#include "engine/BytePattern.h"
#include "engine/BytePatternTable.h"
#include "engine/SearchKernels.h"

#include <QVector>

/// Looks for one or several byte strings in a buffer: finds two of a pattern's
/// bytes, chosen for being rare, at their distance from each other with vectors,
/// and compares the whole pattern only there. More patterns than kMostNeedles are
/// looked for together (BytePatternTable).
///
/// Immutable; any number of threads may use one object.
class ByteSearch {
public:
    /// Beyond it one look at each byte takes less than a look for each pattern.
    static constexpr int kMostNeedles = 20;

    /// Finds nothing.
    ByteSearch() = default;
    explicit ByteSearch(const QVector<BytePattern> &patterns,
                        const SearchKernels::Table &kernels = SearchKernels::best());

    bool isEmpty() const { return m_needles.isEmpty() && m_table.isEmpty(); }

    /// The first position at or after from where one of the patterns stands
    /// whole, or -1. from is 0 or more; one past the end is allowed.
    qint64 indexIn(const char *bytes, qint64 size, qint64 from = 0) const;
    bool isIn(const char *bytes, qint64 size) const { return indexIn(bytes, size) >= 0; }

private:
    struct Needle {
        BytePattern pattern;
        SearchKernels::BytePair pair;
    };

    qint64 find(const Needle &needle, const uchar *bytes, qint64 from, qint64 end) const;

    QVector<Needle> m_needles;
    BytePatternTable m_table; // of the patterns in the place of needles
    const SearchKernels::Table *m_kernels = nullptr;
};
