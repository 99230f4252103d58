#pragma once

#include <QRegExp>
#include <QString>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

/// Finds a text in a view, from the cursor on and around the end.
namespace TextFind {

struct Options {
    bool ignoreCase = true;
    bool word = false;
    bool regexp = false;
};

enum class Direction { Forward, Backward };

enum class Result {
    Found,
    FoundAfterWrap, ///< only on the other side of the text's end
    NotFound,
    InvalidPattern
};

/// What is looked for; invalid when text is no valid pattern or beyond
/// PatternLimits.
QRegExp pattern(const QString &text, const Options &options);

/// Selects the next place that matches and scrolls to it. An empty match is
/// none. Without one the cursor stays.
Result find(QPlainTextEdit &view, const QString &text, const Options &options, Direction direction);

} // namespace TextFind
