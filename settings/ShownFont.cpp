#include "settings/ShownFont.h"

#include <algorithm>

QFont ShownFont::bounded(const QFont &font)
{
    QFont shown = font;
    // Of a font in pixels the size in points is -1.
    if (font.pointSize() > 0)
        shown.setPointSize(std::min(font.pointSize(), kLargestPointSize));
    return shown;
}
