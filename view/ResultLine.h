#pragma once

#include <QString>

/// The lines of the result text as they are read back: what the user selects
/// there may be a file line ("::" and the path), a hit line under it (see
/// HitString) or any other text, such as the summary.
namespace ResultLine {

enum class Kind { None, File, Hit };

/// Told by the first character alone: ":" begins a file line, a blank a hit line.
Kind kind(const QString &text);

/// The text as one line of the view: for a path, whatever its name, or a line that
/// holds one. A line feed, or another character that a text document takes for the
/// end of a paragraph, could otherwise make a file's name look like a further
/// line. Each becomes a lone low surrogate (U+DC0A for a line feed) from below
/// those of NativePath.
QString withoutBreaks(const QString &text);

/// A file line withoutBreaks(), and a hit line with "␤" (U+2424) for each of these
/// characters: what a file holds must not look like the next file's line. Any other
/// line stays as it is.
QString onOneLine(const QString &line);

/// Text of a file line from its third character on, with the characters that
/// withoutBreaks() replaced put back; empty when there is none.
QString pathOf(const QString &fileLine);

/// Where a result line points to. Both count from 1 in what the engine writes;
/// in a line that was edited, a number that cannot be read is 0.
struct Place {
    int line = 1;
    int column = 1;
};

/// The two numbers of a hit line; line 1, column 1 for a file line.
Place placeOf(const QString &resultLine);

/// Whether the upward search for the file line that heads a hit ends at a line
/// that begins so. The search also ends at the first line of the text. A null
/// character stands for a line that is beyond the text; an empty line ends
/// nothing.
bool endsUpwardSearch(QChar first, QChar second);

} // namespace ResultLine
