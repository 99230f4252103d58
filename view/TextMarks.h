#pragma once

#include <QChar>
#include <QColor>
#include <QFont>
#include <QStringView>
#include <QVector>

/// The signs that make tabs, full-width spaces and ends visible, and the colour
/// behind the current line. All but the tab's are characters that every Japanese
/// font has; the tab's is half as wide, since a tab may be one column.
namespace TextMarks {

constexpr ushort kTab = 0x00BB; // »
constexpr ushort kFullWidthSpace = 0x25A1; // □
constexpr ushort kLineEnd = 0x2193; // ↓
constexpr ushort kDocumentEnd = 0x2190; // ←

/// The character that is marked.
constexpr ushort kMarkedSpace = 0x3000;

struct Options {
    bool tabs = false;
    bool fullWidthSpaces = false;
    /// The ends of lines and the end of the document.
    bool lineEnds = false;
};

struct Mark {
    /// UTF-16 index of the marked character.
    int position;
    QChar sign;
};

/// The marks for the characters of text from index from up to, not including,
/// index to; both are moved into the text.
QVector<Mark> inText(QStringView text, int from, int to, const Options &options);

/// Two points smaller than the text's font, at least one point, for a sign
/// below U+FEEB; the half-width signs from there on are small already.
QFont fontFor(QChar sign, const QFont &textFont);

/// A shade brighter than colour (40 more of red, green and blue, at most 255),
/// and half transparent. An invalid colour stays invalid.
QColor currentLineFill(const QColor &colour);

} // namespace TextMarks
