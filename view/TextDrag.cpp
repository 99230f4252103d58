#include "view/TextDrag.h"

#include <QApplication>
#include <QDrag>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextDocumentFragment>

#include <utility>

TextDrag::TextDrag(QPlainTextEdit *view, Contents contents)
    : QObject(view)
    , m_view(view)
    , m_contents(std::move(contents))
    , m_runner([](QDrag *drag, Qt::DropActions offered) { drag->exec(offered); })
{
    view->viewport()->installEventFilter(this);
}

bool TextDrag::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        notePress(*static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        m_pressed = QTextCursor();
        break;
    case QEvent::MouseMove:
        if (takeMove(*static_cast<QMouseEvent *>(event)))
            return true;
        break;
    case QEvent::Drop:
        if (takeDrop(static_cast<QDropEvent *>(event)))
            return true;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void TextDrag::notePress(const QMouseEvent &event)
{
    // With Shift the press extends the selection.
    const bool mayDrag = event.button() == Qt::LeftButton && event.modifiers() != Qt::ShiftModifier;
    m_pressed = mayDrag ? m_view->textCursor() : QTextCursor();
    m_pressPlace = event.pos();
}

/// A press beside the selection has replaced it by now.
bool TextDrag::isPressedOnSelection() const
{
    const QTextCursor now = m_view->textCursor();
    return m_pressed.hasSelection() && m_pressed.anchor() == now.anchor()
        && m_pressed.position() == now.position();
}

/// The view would begin to scroll at a step that is short but ends outside, so it
/// gets none of them.
bool TextDrag::takeMove(const QMouseEvent &event)
{
    if (!event.buttons().testFlag(Qt::LeftButton) || !isPressedOnSelection())
        return false;
    const QPoint way = event.pos() - m_pressPlace;
    if (way.manhattanLength() > QApplication::startDragDistance())
        run();
    return true;
}

void TextDrag::run()
{
    auto *drag = new QDrag(m_view->viewport());
    drag->setMimeData(m_contents());
    forgetPressInView();
    m_isRunning = true;
    const QPointer<TextDrag> self(this);
    m_runner(drag, Qt::CopyAction);
    // The window may have been closed meanwhile.
    if (self)
        m_isRunning = false;
}

/// The view waits for a step to drag on, or for the release, which would take the selection
/// away. A press of another button is all that makes it give up both.
void TextDrag::forgetPressInView()
{
    m_pressed = QTextCursor();
    QMouseEvent press(QEvent::MouseButtonPress, m_pressPlace, Qt::RightButton, Qt::RightButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(m_view->viewport(), &press);
    QMouseEvent release(QEvent::MouseButtonRelease, m_pressPlace, Qt::RightButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(m_view->viewport(), &release);
}

bool TextDrag::takeDrop(QDropEvent *event)
{
    const bool isCopy = event->keyboardModifiers().testFlag(Qt::ControlModifier);
    if (!m_isRunning || isCopy || m_view->isReadOnly())
        return false;
    moveSelectionTo(m_view->cursorForPosition(event->pos()));
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The view still shows where the text would go, and may be scrolling.
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(m_view->viewport(), &leave);
    return true;
}

void TextDrag::moveSelectionTo(QTextCursor target)
{
    QTextCursor dragged = m_view->textCursor();
    if (target.position() >= dragged.selectionStart()
        && target.position() <= dragged.selectionEnd())
        return;
    const QTextDocumentFragment text = dragged.selection();
    target.beginEditBlock();
    dragged.removeSelectedText();
    target.insertFragment(text);
    target.endEditBlock();
    m_view->setTextCursor(target);
    m_view->ensureCursorVisible();
}
