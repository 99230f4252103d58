#pragma once

#include <QFont>
#include <QList>
#include <QPointF>
#include <QString>
#include <QTextLayout>
#include <QTextOption>
#include <QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QTextBlock;
QT_END_NAMESPACE

/// What has to be drawn of a block: all of it or, of a very long line, the part
/// that is seen, with a small layout of its own.
///
/// A layout draws its whole line, wherever it is clipped, and asks every piece
/// of it for every x coordinate: for a generated file with a million characters
/// in one line that took 0.4 to 1.4 s a repaint, at every blink of the caret.
class LinePart {
public:
    /// From how many UTF-16 code units on only a part is drawn.
    static constexpr int kLongLine = 4096;

    /// block must be laid out, in font, and stay so as long as the object lives.
    /// left and right are the edges of what is seen, from the origin of the
    /// block's layout. A line that cannot be drawn in parts (one with Hebrew or
    /// Arabic, where the order of what is seen is not that of the text, or one
    /// in which an input method composes) is taken whole. A part has the colours
    /// that the highlighter keeps apart from the layout; a long line taken whole
    /// goes without them.
    LinePart(const QTextBlock &block, const QFont &font, qreal left, qreal right);

    const QTextLayout &layout() const { return m_own ? *m_own : m_whole; }
    /// From the origin of the block's layout to that of layout().
    QPointF offset() const { return m_offset; }

    /// What stands in layout(): with what an input method is composing.
    const QString &text() const { return m_text; }
    /// The index in the block of the first character of text().
    int from() const { return m_from; }
    bool reachesEnd() const { return m_reachesEnd; }

    /// The pieces of formats, which count from the block's start, that lie in
    /// this part, counted from its start.
    QVector<QTextLayout::FormatRange> cut(const QVector<QTextLayout::FormatRange> &formats) const;

private:
    void takePart(int from, int to);
    void layOut(const QTextLine &line, const QFont &font,
                const QVector<QTextLayout::FormatRange> &colours);
    void layOutWithStops(const QVector<qreal> &stops, qreal scale);
    QVector<qreal> gridOfStops(const QTextLine &line, qreal x, qreal width) const;
    bool hasDoubtfulTab(qreal width) const;
    QVector<qreal> askedStops(const QTextLine &line, qreal x) const;

    const QTextLayout &m_whole;
    std::unique_ptr<QTextLayout> m_own;
    QPointF m_offset;
    QString m_text;
    int m_from = 0;
    bool m_reachesEnd = true;
};
