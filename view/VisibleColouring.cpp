#include "view/VisibleColouring.h"

#include "view/Highlighter.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

VisibleColouring::VisibleColouring(QPlainTextEdit *view, Highlighter *highlighter)
    : QObject(view), m_view(view), m_highlighter(highlighter)
{
    view->viewport()->installEventFilter(this);
    connect(highlighter, &Highlighter::coloursOutdated, view->viewport(),
            QOverload<>::of(&QWidget::update));
}

bool VisibleColouring::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched == m_view->viewport())
        colourVisibleLines();
    return QObject::eventFilter(watched, event);
}

void VisibleColouring::colourVisibleLines()
{
    // Worked out without asking where a character stands: that would lay out long
    // lines once more. The scroll bars count lines and pixels.
    const QTextDocument &document = *m_view->document();
    const QFontMetrics metrics(document.defaultFont());
    const int first =
        document.findBlockByLineNumber(m_view->verticalScrollBar()->value()).blockNumber();
    const int lines = m_view->viewport()->height() / std::max(metrics.ascent(), 1) + 1;
    m_highlighter->colourLines(first, first + lines, visibleUnits());
}

int VisibleColouring::visibleUnits() const
{
    if (m_view->lineWrapMode() != QPlainTextEdit::NoWrap)
        return Highlighter::kWholeLine;
    const QFontMetrics metrics(m_view->document()->defaultFont());
    // Half the narrowest character leaves room for fallback fonts.
    const int narrowest = std::max(1, metrics.horizontalAdvance(QLatin1Char('i')) / 2);
    const int rightEdge = m_view->horizontalScrollBar()->value() + m_view->viewport()->width();
    // In steps that double: someone who scrolls to the right pays for few of them.
    constexpr int kFirstStep = 4096;
    constexpr int kLastStep = 1 << 30;
    int units = kFirstStep;
    while (units < rightEdge / narrowest && units < kLastStep)
        units *= 2;
    return units;
}
