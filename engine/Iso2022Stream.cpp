#include "engine/Iso2022Stream.h"

#include <algorithm>
#include <cstring>

namespace {

using Designation = JapaneseForms::Designation;

constexpr char kEscape = '\x1B';
constexpr char kShiftOut = '\x0E';
constexpr char kShiftIn = '\x0F';

const Designation *designationAt(const char *at, const char *end,
                                 const QVector<Designation> &designations)
{
    for (const Designation &designation : designations) {
        const QByteArray &escape = designation.escape;
        if (end - at >= escape.size() && std::equal(escape.cbegin(), escape.cend(), at))
            return &designation;
    }
    return nullptr;
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

    explicit EightBytes(const char *at)
    {
        std::memcpy(&m_sevenBits, at, kSize);
        m_sevenBits &= each(0x7F);
    }

    // A byte of seven bits reaches the high bit in the sum from 0x80 on, and
    // never the next byte.
    bool areGraphic() const
    {
        const quint64 aboveBlank = m_sevenBits + each(0x80 - 0x21);
        const quint64 isDelete = m_sevenBits + each(0x80 - 0x7F);
        return (aboveBlank & ~isDelete & each(0x80)) == each(0x80);
    }
    bool haveNoControl() const
    {
        return ((m_sevenBits + each(0x80 - 0x20)) & each(0x80)) == each(0x80);
    }

    void writeTo(char *at, bool twoBytes) const
    {
        const quint64 bytes = twoBytes ? m_sevenBits | each(0x80) : m_sevenBits;
        std::memcpy(at, &bytes, kSize);
    }

private:
    static constexpr quint64 each(quint64 byte) { return byte * Q_UINT64_C(0x0101010101010101); }

    quint64 m_sevenBits;
};

/// Both copy the text that begins at from to *out, move *out behind it and
/// return where an escape sequence should be: at the first byte that is not part
/// of the text.

const char *copyOneByteText(const char *from, const char *end, char **out)
{
    char *to = *out;
    while (from != end) {
        if (end - from >= EightBytes::kSize) {
            const EightBytes eight(from);
            if (eight.haveNoControl()) {
                eight.writeTo(to, false);
                from += EightBytes::kSize;
                to += EightBytes::kSize;
                continue;
            }
        }
        const char byte = *from;
        if (byte == kEscape || byte == kShiftOut || byte == kShiftIn)
            break;
        if (byte != '\r')
            *to++ = Iso2022Stream::normalised(byte, false);
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
            if (eight.areGraphic()) {
                eight.writeTo(to, true);
                from += EightBytes::kSize;
                to += EightBytes::kSize;
                continue;
            }
        }
        if (end - from < 2 || !isGraphic(from[0]) || !isGraphic(from[1]))
            break;
        *to++ = Iso2022Stream::normalised(*from++, true);
        *to++ = Iso2022Stream::normalised(*from++, true);
    }
    *out = to;
    return from;
}

} // namespace

char Iso2022Stream::normalised(char byte, bool twoBytes)
{
    return static_cast<char>(twoBytes ? byte | 0x80 : byte & 0x7F);
}

bool Iso2022Stream::extractCharacters(const char *bytes, qint64 size,
                                      const QVector<Designation> &designations,
                                      QByteArray *characters)
{
    characters->resize(static_cast<int>(size));
    char *out = characters->data();
    const char *const end = bytes + size;
    const char *at = bytes;
    bool twoBytes = false;
    for (;;) {
        at = (twoBytes ? copyTwoByteText : copyOneByteText)(at, end, &out);
        if (at == end)
            break;
        const Designation *const designation = designationAt(at, end, designations);
        if (designation == nullptr)
            return false;
        twoBytes = designation->twoBytes;
        at += designation->escape.size();
    }
    characters->truncate(static_cast<int>(out - characters->constData()));
    return true;
}
