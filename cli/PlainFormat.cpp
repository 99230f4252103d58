#include "cli/PlainFormat.h"

#include "cli/HitLine.h"

PlainFormat::PlainFormat(const HitPainter &painter) : m_painter(painter)
{
}

QByteArray PlainFormat::format(const FileResult &file) const
{
    QByteArray lines = "::" + m_painter.path(file.path) + '\n';
    for (const QString &hit : file.hits)
        appendHit(&lines, hit);
    return lines;
}

void PlainFormat::appendHit(QByteArray *lines, const QString &hit) const
{
    const QStringView whole(hit);
    const HitLine parts = HitLine::parse(hit);
    m_painter.appendNumber(lines, whole.left(parts.textStart));
    m_painter.appendText(lines, whole.mid(parts.textStart));
    lines->append('\n');
}
