#include "settings/ApplicationPalette.h"

#include "settings/AppSettings.h"

#include <algorithm>
#include <cmath>

namespace {

struct RoleColour {
    QPalette::ColorRole role;
    QColor AppSettings::*member;
};

constexpr RoleColour kRoles[] = {
    {QPalette::Window, &AppSettings::paletteWindow},
    {QPalette::WindowText, &AppSettings::paletteWindowText},
    {QPalette::Base, &AppSettings::paletteBase},
    {QPalette::AlternateBase, &AppSettings::paletteAlternateBase},
    {QPalette::ToolTipBase, &AppSettings::paletteToolTipBase},
    {QPalette::ToolTipText, &AppSettings::paletteToolTipText},
    {QPalette::Text, &AppSettings::paletteText},
    {QPalette::Button, &AppSettings::paletteButton},
    {QPalette::ButtonText, &AppSettings::paletteButtonText},
    {QPalette::BrightText, &AppSettings::paletteBrightText},
    {QPalette::Link, &AppSettings::paletteLink},
    {QPalette::Highlight, &AppSettings::paletteHighlight},
    {QPalette::HighlightedText, &AppSettings::paletteHighlightedText},
};

/// Large letters need this ratio to be read; who chose less chose it by accident.
constexpr double kLeastContrast = 3;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// 0 for black to 1 for white.
double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

/// 1 for the same to 21 for black and white.
double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor &ground)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(black, ground) >= contrast(white, ground) ? black : white;
}

} // namespace

QPalette ApplicationPalette::fromSettings(const AppSettings &settings)
{
    QPalette palette;
    for (const RoleColour &entry : kRoles)
        palette.setBrush(QPalette::All, entry.role, QBrush(settings.*(entry.member)));
    // Not gray, as a dark scheme leaves too little contrast for it.
    const QBrush disabled(Qt::darkGreen);
    palette.setBrush(QPalette::Disabled, QPalette::Text, disabled);
    palette.setBrush(QPalette::Disabled, QPalette::ButtonText, disabled);
    return palette;
}

QPalette ApplicationPalette::forToolTips(const QPalette &program)
{
    QPalette palette = program;
    const QColor ground = program.color(QPalette::Active, QPalette::ToolTipBase);
    const QColor text = program.color(QPalette::Active, QPalette::ToolTipText);
    if (contrast(text, ground) < kLeastContrast)
        palette.setBrush(QPalette::All, QPalette::ToolTipText, QBrush(readableOn(ground)));
    return palette;
}
