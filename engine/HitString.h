#pragma once

#include <QString>
#include <QStringView>

/// One hit as the result lists it: "  %1:%2:" and the line's text, line number
/// and display column right-aligned with blanks in 5 places (wider when they
/// need more).
namespace HitString {

/// Display columns (from 0) that the characters of line before position take:
/// a tab goes on to the next multiple of tabWidth (at least 1), a code below
/// 128 takes 1, any other UTF-16 code unit 2. position is in UTF-16 code units.
/// 64 bits, because a line of tabs may pass 2^31 columns.
qint64 displayColumn(QStringView line, qint64 position, int tabWidth);

/// lineNumber and column both count from 1.
QString format(qint64 lineNumber, qint64 column, QStringView line);

} // namespace HitString
