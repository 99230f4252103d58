#include "settings/dialogs/OptionColours.h"

#include "settings/AppSettings.h"

namespace {

using Member = QColor AppSettings::*;

/// The setting of each colour, in the order of OptionColours::Index.
constexpr std::array<Member, OptionColours::Count> kMembers{
    &AppSettings::backcolor,
    &AppSettings::forecolor,
    &AppSettings::hlbackcolor,
    &AppSettings::hlforecolor,
    &AppSettings::cursorcolor,
    &AppSettings::findcolor1,
    &AppSettings::reteralcolor,
    &AppSettings::reservecolor,
    &AppSettings::fnamecolor,
    &AppSettings::valuecolor,
    &AppSettings::lnumforecolor,
    &AppSettings::lnumbackcolor,
    &AppSettings::keywordcolor,
    &AppSettings::classcolor,
    &AppSettings::ctrlcolor,
    &AppSettings::commentcolor,
    &AppSettings::paletteWindow,
    &AppSettings::paletteWindowText,
    &AppSettings::paletteBase,
    &AppSettings::paletteAlternateBase,
    &AppSettings::paletteToolTipBase,
    &AppSettings::paletteToolTipText,
    &AppSettings::paletteText,
    &AppSettings::paletteButton,
    &AppSettings::paletteButtonText,
    &AppSettings::paletteBrightText,
    &AppSettings::paletteLink,
    &AppSettings::paletteHighlight,
    &AppSettings::paletteHighlightedText,
};

constexpr int kFirstPaletteColour = OptionColours::PaletteWindow;

/// The dark preset, in the order of OptionColours::Index; 0 is "as it is".
constexpr std::array<QRgb, OptionColours::Count> kDark{
    0xff21212b, // Background
    0xffffffff, // Text
    0xff4682b4, // SelectionBackground
    0xffffffff, // SelectionText
    0xffffffff, // Cursor
    0xffff0000, // Find1
    0xffffff7f, // Literal
    0xff00ffff, // ReservedWord
    0xfffcf401, // FileName
    0xffffaa00, // Value
    0xff7e7e7e, // LineNumberText
    0xff535353, // LineNumberBackground
    0, // Keyword
    0xff7efff5, // Class
    0xff7777bb, // Control
    0xffaaff7f, // Comment
    0xff414141, // PaletteWindow
    0xffffffff, // PaletteWindowText
    0xff414141, // PaletteBase
    0xff414141, // PaletteAlternateBase
    0xffffffff, // PaletteToolTipBase
    0xffffffff, // PaletteToolTipText
    0xffffffff, // PaletteText
    0xff414141, // PaletteButton
    0xffffffff, // PaletteButtonText
    0xffff0000, // PaletteBrightText
    0xff2a82da, // PaletteLink
    0xff2a82da, // PaletteHighlight
    0xff000000, // PaletteHighlightedText
};

QColor withAlpha(const QColor &colour, int alpha)
{
    return QColor(colour.red(), colour.green(), colour.blue(), alpha);
}

/// Whatever model the colours were made in.
bool sameColour(const QColor &a, const QColor &b)
{
    return a.isValid() == b.isValid() && a.rgba() == b.rgba();
}

} // namespace

OptionColours::OptionColours(const AppSettings &settings)
{
    for (int i = 0; i < Count; ++i)
        m_colours[i] = settings.*kMembers[i];
}

void OptionColours::setDark()
{
    for (int i = 0; i < Count; ++i) {
        if (kDark[i] != 0)
            m_colours[i] = QColor(kDark[i]);
    }
}

void OptionColours::setPaletteBackground(const QColor &chosen)
{
    const int alpha = chosen.alpha();
    m_colours[PaletteBase] = chosen;
    m_colours[PaletteWindow] = withAlpha(chosen, alpha - alpha / 3);
    m_colours[PaletteAlternateBase] = m_colours[PaletteWindow];
    m_colours[PaletteButton] = withAlpha(chosen, alpha - alpha / 5);
}

void OptionColours::setPaletteText(const QColor &chosen)
{
    for (const Index index : {PaletteWindowText, PaletteToolTipBase, PaletteToolTipText,
                              PaletteText, PaletteButtonText})
        m_colours[index] = chosen;
    m_colours[PaletteBrightText] = QColor(chosen.blue(), 0, 0);
}

void OptionColours::storeEditorColours(AppSettings &settings) const
{
    for (int i = 0; i < kFirstPaletteColour; ++i)
        settings.*kMembers[i] = m_colours[i];
}

bool OptionColours::storePaletteColours(AppSettings &settings) const
{
    bool differed = false;
    for (int i = kFirstPaletteColour; i < Count; ++i) {
        QColor &stored = settings.*kMembers[i];
        differed |= !sameColour(stored, m_colours[i]);
        stored = m_colours[i];
    }
    return differed;
}
