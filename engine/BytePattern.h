#pragma once

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

    /// Of patterns that are equal only the first stays.
    static void removeDuplicates(QVector<BytePattern> *patterns);

    /// All of the pattern's bytes must lie inside the buffer.
    bool matchesAt(const char *bytes) const
    {
        const char *const values = value.constData();
        const char *const masks = mask.constData();
        for (int i = 0; i < value.size(); ++i) {
            if ((bytes[i] & masks[i]) != values[i])
                return false;
        }
        return true;
    }
};
