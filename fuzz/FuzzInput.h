#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

/// The bytes that a fuzzer makes, taken apart from the front: numbers, then
/// lines, then the rest. Where they are used up there are zeros and empty texts,
/// so that every input means something.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t *data, std::size_t size);

    /// From 0 up to, but not including, limit (at most 256); takes one byte.
    int number(int limit);
    /// Up to the next line feed, which is taken but not part of it.
    QByteArray line();
    /// The same as text; bytes that are no UTF-8 become lone surrogates, as in
    /// the names of files, so that nothing that a text can be is missing.
    QString textLine();
    QByteArray rest();
    QString textRest();

private:
    QByteArray m_bytes;
    int m_position = 0;
};

/// As many bytes of text as patterns are to be tried on. What a pattern costs
/// grows faster than the line that it is tried on, with references back and with
/// lookahead much faster: known, and not what a fuzzer is to find again and again.
inline int affordableText(const QByteArray &patterns)
{
    constexpr int kUsual = 512;
    constexpr int kCostly = 64;
    for (int i = patterns.indexOf('\\'); i >= 0; i = patterns.indexOf('\\', i + 1)) {
        if (i + 1 < patterns.size() && patterns.at(i + 1) >= '1' && patterns.at(i + 1) <= '9')
            return kCostly;
    }
    return patterns.contains("(?=") || patterns.contains("(?!") ? kCostly : kUsual;
}

/// What must hold whatever the input is. Ends the process when it does not; the
/// fuzzer then keeps the input.
inline void require(bool holds, const char *what)
{
    if (!holds)
        qFatal("does not hold: %s", what);
}
