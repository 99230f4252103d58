#include "mainwindow/PiecewiseText.h"

#include "view/TextAppender.h"

#include <QCoreApplication>
#include <QPlainTextEdit>
#include <QTextDocument>

#include <algorithm>

namespace PiecewiseText {

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

bool show(QPlainTextEdit &view, const QString &text, const std::function<bool()> &isCancelled)
{
    int end = endOfPiece(text, 0);
    view.setPlainText(text.left(end));
    while (end < text.size()) {
        QCoreApplication::processEvents();
        if (isCancelled())
            return false;
        const int start = end + 1;
        end = endOfPiece(text, start);
        TextAppender::append(view, text.mid(start, end - start).split(QLatin1Char('\n')));
    }
    view.document()->setModified(false);
    view.document()->clearUndoRedoStacks();
    return true;
}

} // namespace PiecewiseText
