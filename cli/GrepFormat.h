#pragma once

#include "cli/HitPainter.h"
#include "cli/ResultFormat.h"

/// "path:line:column:text" a hit; a file without hits is its path alone.
class GrepFormat : public ResultFormat {
public:
    explicit GrepFormat(const HitPainter &painter);

    QByteArray format(const FileResult &file) const override;

private:
    HitPainter m_painter;
};
