#include "engine/Iso2022Stream.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using Designation = JapaneseForms::Designation;

constexpr char kEscape = '\x1B';
constexpr char kShiftOut = '\x0E';
constexpr char kShiftIn = '\x0F';

/// A designation's escape sequence as a number, so that one comparison tells: a
/// text may have an escape sequence every few characters.
class EscapeSequence {
public:
    explicit EscapeSequence(const Designation &designation)
        : m_size(designation.escape.size()), m_twoBytes(designation.twoBytes)
    {
        std::memcpy(&m_bytes, designation.escape.constData(), size_t(m_size));
        std::memset(&m_mask, 0xFF, size_t(m_size));
    }

    static quint32 fourBytes(const char *at, const char *end)
    {
        quint32 bytes = 0;
        if (end - at >= qint64(sizeof bytes))
            std::memcpy(&bytes, at, sizeof bytes); // one instruction, as its size is known
        else
            std::memcpy(&bytes, at, size_t(end - at));
        return bytes;
    }

    bool isIn(quint32 fourBytes) const { return (fourBytes & m_mask) == m_bytes; }
    int size() const { return m_size; }
    bool twoBytes() const { return m_twoBytes; }

private:
    quint32 m_bytes = 0;
    quint32 m_mask = 0;
    int m_size;
    bool m_twoBytes;
};

using EscapeSequences = std::vector<EscapeSequence>;

const EscapeSequence *sequenceAt(const char *at, const char *end, const EscapeSequences &sequences)
{
    const quint32 bytes = EscapeSequence::fourBytes(at, end);
    const auto found =
        std::find_if(sequences.cbegin(), sequences.cend(),
                     [bytes](const EscapeSequence &sequence) { return sequence.isIn(bytes); });
    return found != sequences.cend() ? &*found : nullptr;
}

inline char normalisedByte(char byte, bool twoBytes)
{
    return static_cast<char>(twoBytes ? byte | 0x80 : byte & 0x7F);
}

bool isGraphic(char byte)
{
    const int sevenBits = byte & 0x7F;
    return sevenBits > 0x20 && sevenBits < 0x7F;
}

/// Eight bytes at a time: stretches between escape sequences are too short for
/// vectors and too common for single bytes.
class EightBytes {
public:
    static constexpr int kSize = 8;

    explicit EightBytes(const char *at) : m_sevenBits(qFromLittleEndian<quint64>(at) & each(0x7F))
    {
    }

    // A byte of seven bits reaches the high bit in the sum from 0x80 on, and
    // never the next byte.
    int countUntilNotGraphic() const
    {
        const quint64 aboveBlank = m_sevenBits + each(0x80 - 0x21);
        const quint64 isDelete = m_sevenBits + each(0x80 - 0x7F);
        return countHighBits(aboveBlank & ~isDelete);
    }
    int countUntilControl() const { return countHighBits(m_sevenBits + each(0x80 - 0x20)); }

    void writeTo(char *at, bool twoBytes) const
    {
        qToLittleEndian(twoBytes ? m_sevenBits | each(0x80) : m_sevenBits, at);
    }

private:
    static constexpr quint64 each(quint64 byte) { return byte * Q_UINT64_C(0x0101010101010101); }

    /// Bytes that have it, from the first on.
    static int countHighBits(quint64 bytes)
    {
        return int(qCountTrailingZeroBits(~bytes & each(0x80))) / 8;
    }

    quint64 m_sevenBits;
};

/// Both copy the text that begins at from to *out, move *out behind it and
/// return where an escape sequence should be: at the first byte that is not part
/// of the text. What they write behind *out, up to as many bytes as are left to
/// read, is overwritten by what comes next.

const char *copyOneByteText(const char *from, const char *end, char **out)
{
    char *to = *out;
    while (from != end) {
        if (end - from >= EightBytes::kSize) {
            const EightBytes eight(from);
            eight.writeTo(to, false);
            const int count = eight.countUntilControl();
            from += count;
            to += count;
            if (count == EightBytes::kSize)
                continue;
        }
        const char byte = *from;
        if (byte == kEscape || byte == kShiftOut || byte == kShiftIn)
            break;
        if (byte != '\r')
            *to++ = normalisedByte(byte, false);
        ++from;
    }
    *out = to;
    return from;
}

const char *copyTwoByteText(const char *from, const char *end, char **out)
{
    char *to = *out;
    for (;;) {
        if (end - from >= EightBytes::kSize) {
            const EightBytes eight(from);
            eight.writeTo(to, true);
            const int count = eight.countUntilNotGraphic() & ~1;
            from += count;
            to += count;
            if (count == EightBytes::kSize)
                continue;
            break;
        }
        if (end - from < 2 || !isGraphic(from[0]) || !isGraphic(from[1]))
            break;
        *to++ = normalisedByte(*from++, true);
        *to++ = normalisedByte(*from++, true);
    }
    *out = to;
    return from;
}

} // namespace

char Iso2022Stream::normalised(char byte, bool twoBytes)
{
    return normalisedByte(byte, twoBytes);
}

bool Iso2022Stream::extractCharacters(const char *bytes, qint64 size,
                                      const QVector<Designation> &designations,
                                      QByteArray *characters)
{
    const EscapeSequences sequences(designations.cbegin(), designations.cend());
    characters->resize(static_cast<int>(size));
    char *out = characters->data();
    const char *const end = bytes + size;
    const char *at = bytes;
    bool twoBytes = false;
    for (;;) {
        at = twoBytes ? copyTwoByteText(at, end, &out) : copyOneByteText(at, end, &out);
        if (at == end)
            break;
        const EscapeSequence *const sequence = sequenceAt(at, end, sequences);
        if (sequence == nullptr)
            return false;
        twoBytes = sequence->twoBytes();
        at += sequence->size();
    }
    characters->truncate(static_cast<int>(out - characters->constData()));
    return true;
}
