#include "view/HighlightColour.h"

#include "settings/AppSettings.h"

namespace {

QTextCharFormat coloured(const QColor &colour)
{
    QTextCharFormat format;
    format.setForeground(colour);
    return format;
}

QTextCharFormat marked(const QColor &background)
{
    // Weights of the eye's brightness, of which the middle is 128.
    const int brightness =
        (background.red() * 299 + background.green() * 587 + background.blue() * 114) / 1000;
    QTextCharFormat format;
    format.setBackground(background);
    format.setForeground(QColor(brightness < 128 ? Qt::white : Qt::black));
    return format;
}

} // namespace

HighlightColours::Formats HighlightColours::formats(const AppSettings &settings)
{
    return {coloured(settings.commentcolor), coloured(settings.commentcolor),
            coloured(settings.keywordcolor), coloured(settings.reservecolor),
            coloured(settings.valuecolor),   coloured(settings.fnamecolor),
            marked(settings.findcolor1),     marked(settings.findcolor2),
            coloured(settings.reteralcolor), coloured(settings.reteralcolor)};
}
