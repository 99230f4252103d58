#pragma once

#include <QString>

/// The lines of the result text as they are read back: what the user selects
/// there may be a file line ("::" and the path), a hit line under it (see
/// HitString) or any other text, such as the summary.
namespace ResultLine {

enum class Kind { None, File, Hit };

/// Told by the first character alone: ":" begins a file line, a blank a hit line.
Kind kind(const QString &text);

/// Text of a file line from its third character on; empty when there is none.
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
