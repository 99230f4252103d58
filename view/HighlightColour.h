#pragma once

#include <QTextCharFormat>

#include <array>

class AppSettings;

/// What a part of a line is, and so how it looks.
enum class HighlightColour {
    BlockComment,
    LineComment,
    Keyword,
    ReservedWord,
    Value,
    FileLine,
    Find1,
    Find2,
    DoubleQuotedString,
    SingleQuotedString
};

namespace HighlightColours {

constexpr std::size_t kCount = static_cast<std::size_t>(HighlightColour::SingleQuotedString) + 1;

using Formats = std::array<QTextCharFormat, kCount>;

/// One format for each colour, in the order of the enumeration. They set nothing
/// that changes a line's measures: a view may colour what it is about to paint.
///
/// What was found is marked by its background, with black or white text,
/// whichever is easier to read on it.
Formats formats(const AppSettings &settings);

} // namespace HighlightColours
