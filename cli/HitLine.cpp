#include "cli/HitLine.h"

#include <limits>

namespace {

/// Reads blanks, digits and a ":" from index on; -1 when they are not there.
int readNumber(const QString &hit, int index, int &number)
{
    const QChar *const units = hit.constData();
    while (index < hit.size() && units[index] == QLatin1Char(' '))
        ++index;
    const int firstDigit = index;
    qint64 value = 0;
    for (; index < hit.size(); ++index) {
        const int digit = units[index].unicode() - '0';
        if (digit < 0 || digit > 9)
            break;
        value = value * 10 + digit;
        if (value > std::numeric_limits<int>::max())
            return -1;
    }
    const bool isNumber = index > firstDigit && index < hit.size();
    if (!isNumber || units[index] != QLatin1Char(':'))
        return -1;
    number = int(value);
    return index + 1;
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
