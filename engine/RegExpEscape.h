#pragma once

#include <QString>

/// Puts a backslash before every ( ) [ ] { } ^ . $ * + ? | of text, in place.
/// A backslash itself stays as it is, so one that the user typed keeps its
/// meaning as an escape.
void escapeRegExpMetaChars(QString &text);
