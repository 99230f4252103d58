#include "view/BlockPainter.h"

#include "view/LinePart.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>

#include <algorithm>

BlockPainter::BlockPainter(QPainter &painter,
                           const QAbstractTextDocumentLayout::PaintContext &context,
                           const Look &look, const QRectF &clip)
    : m_painter(painter), m_context(context), m_look(look), m_clip(clip)
{
}

void BlockPainter::paintCurrentLine(const QRectF &row)
{
    if (m_look.currentLineFill.isValid())
        m_painter.fillRect(row, m_look.currentLineFill);
    if (m_look.currentLineEdge.isValid()) {
        const QRectF edge(row.left(), row.bottom() - 1, row.width(), 1);
        m_painter.fillRect(edge, m_look.currentLineEdge);
    }
}

void BlockPainter::paint(const QTextBlock &block, const QPointF &origin)
{
    const LinePart part(block, m_look.textFont, m_clip.left() - origin.x(),
                        m_clip.right() - origin.x());
    const QPointF partOrigin = origin + part.offset();
    m_painter.setPen(m_context.palette.color(QPalette::Text));
    part.layout().draw(&m_painter, partOrigin, part.cut(selectionsIn(block)), m_clip);
    paintMarks(part, partOrigin);
    if (part.reachesEnd())
        paintEnd(part, partOrigin, !block.next().isValid());
    paintCaret(block, part, partOrigin);
}

QVector<QTextLayout::FormatRange> BlockPainter::selectionsIn(const QTextBlock &block) const
{
    QVector<QTextLayout::FormatRange> ranges;
    for (const QAbstractTextDocumentLayout::Selection &selection : m_context.selections) {
        const int start = std::max(selection.cursor.selectionStart() - block.position(), 0);
        const int end =
            std::min(selection.cursor.selectionEnd() - block.position(), block.length());
        if (start < end)
            ranges.append({start, end - start, selection.format});
    }
    return ranges;
}

void BlockPainter::paintMarks(const LinePart &part, const QPointF &origin)
{
    if (!m_look.marks.tabs && !m_look.marks.fullWidthSpaces)
        return;
    for (int i = 0; i < part.layout().lineCount(); ++i) {
        const QTextLine line = part.layout().lineAt(i);
        const int left = line.xToCursor(m_clip.left() - origin.x(), QTextLine::CursorOnCharacter);
        const int right = line.xToCursor(m_clip.right() - origin.x(), QTextLine::CursorOnCharacter);
        const auto marks = TextMarks::inText(part.text(), std::min(left, right),
                                             std::max(left, right) + 1, m_look.marks);
        for (const TextMarks::Mark &mark : marks) {
            const qreal x = line.cursorToX(mark.position);
            const bool tab = mark.sign == QChar(TextMarks::kTab);
            const qreal width = tab ? 0 : line.cursorToX(mark.position + 1) - x;
            paintSign(mark.sign, tab ? m_look.tabColour : m_look.controlColour,
                      origin + QPointF(x, line.y() + line.ascent()), width);
        }
    }
}

void BlockPainter::paintEnd(const LinePart &part, const QPointF &origin, bool ofDocument)
{
    if (!m_look.marks.lineEnds || part.layout().lineCount() == 0)
        return;
    const QTextLine line = part.layout().lineAt(part.layout().lineCount() - 1);
    const qreal x = line.cursorToX(line.textStart() + line.textLength());
    paintSign(ofDocument ? TextMarks::kDocumentEnd : TextMarks::kLineEnd,
              ofDocument ? m_look.documentEndColour : m_look.controlColour,
              origin + QPointF(x, line.y() + line.ascent()), 0);
}

void BlockPainter::paintCaret(const QTextBlock &block, const LinePart &part, const QPointF &origin)
{
    // While an input method composes, the context gives the place in the
    // composed text as -2 - place; -1 means that no caret is to be seen now.
    const QTextLayout &layout = part.layout();
    int position = m_context.cursorPosition - block.position();
    if (m_context.cursorPosition < -1) {
        if (layout.preeditAreaText().isEmpty())
            return;
        position = layout.preeditAreaPosition() - m_context.cursorPosition - 2;
    } else if (m_context.cursorPosition == -1 || position < 0 || position >= block.length()) {
        return;
    }
    position -= part.from();
    if (position < 0 || position > part.text().size())
        return;
    const QTextLine line = layout.lineForTextPosition(position);
    if (!line.isValid())
        return;
    const QPointF corner = origin + QPointF(line.cursorToX(position), line.y());
    m_painter.fillRect(QRectF(corner, QSizeF(m_look.caretWidth, line.height())),
                       m_look.caretColour);
}

void BlockPainter::paintSign(QChar sign, const QColor &colour, const QPointF &baseline, qreal width)
{
    const QFont font = TextMarks::fontFor(sign, m_look.textFont);
    qreal x = baseline.x();
    if (width > 0)
        x += (width - QFontMetricsF(font).horizontalAdvance(sign)) / 2;
    m_painter.setFont(font);
    m_painter.setPen(colour);
    m_painter.drawText(QPointF(x, baseline.y()), QString(sign));
    m_painter.setFont(m_look.textFont);
}
