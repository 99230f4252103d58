#include "mainwindow/KeywordEdit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>

KeywordEdit::KeywordEdit(QWidget *parent) : LineEdit(parent)
{
    connect(this, &QLineEdit::textEdited, this, [this] { m_typed = text(); });
}

QAbstractItemView *KeywordEdit::completions() const
{
    QAbstractItemView *list = completer() ? completer()->popup() : nullptr;
    return list && list->isVisible() ? list : nullptr;
}

void KeywordEdit::takeCompletion()
{
    const QAbstractItemView *list = completions();
    const QModelIndex entry = list ? list->currentIndex() : QModelIndex();
    if (entry.isValid())
        emit completionChosen(entry.data().toString());
}

/// An entry that stayed in the field would be searched without its switches.
bool KeywordEdit::refuseCompletion()
{
    QAbstractItemView *list = completions();
    if (!list || !list->currentIndex().isValid())
        return false;
    list->hide();
    setText(m_typed);
    return true;
}

void KeywordEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        takeCompletion();
    if (event->key() == Qt::Key_Escape && refuseCompletion()) {
        event->accept();
        return;
    }
    if (event->key() != Qt::Key_K || event->modifiers() != Qt::ControlModifier)
        return LineEdit::keyPressEvent(event);
    if (QAbstractItemView *list = completions())
        list->hide();
    emit leaveRequested();
    event->accept();
}

/// The list goes after the focus.
void KeywordEdit::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        takeCompletion();
    LineEdit::focusOutEvent(event);
}
