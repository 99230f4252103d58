#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextBlock>

/// Mouse steps over a text view. QTest's move presses no button.
namespace MouseSteps {

/// The middle of the character at column of line, both from 0, in the viewport.
inline QPoint placeOf(const QPlainTextEdit &view, int line, int column)
{
    QTextCursor cursor(view.document()->findBlockByNumber(line));
    cursor.setPosition(cursor.position() + column);
    const QPoint left = view.cursorRect(cursor).center();
    cursor.movePosition(QTextCursor::NextCharacter);
    const QPoint right = view.cursorRect(cursor).center();
    return left.y() == right.y() ? (left + right) / 2 : left;
}

/// Moves the mouse with the left button down.
inline void drag(const QPlainTextEdit &view, const QPoint &place)
{
    QMouseEvent move(QEvent::MouseMove, place, view.viewport()->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
}

} // namespace MouseSteps
