#include "mainwindow/DropDown.h"

#include "settings/dialogs/LongEntries.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

int itemOf(const QComboBox &combo, const QString &text)
{
    return combo.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

/// Makes that item current which is the text, or none.
void setText(QComboBox &combo, const QString &text)
{
    const int item = itemOf(combo, text);
    if (combo.currentIndex() != item)
        combo.setCurrentIndex(item);
    combo.setEditText(text);
}

/// Lets change do what it will to the field, and puts the text back there, with its
/// cursor and selection.
template <typename Change> void keepingText(QComboBox &combo, const Change &change)
{
    QLineEdit *edit = combo.lineEdit();
    const QString text = edit->text();
    const int cursor = edit->cursorPosition();
    const int start = edit->selectionStart();
    const int length = edit->selectionLength();
    change();
    setText(combo, text);
    if (start < 0)
        edit->setCursorPosition(cursor);
    else if (cursor == start)
        edit->setSelection(start + length, -length);
    else
        edit->setSelection(start, length);
}

bool movesThroughItems(const QKeyEvent &key)
{
    if (key.modifiers() & ~Qt::KeypadModifier)
        return false;
    return key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp
        || key.key() == Qt::Key_PageDown;
}

} // namespace

DropDown::DropDown(QComboBox *combo) : QObject(combo), m_combo(combo), m_view(combo->view())
{
    LongEntries::shortenIn(m_combo);
    m_combo->installEventFilter(this);
    m_combo->lineEdit()->installEventFilter(this);
    m_combo->view()->installEventFilter(this);
    // The wheel brings no focus either.
    m_combo->setFocusPolicy(Qt::StrongFocus);
}

QStringList DropDown::items() const
{
    QStringList texts;
    for (int i = 0; i < m_combo->count(); ++i)
        texts += m_combo->itemText(i);
    return texts;
}

void DropDown::setItems(const QStringList &items)
{
    if (m_combo->view()->isVisible()) {
        m_waiting = items;
        return;
    }
    m_waiting.reset();
    if (items == this->items())
        return;
    const QSignalBlocker blocker(m_combo);
    if (replaceAroundCurrent(items) || replaceWithoutCurrent(items))
        return;
    keepingText(*m_combo, [&] {
        m_combo->clear();
        m_combo->addItems(items);
    });
}

/// The combo box leaves its field alone when an item with the same text becomes the
/// current one, and as long as that keeps its place and its text.
bool DropDown::replaceAroundCurrent(const QStringList &items)
{
    const QString text = m_combo->currentText();
    const bool isItem = items.contains(text);
    if (items.isEmpty() || (!isItem && m_combo->currentIndex() < 0))
        return false;
    const int place = isItem ? items.indexOf(text) : 0;
    do {
        m_combo->addItem(text);
    } while (m_combo->count() <= place);
    m_combo->setCurrentIndex(m_combo->count() - 1);
    if (m_combo->currentIndex() != place)
        m_combo->setItemText(place, text);
    m_combo->setCurrentIndex(place);
    for (int row = 0; row < items.size(); ++row) {
        if (row >= m_combo->count())
            m_combo->addItem(items.at(row));
        else if (row != place)
            m_combo->setItemText(row, items.at(row));
    }
    m_combo->model()->removeRows(items.size(), m_combo->count() - items.size());
    // The list is not shown, so only the field would take notice.
    const QSignalBlocker blocker(m_combo->model());
    m_combo->setItemText(place, items.at(place));
    return true;
}

/// A combo box with no current item takes none, except when it comes from being empty,
/// and clears its field when it becomes empty.
bool DropDown::replaceWithoutCurrent(const QStringList &items)
{
    const int former = m_combo->count();
    if (m_combo->currentIndex() >= 0 || former == 0 || items.isEmpty())
        return false;
    m_combo->addItems(items);
    m_combo->model()->removeRows(0, former);
    return true;
}

void DropDown::setWaitingItems()
{
    if (m_waiting)
        setItems(QStringList(*m_waiting));
}

void DropDown::showText(const QString &text)
{
    if (m_combo->currentText() != text)
        setText(*m_combo, text);
    else
        m_combo->lineEdit()->end(false);
}

/// The current item is the one that was chosen last, whatever was typed since.
void DropDown::goOnFromText()
{
    if (m_combo->currentIndex() == itemOf(*m_combo, m_combo->currentText()))
        return;
    const QSignalBlocker blocker(m_combo);
    keepingText(*m_combo, [] {});
}

bool DropDown::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view) {
        // Later: what was chosen in the list has not been taken yet.
        if (event->type() == QEvent::Hide && m_waiting)
            QMetaObject::invokeMethod(this, &DropDown::setWaitingItems, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::KeyPress && movesThroughItems(static_cast<QKeyEvent &>(*event)))
        goOnFromText();
    return QObject::eventFilter(watched, event);
}
