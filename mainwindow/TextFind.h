#pragma once

#include <QRegExp>
#include <QString>
#include <QTextCursor>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
class QTextBlock;
QT_END_NAMESPACE

/// Finds a text in a view, from the cursor on and around the end up to the line that
/// the cursor is in, a while at a time: a million lines take longer than a window may
/// be silent.
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

    /// Looks at one line at least, and at more for about as many milliseconds. An
    /// empty match is none.
    Result step(int milliseconds);

    /// Whether the view's cursor is where it was at the start.
    bool isCursorUntouched() const;

    /// Selects the place that was found and scrolls to it.
    void select() const;

private:
    struct Match;

    bool isForward() const { return m_direction == Direction::Forward; }
    Match matchIn(const QTextBlock &block);
    QTextBlock blockAfter(const QTextBlock &block);

    QPlainTextEdit *const m_view;
    const Direction m_direction;
    QRegExp m_pattern;
    Result m_result = Result::Searching;
    int m_anchor = 0; // of the cursor at the start
    int m_position = 0;
    int m_startBlock = 0;
    int m_block = 0; // the next one to look at
    int m_limit = 0; // in it: where a match may begin, or backward end; UTF-16 units
    bool m_wrapped = false;
    QTextCursor m_place;
};
