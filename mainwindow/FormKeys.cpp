#include "mainwindow/FormKeys.h"

#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

FormKeys::FormKeys(const Widgets &widgets, QObject *parent)
    : QObject(parent), m_widgets(widgets), m_lastField(widgets.keyword1)
{
    for (QWidget *field : m_widgets.inputFields) {
        field->installEventFilter(this);
        // A combo box has the focus of its line edit, which is also spoken to alone.
        if (auto *combo = qobject_cast<QComboBox *>(field))
            combo->lineEdit()->installEventFilter(this);
    }
    m_widgets.resultView->installEventFilter(this);
    if (m_widgets.preview)
        m_widgets.preview->installEventFilter(this);
    // Check boxes, buttons and spin boxes do not take Escape, nor does a window
    // whose focus went with a widget that was disabled.
    if (m_widgets.window)
        m_widgets.window->installEventFilter(this);
}

QWidget *FormKeys::fieldOf(QWidget *widget) const
{
    QWidget *parent = widget->parentWidget();
    return m_widgets.inputFields.contains(parent) ? parent : widget;
}

bool FormKeys::isInputField(QWidget *widget) const
{
    return m_widgets.inputFields.contains(widget);
}

bool FormKeys::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (widget) {
        widget = fieldOf(widget);
        switch (event->type()) {
        case QEvent::KeyPress:
            if (handleKey(widget, static_cast<const QKeyEvent &>(*event)))
                return true;
            break;
        case QEvent::InputMethod: {
            const auto &composition = static_cast<const QInputMethodEvent &>(*event);
            m_composing = composition.preeditString().isEmpty() ? nullptr : widget;
            break;
        }
        case QEvent::FocusIn:
            if (isInputField(widget))
                m_lastField = widget;
            break;
        case QEvent::FocusOut:
            // A conversion ends with the focus, not always with an event of its own.
            if (m_composing == widget
                && static_cast<const QFocusEvent &>(*event).reason() != Qt::PopupFocusReason)
                m_composing = nullptr;
            break;
        default:
            break;
        }
    }
    return QObject::eventFilter(watched, event);
}

bool FormKeys::handleKey(QWidget *widget, const QKeyEvent &event)
{
    if (widget == m_widgets.window)
        return event.key() == Qt::Key_Escape && !m_composing && handleEscape(widget, event);
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return isInputField(widget) && handleReturn(widget, event);
    case Qt::Key_Escape:
        return handleEscape(widget, event);
    case Qt::Key_K:
        if (event.modifiers() != Qt::ControlModifier)
            return false;
        moveFocus(widget);
        return true;
    default:
        return false;
    }
}

bool FormKeys::handleReturn(QWidget *field, const QKeyEvent &event)
{
    if (m_composing == field)
        return false;
    const bool newLine = (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
    if (field == m_widgets.pathEdit && newLine)
        return false;
    if (!event.isAutoRepeat())
        emit searchRequested();
    return true;
}

bool FormKeys::handleEscape(const QWidget *widget, const QKeyEvent &event)
{
    if (m_composing == widget)
        return false;
    if (m_busy) {
        emit abortRequested();
        return true;
    }
    if (widget != m_widgets.keyword1)
        return false;
    if (!event.isAutoRepeat())
        emit quitRequested();
    return true;
}

void FormKeys::moveFocus(QWidget *from)
{
    QWidget *target = isInputField(from) ? m_widgets.resultView : m_lastField.data();
    if (target && !(target->isVisible() && target->isEnabled()))
        target = m_widgets.keyword1;
    if (target)
        target->setFocus(Qt::ShortcutFocusReason);
}
