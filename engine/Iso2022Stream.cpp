#include "engine/Iso2022Stream.h"

#include <algorithm>
#include <array>

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

/// What a byte means for the reading of its surroundings.
enum ByteClass : uchar { Graphic, OtherCharacter, CarriageReturn, Control };

std::array<ByteClass, 256> classifyBytes()
{
    std::array<ByteClass, 256> classes;
    for (size_t byte = 0; byte < classes.size(); ++byte) {
        const size_t sevenBits = byte & 0x7F;
        classes[byte] = sevenBits > 0x20 && sevenBits < 0x7F ? Graphic : OtherCharacter;
    }
    classes['\r'] = CarriageReturn;
    for (const char control : {kEscape, kShiftOut, kShiftIn})
        classes[static_cast<uchar>(control)] = Control;
    return classes;
}

/// Both copy the text that begins at from to *out, move *out behind it and
/// return where an escape sequence should be: at the first byte that is not part
/// of the text.

const char *copyOneByteText(const char *from, const char *end,
                            const std::array<ByteClass, 256> &classes, char **out)
{
    char *to = *out;
    for (; from != end; ++from) {
        const ByteClass byteClass = classes[static_cast<uchar>(*from)];
        if (byteClass == Control)
            break;
        *to = Iso2022Stream::normalised(*from, false);
        to += byteClass == CarriageReturn ? 0 : 1;
    }
    *out = to;
    return from;
}

const char *copyTwoByteText(const char *from, const char *end,
                            const std::array<ByteClass, 256> &classes, char **out)
{
    char *to = *out;
    for (; end - from >= 2; from += 2) {
        if ((classes[static_cast<uchar>(from[0])] | classes[static_cast<uchar>(from[1])])
            != Graphic)
            break;
        *to++ = Iso2022Stream::normalised(from[0], true);
        *to++ = Iso2022Stream::normalised(from[1], true);
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
    static const std::array<ByteClass, 256> classes = classifyBytes();
    characters->resize(static_cast<int>(size));
    char *out = characters->data();
    const char *const end = bytes + size;
    const char *at = bytes;
    bool twoBytes = false;
    for (;;) {
        at = (twoBytes ? copyTwoByteText : copyOneByteText)(at, end, classes, &out);
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
