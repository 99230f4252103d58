#include "cli/HitLine.h"

namespace {

/// Reads blanks, digits and a ":" from index on; -1 when they are not there.
int readNumber(const QString &hit, int index, int &number)
{
    while (index < hit.size() && hit.at(index) == QLatin1Char(' '))
        ++index;
    const int colon = hit.indexOf(QLatin1Char(':'), index);
    bool isNumber = false;
    number = hit.midRef(index, colon - index).toInt(&isNumber);
    return colon >= 0 && isNumber ? colon + 1 : -1;
}

} // namespace

HitLine HitLine::parse(const QString &hit)
{
    HitLine parts;
    const int columnStart = readNumber(hit, 0, parts.line);
    const int textStart = columnStart < 0 ? -1 : readNumber(hit, columnStart, parts.column);
    if (textStart < 0)
        return HitLine();
    parts.textStart = textStart;
    return parts;
}
