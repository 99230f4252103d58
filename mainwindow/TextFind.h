#pragma once

#include "engine/LineFinder.h"

#include <QRegExp>
#include <QString>
#include <QTextCursor>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
class QTextBlock;
QT_END_NAMESPACE

/// Finds a text in a view, from the cursor on and around the end up to the line that
/// the cursor is in, a while at a time: a million lines take longer than a window may
/// be silent. So may one long line: LineFinder goes through it piece by piece and says
/// what becomes of a match that is longer than a piece.
///
/// Between two steps the view's text may grow or change; lines are looked at as they
/// are then.
class TextFind {
public:
    struct Options {
        bool ignoreCase = true;
        bool word = false;
        bool regexp = false;
    };

    enum class Direction { Forward, Backward };

    enum class Result {
        Searching, ///< a further step goes on
        Found,
        FoundAfterWrap, ///< only on the other side of the text's end
        NotFound,
        InvalidPattern
    };

    /// view is not owned and must outlive this object.
    TextFind(QPlainTextEdit *view, const QString &text, const Options &options,
             Direction direction);

    /// What is looked for; invalid when text is no valid pattern or beyond
    /// PatternLimits.
    static QRegExp pattern(const QString &text, const Options &options);

    Direction direction() const { return m_direction; }

    /// Looks at one line, or one piece of a long line, at least, and at more for about
    /// as many milliseconds. An empty match is none.
    Result step(int milliseconds);

    /// Whether the view's cursor is where it was at the start.
    bool isCursorUntouched() const;

    /// Selects the place that was found and scrolls to it.
    void select() const;

private:
    struct Place {
        int block = 0; // by its number: a block is not kept while the text may change
        int from = 0; // where a match may begin or, backward, before which; UTF-16 units
        int end = 0; // backward, where it may end
    };

    bool isForward() const { return m_direction == Direction::Forward; }
    LineFinder::Match look(const QString &line);
    bool isThrough(const QString &line) const;
    QTextBlock blockAfter(const QTextBlock &block);

    QPlainTextEdit *const m_view;
    const Direction m_direction;
    LineFinder m_finder;
    Result m_result = Result::Searching;
    int m_anchor = 0; // of the cursor at the start
    int m_position = 0;
    int m_startBlock = 0;
    Place m_next; // to look at
    bool m_wrapped = false;
    QTextCursor m_place;
};
