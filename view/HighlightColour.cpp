#include "view/HighlightColour.h"

#include "settings/AppSettings.h"
#include "settings/ColourContrast.h"

namespace {

QTextCharFormat coloured(const QColor &colour)
{
    QTextCharFormat format;
    format.setForeground(colour);
    return format;
}

QTextCharFormat marked(const QColor &background)
{
    QTextCharFormat format;
    format.setBackground(background);
    format.setForeground(ColourContrast::readableOn(background));
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
