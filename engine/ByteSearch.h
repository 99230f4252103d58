#pragma once

#include "engine/SearchKernels.h"

#include <QByteArray>
#include <QVector>

/// One byte string to look for: a byte b agrees with place i when
/// (b & mask[i]) == value[i]. Both arrays have the same length, at least 1.
struct BytePattern {
    QByteArray value;
    QByteArray mask;
    /// Only positions that are a multiple of this count; counted from the start
    /// of the buffer.
    int alignment = 1;

    static BytePattern exact(const QByteArray &bytes);
    /// Ignores the case of the ASCII letters and of nothing else.
    static BytePattern asciiCaseInsensitive(const QByteArray &bytes);
};

/// Looks for one or several byte strings in a buffer: finds two of a pattern's
/// bytes, chosen for being rare, at their distance from each other with vectors,
/// and compares the whole pattern only there.
///
/// Immutable; any number of threads may use one object.
class ByteSearch {
public:
    /// Finds nothing.
    ByteSearch() = default;
    explicit ByteSearch(const QVector<BytePattern> &patterns,
                        const SearchKernels::Table &kernels = SearchKernels::best());

    bool isEmpty() const { return m_needles.isEmpty(); }

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
    const SearchKernels::Table *m_kernels = nullptr;
};
