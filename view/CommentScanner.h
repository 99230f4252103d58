#pragma once

#include "view/LinePattern.h"
#include "view/StringLiterals.h"

#include <QElapsedTimer>
#include <QString>

#include <vector>

/// What marks the comments of a language.
struct CommentMarkers {
    /// Begins a comment that ends with its line. Empty without one.
    LinePattern singleLine;
    // Around a comment that may span lines.
    LinePattern multiLineStart;
    LinePattern multiLineEnd;
};

/// Finds the comments of one line after the other.
///
/// A marker inside a string literal is none, nor is a start or end marker
/// behind a single-line comment's marker. Comments that span lines nest, by
/// these rules:
///
/// 1. A line that begins outside a comment opens one with each start marker
///    that it meets outside; further start markers inside do not count.
/// 2. A line that begins inside a comment opens one more when it has a start
///    marker and no end marker at all.
/// 3. Each end marker closes the innermost comment; while others are open, what
///    follows is still comment.
///
/// A line for which a definition's markers take longer than the patience, which a line
/// of up to LinePattern::kShortLine units never does, has no further markers.
class CommentScanner {
public:
    /// How many block comments are open. Only their number decides about a line;
    /// which ones they are would make each line cost as much as it is deep.
    struct OpenComments {
        int before = 0; ///< of those that earlier lines opened
        int here = 0; ///< of those that the line opened, inside the others

        int count() const { return before + here; }
        bool isEmpty() const { return count() == 0; }
        void open() { ++here; }
        /// Closes the innermost one; there has to be one.
        void close() { --(here > 0 ? here : before); }
    };

    CommentScanner(const CommentMarkers &markers, const StringLiterals &literals);

    /// How long the markers of one line are looked for, in milliseconds; with 0 by one
    /// look.
    void setPatience(int milliseconds) { m_patienceMilliseconds = milliseconds; }
    static constexpr int kPatienceMilliseconds = 200;

    /// The parts of the line that belong to comments of the start and end
    /// markers, those that began in earlier lines included, from left to right.
    /// open is what the lines before left open, and afterwards what this one
    /// leaves open.
    std::vector<TextSpan> blockComments(const QString &text, OpenComments &open) const;

    /// Where the line's single-line comment begins, -1 without one; blocks are
    /// the line's block comments, in which none begins.
    int lineComment(const QString &text, const std::vector<TextSpan> &blocks) const;

    /// The string literals of the line's first end characters, which are to leave
    /// out its single-line comment; a quote inside a block comment opens none.
    std::vector<StringLiteral> stringLiterals(const QString &text,
                                              const std::vector<TextSpan> &blocks, int end) const;

private:
    /// One line, and what was found in it: looking for the same marker again from each
    /// comment of a long line would take the square of its length.
    struct Line {
        const QString &text;
        LinePatternWalk singleLine;
        LinePatternWalk multiLineStart;
        LinePatternWalk multiLineEnd;
        QElapsedTimer timer; // from the second look on
        bool isGivenUp = false;
    };

    Line lineOf(const QString &text) const;
    TextSpan next(LinePatternWalk &marker, Line &line, int from) const;
    TextSpan nextOutside(LinePatternWalk &marker, Line &line, int from, int end,
                         StringLiterals::Context context) const;
    TextSpan find(LinePatternWalk &marker, Line &line, int from,
                  StringLiterals::Context context) const;
    TextSpan findStart(Line &line, int from) const;
    TextSpan findEnd(Line &line, int from) const;

    CommentMarkers m_markers;
    StringLiterals m_literals;
    int m_patienceMilliseconds = kPatienceMilliseconds;
};
