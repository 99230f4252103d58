#include "cli/GrepFormat.h"

#include "cli/HitLine.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <numeric>

namespace {

/// The bytes of a file's lines if its text is ASCII, or as much as one asks for.
int probableSize(const QByteArray &path, const QStringList &hits)
{
    constexpr qint64 kMost = Q_INT64_C(1024) * 1024;
    const qint64 size =
        std::accumulate(hits.cbegin(), hits.cend(), qint64(0), [&](qint64 sum, const QString &hit) {
            return sum + path.size() + hit.size();
        });
    return int(std::min(size, kMost));
}

} // namespace

GrepFormat::GrepFormat(const HitPainter &painter) : m_painter(painter)
{
}

QByteArray GrepFormat::format(const FileResult &file) const
{
    QByteArray path = m_painter.path(file.path);
    if (file.hits.isEmpty())
        return path + '\n';
    path += ':';
    QByteArray lines;
    lines.reserve(probableSize(path, file.hits));
    for (const QString &hit : file.hits)
        appendHit(&lines, path, hit);
    return lines;
}

void GrepFormat::appendHit(QByteArray *lines, const QByteArray &path, const QString &hit) const
{
    const HitLine parts = HitLine::parse(hit);
    lines->append(path);
    if (m_painter.isOn())
        appendPainted(lines, parts);
    else
        appendNumbers(lines, parts);
    m_painter.appendText(lines, QStringView(hit).mid(parts.textStart));
    lines->append('\n');
}

/// Together: a million hits have two million numbers.
void GrepFormat::appendNumbers(QByteArray *lines, const HitLine &parts)
{
    constexpr int kLongest = std::numeric_limits<int>::digits10 + 2; // and the colon
    char numbers[2 * kLongest];
    char *end = numbers;
    for (const int number : {parts.line, parts.column}) {
        end = std::to_chars(end, std::end(numbers), number).ptr;
        *end++ = ':';
    }
    lines->append(numbers, static_cast<int>(end - numbers));
}

void GrepFormat::appendPainted(QByteArray *lines, const HitLine &parts) const
{
    for (const int number : {parts.line, parts.column}) {
        m_painter.appendNumber(lines, QString::number(number));
        lines->append(':');
    }
}
