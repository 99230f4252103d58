#include "settings/CodecEnvironment.h"

#include <QtGlobal>

namespace {

constexpr char kVariable[] = "UNICODEMAP_JP";

} // namespace

QString CodecEnvironment::loggingFilterRules()
{
    return QStringLiteral("qt.network.ssl.w arning=false");
}

QByteArray CodecEnvironment::unicodeMap(const QByteArray &current)
{
    constexpr char kWanted[] = "cp932";
    if (current.isEmpty())
        return kWanted;
    return current.contains(kWanted) ? current : current + ',' + kWanted;
}

void CodecEnvironment::applyUnicodeMap()
{
    qputenv(kVariable, unicodeMap(qgetenv(kVariable)));
}
