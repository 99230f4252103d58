#include "cli/GrepFormat.h"

#include "cli/HitLine.h"

GrepFormat::GrepFormat(const HitPainter &painter) : m_painter(painter)
{
}

QByteArray GrepFormat::format(const FileResult &file) const
{
    const QByteArray path = m_painter.path(file.path);
    if (file.hits.isEmpty())
        return path + '\n';
    QByteArray lines;
    for (const QString &hit : file.hits)
        appendHit(&lines, path, hit);
    return lines;
}

void GrepFormat::appendHit(QByteArray *lines, const QByteArray &path, const QString &hit) const
{
    const HitLine parts = HitLine::parse(hit);
    lines->append(path).append(':');
    appendNumber(lines, parts.line);
    appendNumber(lines, parts.column);
    m_painter.appendText(lines, QStringView(hit).mid(parts.textStart));
    lines->append('\n');
}

/// number is not negative.
void GrepFormat::appendNumber(QByteArray *lines, int number) const
{
    constexpr int kMostDigits = 10;
    QChar digits[kMostDigits];
    int first = kMostDigits;
    do {
        digits[--first] = QLatin1Char(char('0' + number % 10));
        number /= 10;
    } while (number > 0);
    m_painter.appendNumber(lines, QStringView(digits + first, kMostDigits - first));
    lines->append(':');
}
