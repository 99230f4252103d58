#pragma once

#include <QString>

#include <functional>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

/// Shows a long text without blocking the window.
namespace PiecewiseText {

/// Replaces view's text by text, whose lines are separated by line feeds, piece
/// by piece with events processed in between; a short text at once. Stops when
/// isCancelled, asked after each of these, says that another text has been
/// shown meanwhile. Returns whether the text is there; it is then not modified
/// and cannot be undone, and the cursor is at its start.
bool show(QPlainTextEdit &view, const QString &text, const std::function<bool()> &isCancelled);

} // namespace PiecewiseText
