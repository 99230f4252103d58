#include "cli/PlainFormat.h"

#include "cli/HitLine.h"

PlainFormat::PlainFormat(const HitPainter &painter) : m_painter(painter)
{
}

QByteArray PlainFormat::format(const FileResult &file) const
{
    QByteArray lines = "::" + m_painter.path(file.path) + '\n';
    for (const QString &hit : file.hits)
        lines += hitLine(hit);
    return lines;
}

QByteArray PlainFormat::hitLine(const QString &hit) const
{
    const HitLine parts = HitLine::parse(hit);
    return m_painter.number(hit.left(parts.textStart)) + m_painter.text(parts.text(hit)) + '\n';
}
