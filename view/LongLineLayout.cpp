#include "view/LongLineLayout.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

LongLineLayout::LongLineLayout(QTextDocument *document, int mostKept)
    : QPlainTextDocumentLayout(document), m_mostKept(mostKept)
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
    // Only the end of the line was put there, and is marked in another way.
    const bool isOnlyEnd = charsRemoved == 0 && charsAdded > 0
        && from == first.position() + first.length() - 1 && isAsLaidOut(first);
    if (isOnlyEnd) {
        QPlainTextDocumentLayout::documentChanged(from + 1, 0, charsAdded - 1);
        emit updateBlock(first);
        return;
    }
    if (first.length() > kLongLine)
        keepShape(first);
    const int end = endOfChange(from, charsRemoved, charsAdded);
    QPlainTextDocumentLayout::documentChanged(from, 0, end - from);
}

/// The base class takes all lines up to this one for changed. It adds what was
/// removed to what was added and so reaches into lines further down, which are as
/// they were; but where the last thing removed was the beginning of a line, that
/// line is not.
int LongLineLayout::endOfChange(int from, int charsRemoved, int charsAdded) const
{
    const int end = from + charsRemoved + charsAdded;
    QTextBlock block = document()->findBlock(from + charsAdded);
    if (block.position() < from + charsAdded)
        block = block.next();
    for (; block.isValid() && block.position() < end; block = block.next()) {
        if (block.position() > from && isAsLaidOut(block))
            return block.position();
    }
    return end;
}

void LongLineLayout::keepShape(const QTextBlock &block) const
{
    block.layout()->setCacheEnabled(true);
    const auto isOfBlock = [&block](const Kept &kept) {
        return kept.block == block.fragmentIndex();
    };
    m_kept.erase(std::remove_if(m_kept.begin(), m_kept.end(), isOfBlock), m_kept.end());
    m_kept.push_back({block.fragmentIndex(), block.blockNumber(), block.text()});
}

/// By its text: a block may get another line's, layout and all, when one is removed.
bool LongLineLayout::isAsLaidOut(const QTextBlock &block) const
{
    if (block.length() <= kLongLine || block.layout()->lineCount() == 0)
        return false;
    return std::any_of(m_kept.begin(), m_kept.end(), [&block](const Kept &kept) {
        return kept.block == block.fragmentIndex() && kept.text == block.text();
    });
}

/// Only while the text changes: who asks for a rectangle may be holding on to a
/// layout.
void LongLineLayout::dropOldShapes()
{
    int units = 0;
    std::size_t kept = 0;
    for (; kept < m_kept.size(); ++kept) {
        units += m_kept[m_kept.size() - 1 - kept].text.size() + 1;
        if (units > m_mostKept && kept > 0)
            break;
    }
    while (m_kept.size() > kept) {
        const QTextBlock block = document()->findBlockByNumber(m_kept.front().line);
        if (block.isValid() && block.fragmentIndex() == m_kept.front().block)
            block.layout()->clearLayout();
        m_kept.pop_front();
    }
}
