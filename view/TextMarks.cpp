#include "view/TextMarks.h"

#include <algorithm>

namespace {

constexpr ushort kFirstFullSizeSign = 0xFEEB;
constexpr int kSmallerBy = 2;
constexpr int kBrighterBy = 40;
constexpr int kHalfTransparent = 128;

int brighter(int component)
{
    return std::min(component + kBrighterBy, 255);
}

} // namespace

QVector<TextMarks::Mark> TextMarks::inText(QStringView text, int from, int to,
                                           const Options &options)
{
    QVector<Mark> marks;
    const int end = std::min(to, static_cast<int>(text.size()));
    for (int i = std::max(from, 0); i < end; ++i) {
        const ushort code = text[i].unicode();
        if (options.tabs && code == '\t')
            marks.append({i, kTab});
        else if (options.fullWidthSpaces && code == kMarkedSpace)
            marks.append({i, kFullWidthSpace});
    }
    return marks;
}

QFont TextMarks::fontFor(QChar sign, const QFont &textFont)
{
    if (sign.unicode() >= kFirstFullSizeSign)
        return textFont;
    QFont font = textFont;
    if (textFont.pointSize() > 0)
        font.setPointSize(std::max(textFont.pointSize() - kSmallerBy, 1));
    return font;
}

QColor TextMarks::currentLineFill(const QColor &colour)
{
    if (!colour.isValid())
        return colour;
    return QColor(brighter(colour.red()), brighter(colour.green()), brighter(colour.blue()),
                  kHalfTransparent);
}
