#include "settings/dialogs/ClickThrough.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QMouseEvent>
#include <QWindow>

ClickThrough::ClickThrough(QCompleter *completer) : QObject(completer), m_completer(completer)
{
    QWidget *popup = m_completer->popup();
    // Else some platforms would press once more.
    popup->setAttribute(Qt::WA_NoMouseReplay);
    // After the completer's own filter, and so asked before it.
    popup->installEventFilter(this);
}

bool ClickThrough::eventFilter(QObject *watched, QEvent *event)
{
    QWidget *popup = m_completer->popup();
    if (watched != popup || event->type() != QEvent::MouseButtonPress)
        return QObject::eventFilter(watched, event);
    const auto &press = static_cast<const QMouseEvent &>(*event);
    if (popup->rect().contains(press.pos()))
        return false;
    popup->hide();
    passOn(press);
    return true;
}

void ClickThrough::passOn(const QMouseEvent &press)
{
    const QWidget *completed = m_completer->widget();
    const QWidget *clicked = QApplication::widgetAt(press.globalPos());
    // Another window of the program may be waiting for this one to close.
    if (!completed || !clicked || clicked->window() != completed->window())
        return;
    QWindow *window = completed->window()->windowHandle();
    const QPoint position = window->mapFromGlobal(press.globalPos());
    QMouseEvent passed(QEvent::MouseButtonPress, position, position, press.globalPos(),
                       press.button(), press.buttons(), press.modifiers(), press.source());
    passed.setTimestamp(press.timestamp());
    // At once: the release may be on its way already, and comes to the window itself.
    QCoreApplication::sendEvent(window, &passed);
}
