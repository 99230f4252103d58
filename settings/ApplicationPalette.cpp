#include "settings/ApplicationPalette.h"

#include "settings/AppSettings.h"
#include "settings/ColourContrast.h"

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
    const QColor &ground = program.color(QPalette::Active, QPalette::ToolTipBase);
    const QColor &text = program.color(QPalette::Active, QPalette::ToolTipText);
    // Who chose less than large letters need chose it by accident.
    if (ColourContrast::ratio(text, ground) < ColourContrast::kSign)
        palette.setBrush(QPalette::All, QPalette::ToolTipText,
                         QBrush(ColourContrast::readableOn(ground)));
    return palette;
}
