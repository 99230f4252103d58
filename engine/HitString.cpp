#include "engine/HitString.h"

#include <algorithm>

namespace {

constexpr int kNumberWidth = 5;
constexpr int kMaxDigits = 20;

/// Writes number right-aligned at the front of target; returns the places used.
int writeNumber(qint64 number, QChar *target)
{
    char digits[kMaxDigits];
    int count = 0;
    for (quint64 rest = static_cast<quint64>(number); count == 0 || rest != 0; rest /= 10)
        digits[count++] = static_cast<char>('0' + rest % 10);
    const int width = std::max(count, kNumberWidth);
    for (int place = 0; place < width; ++place) {
        const int digit = width - 1 - place;
        target[place] = QLatin1Char(digit < count ? digits[digit] : ' ');
    }
    return width;
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
    int length = 0;
    head[length++] = QLatin1Char(' ');
    head[length++] = QLatin1Char(' ');
    length += writeNumber(lineNumber, head + length);
    head[length++] = QLatin1Char(':');
    length += writeNumber(column, head + length);
    head[length++] = QLatin1Char(':');
    QString hit;
    hit.reserve(length + static_cast<int>(line.size()));
    hit.append(head, length);
    hit.append(line.data(), static_cast<int>(line.size()));
    return hit;
}
