#include "view/CommentChain.h"

#include <QTextBlock>

void CommentChain::clear(QTextDocument &document)
{
    cutFrom(0);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        block.setUserState(-1);
}

void CommentChain::cutFrom(int line)
{
    while (m_lines.size() > static_cast<std::size_t>(line)) {
        m_linesInside -= m_lines.back().depth > 0 ? 1 : 0;
        m_lines.pop_back();
    }
    while (!m_comments.empty() && m_comments.back().line >= line)
        m_comments.pop_back();
}

void CommentChain::extendTo(const QTextDocument &document, const CommentScanner &scanner, int line)
{
    int next = static_cast<int>(m_lines.size());
    QTextBlock block = document.findBlockByNumber(next);
    for (; next <= line && block.isValid(); ++next, block = block.next()) {
        const LineEnd before = lineBefore(next);
        CommentScanner::OpenComments open = {before.depth};
        scanner.blockComments(block.text(), open);
        block.setUserState(open.isEmpty() ? -1 : 1);
        m_linesInside += open.isEmpty() ? 0 : 1;
        m_lines.push_back(endOf(next, before, open));
    }
}

CommentChain::LineEnd CommentChain::lineBefore(int line) const
{
    return line == 0 ? LineEnd() : m_lines.at(static_cast<std::size_t>(line) - 1);
}

CommentChain::LineEnd CommentChain::endOf(int line, const LineEnd &before,
                                          const CommentScanner::OpenComments &open)
{
    LineEnd end = before;
    for (; end.depth > open.before; --end.depth)
        end.innermost = m_comments.at(static_cast<std::size_t>(end.innermost)).outer;
    for (; end.depth < open.count(); ++end.depth) {
        m_comments.push_back({line, end.innermost});
        end.innermost = static_cast<int>(m_comments.size()) - 1;
    }
    return end;
}

QVector<int> CommentChain::openAfter(int line) const
{
    const LineEnd end = lineBefore(line + 1);
    QVector<int> lines(end.depth);
    int comment = end.innermost;
    for (int depth = end.depth; depth > 0; --depth) {
        const Comment &each = m_comments.at(static_cast<std::size_t>(comment));
        lines[depth - 1] = each.line + 1;
        comment = each.outer;
    }
    return lines;
}
