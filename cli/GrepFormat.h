#pragma once

#include "cli/HitPainter.h"
#include "cli/ResultFormat.h"

/// "path:line:column:text" a hit; a file without hits is its path alone.
class GrepFormat : public ResultFormat {
public:
    explicit GrepFormat(const HitPainter &painter);

    QByteArray format(const FileResult &file) const override;

private:
    void appendHit(QByteArray *lines, const QByteArray &path, const QString &hit) const;
    void appendNumber(QByteArray *lines, int number) const;

    HitPainter m_painter;
};
