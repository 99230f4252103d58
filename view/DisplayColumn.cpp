#include "view/DisplayColumn.h"

#include <algorithm>

namespace {

constexpr ushort kFirstHalfWidthKatakana = 0xFF66;
constexpr ushort kLastHalfWidthKatakana = 0xFF9F;

int widthOf(ushort code)
{
    const bool halfWidth =
        code < 128 || (code >= kFirstHalfWidthKatakana && code <= kLastHalfWidthKatakana);
    return halfWidth ? 1 : 2;
}

} // namespace

int DisplayColumn::nextTabStop(int column, int tabWidth)
{
    const int width = std::max(tabWidth, 1);
    return column + width - column % width;
}

int DisplayColumn::before(QStringView line, int position, int tabWidth)
{
    const qsizetype end = std::min<qsizetype>(position, line.size());
    int column = 0;
    for (qsizetype i = 0; i < end; ++i) {
        const ushort code = line[i].unicode();
        column = code == '\t' ? nextTabStop(column, tabWidth) : column + widthOf(code);
    }
    return column;
}
