#pragma once

#include "view/CommentChain.h"
#include "view/HighlightColour.h"
#include "view/HighlightSyntax.h"

#include <QRegExp>
#include <QString>
#include <QSyntaxHighlighter>
#include <QVector>

#include <limits>

QT_BEGIN_NAMESPACE
class QTextBlock;
QT_END_NAMESPACE

/// Colours the lines of a view's document as HighlightSyntax says. Each line that
/// is coloured gets a BlockData. User interface thread only.
class Highlighter : public QSyntaxHighlighter {
    Q_OBJECT

signals:
    /// Lines on screen may have outdated colours for another reason than a change
    /// of their own text; sent in mode OnDemand only. The view repaints, and has
    /// them coloured anew.
    void coloursOutdated();

public:
    enum class Mode {
        /// Every line has its colours as soon as its text is there.
        Everything,
        /// A line has the same colours, but only once colourLines() has asked for
        /// it: lines that nobody looks at cost next to nothing. See
        /// VisibleColouring.
        OnDemand
    };

    /// Belongs to document, which stays its document. Colours nothing until a
    /// language is set, be it none.
    Highlighter(QTextDocument *document, bool isResultView, Mode mode = Mode::Everything);

    /// See HighlightSyntax::setLanguage. What was found is marked no longer.
    void setLanguage(const QString &suffix, const QString &languageName = QString());

    /// Marks the matches of pattern; an empty one marks nothing. What a second
    /// pattern marked stays.
    void setFind(const QRegExp &pattern);
    void setFind(const QRegExp &pattern1, const QRegExp &pattern2);

    /// Takes the colours of AppSettings anew; the constructor takes them first.
    void reloadColours();

    /// From now on the colours of a line of kLongLine UTF-16 code units or more go
    /// to its BlockData and not to its layout; who paints has to look for them
    /// there. For mode OnDemand.
    ///
    /// A layout takes time for each piece of colour in proportion to the length
    /// of the line: a repaint of a million characters of Japanese took 3.6 s, and
    /// 11 s at their end; apart, a tenth of a second.
    void keepLongLinesApart() { m_longLinesApart = true; }
    static constexpr int kLongLine = 16384;

    static constexpr int kWholeLine = std::numeric_limits<int>::max();

    /// Brings the colours of the lines first to last, counted from 0, up to date,
    /// of each at least the first units UTF-16 code units (a line of a megabyte
    /// with all its colours is slow to paint); lines beyond the text are passed
    /// over. The document sends no signal and is as modified as before. Not to be
    /// called while it sends contentsChange.
    ///
    /// In mode OnDemand what was found is looked for no longer than about a turn. The
    /// lines that are left keep the colours they have, and coloursOutdated() is sent
    /// from the event loop, for the next call.
    void colourLines(int first, int last, int units = kWholeLine);

    /// How long what was found is looked for at a time, in milliseconds; with 0 by one
    /// look (see LineFinder).
    void setTurn(int milliseconds) { m_turnMilliseconds = milliseconds; }
    static constexpr int kTurnMilliseconds = 40;

    const HighlightSyntax &syntax() const { return m_syntax; }

    /// Lines that end inside a block comment.
    int commentBlocks();
    /// The block comments that line, counted from 0, leaves open: of each the
    /// number of the line it began in, counted from 1; the innermost last.
    QVector<int> openComments(int line);

protected:
    void highlightBlock(const QString &text) override;

private:
    void onContentsChange(int position, int added);
    void recolour();
    void recolourLaterLines();
    void forgetColours(int position, int end);
    bool isOutdated(const QTextBlock &block, int units) const;
    int openBefore(int line) const;
    void colour(QTextBlock block, const QString &text);
    bool isKeptApart(const QTextBlock &block) const;
    bool knowsFinds(const QString &text, int units, qint64 *nanosecondsLeft) const;
    void goOnLater();

    HighlightSyntax m_syntax;
    CommentChain m_chain;
    HighlightColours::Formats m_formats;
    const Mode m_mode;
    /// A language has been set.
    bool m_active = false;
    bool m_colouringLines = false;
    /// Of each line, as long as colourLines() runs.
    int m_units = kWholeLine;
    bool m_laterLinesScheduled = false;
    bool m_goesOnLater = false;
    int m_turnMilliseconds = kTurnMilliseconds;
    bool m_longLinesApart = false;
    /// Grows whenever all lines are to be coloured anew.
    quint32 m_colouring = 1;
};
