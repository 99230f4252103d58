#pragma once

#include "cli/HitPainter.h"
#include "cli/ResultFormat.h"

/// The lines of the window's result view: "::" and the path, then the hit
/// strings.
class PlainFormat : public ResultFormat {
public:
    explicit PlainFormat(const HitPainter &painter);

    QByteArray format(const FileResult &file) const override;

private:
    void appendHit(QByteArray *lines, const QString &hit) const;

    HitPainter m_painter;
};
