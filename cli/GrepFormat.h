#pragma once

#include "cli/HitPainter.h"
#include "cli/ResultFormat.h"

struct HitLine;

/// "path:line:column:text" a hit; a file without hits is its path alone.
class GrepFormat : public ResultFormat {
public:
    explicit GrepFormat(const HitPainter &painter);

    QByteArray format(const FileResult &file) const override;

private:
    void appendHit(QByteArray *lines, const QByteArray &path, const QString &hit) const;
    static void appendNumbers(QByteArray *lines, const HitLine &parts);
    void appendPainted(QByteArray *lines, const HitLine &parts) const;

    HitPainter m_painter;
};
