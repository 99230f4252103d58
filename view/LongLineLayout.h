#pragma once

#include <QPlainTextDocumentLayout>
#include <QString>

#include <deque>

QT_BEGIN_NAMESPACE
class QTextBlock;
QT_END_NAMESPACE

/// Lays out the lines of a text view as its base class does, but a very long one
/// as rarely as can be: once for each change of its text.
///
/// Shaping a million characters takes some 0.2 s. The base class throws the result
/// away, so that the next question for an x coordinate shapes them again; and it
/// does all of it once more for each change in a line beside them. Belongs to the
/// document, as any layout does.
class LongLineLayout : public QPlainTextDocumentLayout {
    Q_OBJECT

public:
    /// From how many UTF-16 code units on a line's shape is kept.
    static constexpr int kLongLine = 16 * 1024;
    /// UTF-16 code units of all the lines whose shapes are kept while the text
    /// changes, at some 30 bytes each; one line is kept whatever its length.
    static constexpr int kMostKept = 8 * 1024 * 1024;

    explicit LongLineLayout(QTextDocument *document, int mostKept = kMostKept);

    QRectF blockBoundingRect(const QTextBlock &block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    struct Kept {
        int block; ///< its index in the document, which tells it from any other
        int line; ///< its number then; not looked for when it has moved since
        QString text;
    };

    void keepShape(const QTextBlock &block) const;
    bool isAsLaidOut(const QTextBlock &block) const;
    int endOfChange(int from, int charsRemoved, int charsAdded) const;
    void dropOldShapes();

    const int m_mostKept;
    mutable std::deque<Kept> m_kept; // the one laid out last at the end
    /// Characters of the document when a change was told last.
    int m_reportedLength = 0;
};
