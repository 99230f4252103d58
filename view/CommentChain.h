#pragma once

#include "view/CommentScanner.h"

#include <QTextDocument>
#include <QVector>

#include <cstddef>
#include <vector>

/// The block comments that each line of a document leaves open, worked out from
/// the first line on as far as somebody asked. Keeps the states of the lines'
/// blocks: 1 when a line ends inside a block comment, else -1.
///
/// Takes memory in proportion to the lines, however deep the comments nest: a
/// language takes every line of a text for a start when nothing ends one.
class CommentChain {
public:
    /// Forgets everything, and the state of every block of document.
    void clear(QTextDocument &document);
    /// Forgets what was worked out for line, counted from 0, and all after it.
    void cutFrom(int line);
    /// Works out the lines up to and including line.
    void extendTo(const QTextDocument &document, const CommentScanner &scanner, int line);

    /// How many comments the lines before line leave open; they have to be worked
    /// out.
    int depthBefore(int line) const { return lineBefore(line).depth; }
    /// How many line leaves open; it has to be worked out.
    int depthAfter(int line) const { return depthBefore(line + 1); }
    /// What line leaves open, of each the number of the line it began in, counted
    /// from 1, the innermost last; line has to be worked out. Takes time in
    /// proportion to the depth.
    QVector<int> openAfter(int line) const;

    /// Of the lines worked out, those that end inside a comment.
    int linesInside() const { return m_linesInside; }
    /// The elements kept for the lines worked out.
    std::size_t elements() const { return m_lines.size() + m_comments.size(); }

private:
    /// A comment that its own line left open.
    struct Comment {
        int line = 0; ///< from 0
        int outer = kNone; ///< the place of the comment around it
    };
    struct LineEnd {
        int innermost = kNone; ///< the place in m_comments
        int depth = 0;
    };
    static constexpr int kNone = -1;

    LineEnd lineBefore(int line) const;
    LineEnd endOf(int line, const LineEnd &before, const CommentScanner::OpenComments &open);

    std::vector<LineEnd> m_lines;
    /// In the order of their lines. Lines share them: each is written once and
    /// stays when it is closed, for the lines inside it.
    std::vector<Comment> m_comments;
    int m_linesInside = 0;
};
