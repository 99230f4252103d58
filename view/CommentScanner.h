#pragma once

#include "view/StringLiterals.h"

#include <QRegExp>
#include <QString>

#include <vector>

/// What marks the comments of a language.
struct CommentMarkers {
    /// Begins a comment that ends with its line. Empty without one.
    QRegExp singleLine;
    // Around a comment that may span lines.
    QRegExp multiLineStart;
    QRegExp multiLineEnd;
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
    /// One line, and the first text like a single-line comment's marker at or
    /// behind the place that was asked for last: looking for it again from each
    /// comment of a long line would take the square of its length.
    struct Line {
        const QString &text;
        int nextSingleLine = kNotSearched;
        static constexpr int kNotSearched = -2;
    };

    int nextSingleLine(Line &line, int from) const;
    TextSpan find(const QRegExp &marker, Line &line, int from,
                  StringLiterals::Context context) const;
    TextSpan findStart(Line &line, int from) const;
    TextSpan findEnd(Line &line, int from) const;

    CommentMarkers m_markers;
    StringLiterals m_literals;
};
