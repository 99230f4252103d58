#pragma once

#include <QColor>

#include <array>

class AppSettings;

/// The colours that the option dialog works on: a copy of those of AppSettings,
/// which stay as they are until the dialog is accepted.
class OptionColours {
public:
    enum Index {
        Background,
        Text,
        SelectionBackground,
        SelectionText,
        Cursor,
        Find1,
        Literal,
        ReservedWord,
        FileName,
        Value,
        LineNumberText,
        LineNumberBackground,
        /// Carried along; nothing in the dialog changes it.
        Keyword,
        Class,
        Control,
        Comment,
        // The application palette's, in the order of its settings.
        PaletteWindow,
        PaletteWindowText,
        PaletteBase,
        PaletteAlternateBase,
        PaletteToolTipBase,
        PaletteToolTipText,
        PaletteText,
        PaletteButton,
        PaletteButtonText,
        PaletteBrightText,
        PaletteLink,
        PaletteHighlight,
        PaletteHighlightedText,
        Count
    };

    explicit OptionColours(const AppSettings &settings);

    const QColor &operator[](Index index) const { return m_colours[index]; }
    QColor &operator[](Index index) { return m_colours[index]; }

    /// Sets the preset of dark colours; Keyword stays.
    void setDark();

    /// Derives the palette's backgrounds from one colour: Base is that colour,
    /// Window and AlternateBase lose a third of its opacity and Button a fifth,
    /// in whole steps of 255.
    void setPaletteBackground(const QColor &chosen);

    /// Derives the palette's text colours from one colour. BrightText is red, as
    /// strong as the blue of that colour.
    void setPaletteText(const QColor &chosen);

    void storeEditorColours(AppSettings &settings) const;
    /// True when any of them, opacity included, differed before.
    bool storePaletteColours(AppSettings &settings) const;

private:
    std::array<QColor, Count> m_colours;
};
