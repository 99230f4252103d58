#include "view/LongLineLayout.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

LongLineLayout::LongLineLayout(QTextDocument *document) : QPlainTextDocumentLayout(document)
{
}

QRectF LongLineLayout::blockBoundingRect(const QTextBlock &block) const
{
    const bool isLong = block.isValid() && block.length() > kLongLine;
    if (isLong && block.layout()->lineCount() == 0) {
        // In the middle of an edit, at whose end the line is laid out again. A cursor
        // that moves meanwhile asks for the layout, but looks at no line of it.
        if (document()->characterCount() != m_reportedLength)
            return QRectF();
        keepShape(block);
    }
    return QPlainTextDocumentLayout::blockBoundingRect(block);
}

void LongLineLayout::documentChanged(int from, int charsRemoved, int charsAdded)
{
    m_reportedLength = document()->characterCount();
    dropOldShapes();
    const QTextBlock first = document()->findBlock(from);
    const bool isLong = first.isValid() && first.length() > kLongLine;
    // Only the end of the line was put there: what stands in it is what it was.
    const bool isUnchanged = isLong && charsRemoved == 0 && charsAdded > 0
        && from == first.position() + first.length() - 1;
    if (isUnchanged && first.layout()->lineCount() > 0) {
        QPlainTextDocumentLayout::documentChanged(from + 1, 0, charsAdded - 1);
        emit updateBlock(first); // its end is marked in another way
        return;
    }
    if (isLong)
        keepShape(first);
    // Without what was removed: the base class adds it to the length of what has
    // changed, which then reaches into lines that have not.
    QPlainTextDocumentLayout::documentChanged(from, 0, std::max(charsAdded, 1));
}

void LongLineLayout::keepShape(const QTextBlock &block) const
{
    block.layout()->setCacheEnabled(true);
    const int number = block.blockNumber();
    m_kept.erase(std::remove(m_kept.begin(), m_kept.end(), number), m_kept.end());
    m_kept.push_back(number);
}

/// Only while the text changes: who asks for a rectangle may be holding on to a
/// layout.
void LongLineLayout::dropOldShapes()
{
    int units = 0;
    std::size_t kept = 0;
    for (; kept < m_kept.size(); ++kept) {
        units += document()->findBlockByNumber(m_kept[m_kept.size() - 1 - kept]).length();
        if (units > kMostKept && kept > 0)
            break;
    }
    while (m_kept.size() > kept) {
        const QTextBlock block = document()->findBlockByNumber(m_kept.front());
        if (block.length() > kLongLine)
            block.layout()->clearLayout();
        m_kept.pop_front();
    }
}
