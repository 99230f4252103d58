#pragma once

#include "view/TextMarks.h"

#include <QAbstractTextDocumentLayout>
#include <QColor>
#include <QFont>
#include <QRectF>
#include <QTextLayout>
#include <QVector>

class LinePart;

QT_BEGIN_NAMESPACE
class QPainter;
class QTextBlock;
QT_END_NAMESPACE

/// Paints the lines of a text view: text, selections, marks and caret. It paints
/// one block at a time and looks at no other, so the cost of a repaint is that of
/// the lines that are seen.
class BlockPainter {
public:
    struct Look {
        QFont textFont;
        TextMarks::Options marks;
        QColor tabColour;
        /// Of the marks for full-width spaces and ends of lines.
        QColor controlColour;
        QColor documentEndColour;
        QColor caretColour;
        /// Behind the current line and along its lower edge; an invalid one
        /// paints nothing.
        QColor currentLineFill;
        QColor currentLineEdge;
        int caretWidth = 1;
    };

    /// context and painter must outlive the object; clip, in the painter's
    /// coordinates, is what has to be painted.
    BlockPainter(QPainter &painter, const QAbstractTextDocumentLayout::PaintContext &context,
                 const Look &look, const QRectF &clip);

    /// Behind the text: to be called before paint() for the block with the cursor.
    void paintCurrentLine(const QRectF &row);

    /// block must be laid out; origin is where its layout's origin goes.
    void paint(const QTextBlock &block, const QPointF &origin);

private:
    QVector<QTextLayout::FormatRange> selectionsIn(const QTextBlock &block) const;
    void paintMarks(const LinePart &part, const QPointF &origin);
    void paintEnd(const LinePart &part, const QPointF &origin, bool ofDocument);
    void paintCaret(const QTextBlock &block, const LinePart &part, const QPointF &origin);
    /// Centred in width, or at x when width is 0.
    void paintSign(QChar sign, const QColor &colour, const QPointF &baseline, qreal width);

    QPainter &m_painter;
    const QAbstractTextDocumentLayout::PaintContext &m_context;
    const Look m_look;
    const QRectF m_clip;
};
