#include "settings/CodecEnvironment.h"

#include <QtGlobal>

namespace {

constexpr char kVariable[] = "UNICODEMAP_JP";

} // namespace

QByteArray CodecEnvironment::unicodeMap(const QByteArray &current)
{
    const QByteArray wanted = QByteArrayLiteral("cp932");
    if (current.isEmpty())
        return wanted;
    return current.contains(wanted) ? current : current + ',' + wanted;
}

void CodecEnvironment::applyUnicodeMap()
{
    qputenv(kVariable, unicodeMap(qgetenv(kVariable)));
}
