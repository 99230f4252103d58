#include "engine/NativePath.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr ushort kEscapeBase = 0xDC00;

bool isAscii(const char *bytes, int size)
{
    return std::all_of(bytes, bytes + size,
                       [](char byte) { return static_cast<uchar>(byte) < 0x80; });
}

bool isAscii(const QString &text)
{
    ushort joined = 0;
    for (const QChar unit : text)
        joined = ushort(joined | unit.unicode());
    return joined < 0x80;
}

/// Length of the valid UTF-8 sequence at the start of bytes, 0 when there is none.
int validSequenceLength(const char *bytes, int size)
{
    const uchar lead = static_cast<uchar>(bytes[0]);
    const int length = lead < 0x80    ? 1
        : lead >= 0xC2 && lead < 0xE0 ? 2
        : lead >= 0xE0 && lead < 0xF0 ? 3
        : lead >= 0xF0 && lead < 0xF5 ? 4
                                      : 0;
    if (length == 0 || length > size)
        return 0;
    for (int i = 1; i < length; ++i) {
        if ((static_cast<uchar>(bytes[i]) & 0xC0) != 0x80)
            return 0;
    }
    if (length < 3)
        return length;
    const uchar second = static_cast<uchar>(bytes[1]);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool beyondUnicode = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || beyondUnicode ? 0 : length;
}

void appendValid(const char *bytes, int size, QString &path)
{
    // The toolkit leaves out a byte order mark at the front; in a name it is a
    // character like any other.
    if (size >= 3 && std::memcmp(bytes, "\xEF\xBB\xBF", 3) == 0)
        path += QChar(QChar::ByteOrderMark);
    path += QString::fromUtf8(bytes, size);
}

} // namespace

QString NativePath::fromNative(const char *name, int size)
{
    if (isAscii(name, size))
        return QString::fromLatin1(name, size);
    QString path;
    path.reserve(size);
    int validStart = 0;
    int i = 0;
    while (i < size) {
        const int length = validSequenceLength(name + i, size - i);
        if (length > 0) {
            i += length;
            continue;
        }
        appendValid(name + validStart, i - validStart, path);
        path += QChar(kEscapeBase + static_cast<uchar>(name[i]));
        validStart = ++i;
    }
    appendValid(name + validStart, size - validStart, path);
    return path;
}

QString NativePath::fromNative(const QByteArray &name)
{
    return fromNative(name.constData(), name.size());
}

QByteArray NativePath::toNative(const QString &path)
{
    if (isAscii(path))
        return path.toLatin1();
    QByteArray name;
    int start = 0;
    for (int i = 0; i < path.size(); ++i) {
        const ushort unit = path.at(i).unicode();
        const bool escaped = unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF
            && (i == 0 || !path.at(i - 1).isHighSurrogate());
        if (!escaped)
            continue;
        name += path.midRef(start, i - start).toUtf8();
        name += static_cast<char>(unit - kEscapeBase);
        start = i + 1;
    }
    name += path.midRef(start).toUtf8();
    return name;
}
