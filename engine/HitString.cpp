#include "engine/HitString.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kNumberWidth = 5;
constexpr int kMaxDigits = 20;

/// Writes number, filled up with blanks, so that it ends before end; returns
/// where it begins.
QChar *prepend(qint64 number, QChar *end)
{
    QChar *at = end;
    auto rest = static_cast<quint64>(number);
    do {
        *--at = QLatin1Char(static_cast<char>('0' + rest % 10));
        rest /= 10;
    } while (rest != 0);
    while (end - at < kNumberWidth)
        *--at = QLatin1Char(' ');
    return at;
}

} // namespace

qint64 HitString::displayColumn(QStringView line, qint64 position, int tabWidth)
{
    qint64 column = 0;
    for (qint64 i = 0; i < position; ++i) {
        const ushort unit = line[i].unicode();
        if (unit == '\t')
            column += tabWidth - column % tabWidth;
        else
            column += unit < 128 ? 1 : 2;
    }
    return column;
}

QString HitString::format(qint64 lineNumber, qint64 column, QStringView line)
{
    QChar head[2 * kMaxDigits + 4];
    QChar *const end = std::end(head);
    QChar *at = end;
    *--at = QLatin1Char(':');
    at = prepend(column, at);
    *--at = QLatin1Char(':');
    at = prepend(lineNumber, at);
    *--at = QLatin1Char(' ');
    *--at = QLatin1Char(' ');
    QString hit(static_cast<int>(end - at + line.size()), Qt::Uninitialized);
    std::copy(line.begin(), line.end(), std::copy(at, end, hit.data()));
    return hit;
}
