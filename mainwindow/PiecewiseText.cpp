#include "mainwindow/PiecewiseText.h"

#include "view/TextAppender.h"

#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextDocument>

#include <algorithm>

namespace {

/// UTF-16 code units that are shown at once, which takes some tens of
/// milliseconds.
constexpr int kPiece = 256 * 1024;

/// Where the piece that begins at start ends: before a line feed, or at the end.
int endOfPiece(const QString &text, int start)
{
    const int end = text.indexOf(QLatin1Char('\n'), std::min(start + kPiece, text.size()));
    return end < 0 ? text.size() : end;
}

} // namespace

PiecewiseText::PiecewiseText(QPlainTextEdit *view, QObject *parent) : QObject(parent), m_view(view)
{
    connect(&m_timer, &QTimer::timeout, this, &PiecewiseText::showNextPiece);
}

void PiecewiseText::show(const QString &text)
{
    cancel();
    m_text = text;
    const int end = endOfPiece(m_text, 0);
    {
        const QSignalBlocker blocker(m_view);
        m_view->setPlainText(m_text.left(end));
    }
    m_timer.start(0);
    finishPiece(end);
}

void PiecewiseText::showNextPiece()
{
    const int end = endOfPiece(m_text, m_start);
    {
        const QSignalBlocker blocker(m_view);
        TextAppender::append(*m_view, m_text.mid(m_start, end - m_start).split(QLatin1Char('\n')));
    }
    finishPiece(end);
}

void PiecewiseText::finishPiece(int end)
{
    m_view->document()->setModified(false);
    m_view->document()->clearUndoRedoStacks();
    m_start = end + 1;
    if (end < m_text.size())
        return;
    cancel();
    emit finished();
}

void PiecewiseText::cancel()
{
    m_timer.stop();
    m_text.clear();
    m_start = -1;
}
