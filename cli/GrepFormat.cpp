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
    for (const QString &hit : file.hits) {
        const HitLine parts = HitLine::parse(hit);
        lines += path + ':' + m_painter.number(QString::number(parts.line)) + ':'
            + m_painter.number(QString::number(parts.column)) + ':'
            + m_painter.text(parts.text(hit)) + '\n';
    }
    return lines;
}
