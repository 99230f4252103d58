#pragma once

#include <QPlainTextDocumentLayout>

#include <deque>

/// Lays out the lines of a text view as its base class does, but a very long one
/// as rarely as can be: once for each change of its text.
///
/// Shaping a million characters takes some 0.15 s. The base class throws the
/// result away, so that the next question for an x coordinate shapes them again;
/// and it does all of it once more when a line is appended below. Belongs to the
/// document, as any layout does.
class LongLineLayout : public QPlainTextDocumentLayout {
    Q_OBJECT

public:
    /// From how many UTF-16 code units on a line's shape is kept.
    static constexpr int kLongLine = 16 * 1024;
    /// UTF-16 code units of all the lines whose shapes are kept while the text
    /// changes, at some 30 bytes each; one line is kept whatever its length.
    static constexpr int kMostKept = 8 * 1024 * 1024;

    explicit LongLineLayout(QTextDocument *document);

    QRectF blockBoundingRect(const QTextBlock &block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    void keepShape(const QTextBlock &block) const;
    void dropOldShapes();

    /// Numbers of the lines, the last one laid out at the end. Lines that have moved
    /// since are not looked for: another one's shape may be dropped, or none.
    mutable std::deque<int> m_kept;
    /// Characters of the document when a change was told last.
    int m_reportedLength = 0;
};
