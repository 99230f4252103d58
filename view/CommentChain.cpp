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
    while (m_openAfter.size() > static_cast<std::size_t>(line)) {
        m_linesInside -= m_openAfter.back().isEmpty() ? 0 : 1;
        m_openAfter.pop_back();
    }
}

void CommentChain::extendTo(const QTextDocument &document, const CommentScanner &scanner, int line)
{
    int next = static_cast<int>(m_openAfter.size());
    QTextBlock block = document.findBlockByNumber(next);
    for (; next <= line && block.isValid(); ++next, block = block.next()) {
        OpenComments open = openBefore(next);
        scanner.blockComments(block.text(), next, open);
        block.setUserState(open.isEmpty() ? -1 : 1);
        m_linesInside += open.isEmpty() ? 0 : 1;
        m_openAfter.push_back(open);
    }
}

const CommentChain::OpenComments &CommentChain::openBefore(int line) const
{
    static const OpenComments none;
    return line == 0 ? none : m_openAfter.at(static_cast<std::size_t>(line) - 1);
}
