#pragma once

#include "view/CommentScanner.h"

#include <QTextDocument>

#include <vector>

/// The block comments that each line of a document leaves open, worked out from
/// the first line on as far as somebody asked. Keeps the states of the lines'
/// blocks: 1 when a line ends inside a block comment, else -1.
class CommentChain {
public:
    using OpenComments = CommentScanner::OpenComments;

    /// Forgets everything, and the state of every block of document.
    void clear(QTextDocument &document);
    /// Forgets what was worked out for line, counted from 0, and all after it.
    void cutFrom(int line);
    /// Works out the lines up to and including line.
    void extendTo(const QTextDocument &document, const CommentScanner &scanner, int line);

    /// What the lines before line leave open; they have to be worked out.
    const OpenComments &openBefore(int line) const;
    /// What line leaves open; it has to be worked out.
    const OpenComments &openAfter(int line) const { return openBefore(line + 1); }
    /// Of the lines worked out, those that end inside a comment.
    int linesInside() const { return m_linesInside; }

private:
    // Lines in one comment share one vector.
    std::vector<OpenComments> m_openAfter;
    int m_linesInside = 0;
};
