#pragma once

#include <QStringView>

/// Columns that the text takes in a view with a fixed-width Japanese font, as
/// the external editor counts them. Unlike the column of a hit (HitString), it
/// knows half-width katakana.
namespace DisplayColumn {

/// The column of the tab stop after column; tabWidth below 1 counts as 1.
int nextTabStop(int column, int tabWidth);

/// Columns, from 0, that the UTF-16 code units of line before position take. A
/// tab goes on to the next tab stop; a code of 128 or more takes 2, except that
/// U+FF66..U+FF9F take 1. (U+FF61..U+FF65 are half-width as well, but count 2:
/// the editors that take this number have always been told so.) position
/// beyond the line counts as its end.
int before(QStringView line, int position, int tabWidth);

} // namespace DisplayColumn
