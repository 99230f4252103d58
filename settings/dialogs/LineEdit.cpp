#include "settings/dialogs/LineEdit.h"

#include <QKeyEvent>
#include <QToolButton>

LineEdit::LineEdit(QWidget *parent) : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    auto *clearButton = findChild<QToolButton *>();
    clearButton->setToolTip(QStringLiteral("入力欄クリア"));
    // Connected after the field's own handler, so the text is cleared by then.
    connect(clearButton, &QToolButton::clicked, this, &LineEdit::returnPressed);
}

void LineEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    emit receivedFocus();
}

void LineEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return) {
        emit lineEditReturn();
        event->accept();
        return;
    }
    if (event->modifiers() == Qt::AltModifier && emitSwitchSignal(*event)) {
        event->ignore();
        return;
    }
    if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Up)
        emit lineEditUpDown(-1);
    else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Down)
        emit lineEditUpDown(1);
    QLineEdit::keyPressEvent(event);
}

bool LineEdit::emitSwitchSignal(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_O:
        emit CaseChange();
        return true;
    case Qt::Key_W:
        emit WordChange();
        return true;
    case Qt::Key_BracketLeft:
        emit RegexpChange();
        return true;
    default:
        return false;
    }
}
