#pragma once

#include <QString>

namespace Message {

/// value as an error message shows it: in quotes, with the backslash doubled
/// and every unsafe character as \xHH or \uHHHH, so that the message stays one
/// line and says what stands in value.
QString quoted(const QString &value);

/// Whether c can end a line, move the cursor or turn the direction of what
/// follows: C0 and C1 controls, U+2028, U+2029 and the marks of bidirectional
/// text. Surrogates are not.
bool isUnsafe(QChar c);

/// Whether a surrogate pair stands at index of text.
bool isPairAt(const QString &text, int index);

} // namespace Message
