#include "engine/NativePath.h"

#include <cstring>

namespace {

// Bytes of a half of a surrogate pair that has lost the other, as UTF-8 would
// spell it: file names may hold such halves.
constexpr uchar kHalfLead = 0xED;
constexpr int kHalfSize = 3;

bool isHalf(const char *bytes, int size)
{
    return size >= kHalfSize && uchar(bytes[0]) == kHalfLead && (uchar(bytes[1]) & 0xE0) == 0xA0
        && (uchar(bytes[2]) & 0xC0) == 0x80;
}

QChar halfOf(const char *bytes)
{
    return QChar(ushort(0xD000 | (uchar(bytes[1]) & 0x3F) << 6 | (uchar(bytes[2]) & 0x3F)));
}

QByteArray bytesOf(QChar half)
{
    const int unit = half.unicode();
    const char bytes[kHalfSize] = {char(kHalfLead), char(0x80 | (unit >> 6 & 0x3F)),
                                   char(0x80 | (unit & 0x3F))};
    return QByteArray(bytes, kHalfSize);
}

QString textOf(const char *bytes, int size)
{
    // The toolkit leaves out a byte order mark at the front; in a name it is a
    // character like any other.
    const bool marked = size >= 3 && std::memcmp(bytes, "\xEF\xBB\xBF", 3) == 0;
    const QString text = QString::fromUtf8(bytes, size);
    return marked ? QChar(QChar::ByteOrderMark) + text : text;
}

} // namespace

QString NativePath::fromNative(const char *name, int size)
{
    QString path;
    int from = 0;
    for (int at = 0; at < size; ++at) {
        if (!isHalf(name + at, size - at))
            continue;
        path += textOf(name + from, at - from);
        path += halfOf(name + at);
        from = at + kHalfSize;
        at = from - 1;
    }
    return path + textOf(name + from, size - from);
}

QString NativePath::fromNative(const QByteArray &name)
{
    return fromNative(name.constData(), name.size());
}

QByteArray NativePath::toNative(const QString &path)
{
    if (path.isValidUtf16())
        return path.toUtf8();
    QByteArray name;
    for (int at = 0; at < path.size(); ++at) {
        const bool pair = path.at(at).isHighSurrogate() && at + 1 < path.size()
            && path.at(at + 1).isLowSurrogate();
        if (!pair && path.at(at).isSurrogate()) {
            name += bytesOf(path.at(at));
            continue;
        }
        name += path.mid(at, pair ? 2 : 1).toUtf8();
        at += pair ? 1 : 0;
    }
    return name;
}
