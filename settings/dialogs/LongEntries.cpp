#include "settings/dialogs/LongEntries.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>

void LongEntries::shortenIn(QComboBox *combo)
{
    combo->setItemDelegate(new LongEntries(Owner::ComboBox, combo->view()));
}

void LongEntries::shortenIn(QCompleter *completer)
{
    QAbstractItemView *list = completer->popup();
    list->setItemDelegate(new LongEntries(Owner::Completer, list));
}

QModelIndex LongEntries::shown(const QModelIndex &index) const
{
    const QString text = index.data().toString();
    if (text.size() <= kMostShown)
        return index;
    int begin = kMostShown / 2;
    int end = text.size() - kMostShown / 2;
    // Neither cuts a pair.
    begin -= text.at(begin).isLowSurrogate() ? 1 : 0;
    end += text.at(end).isLowSurrogate() ? 1 : 0;
    m_shortened.setStringList({text.left(begin) + QChar(0x2026) + text.mid(end)});
    return m_shortened.index(0);
}

void LongEntries::paint(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &index) const
{
    QStyleOptionViewItem own = option;
    if (m_owner == Owner::Completer) {
        // As its own delegate does: the focus is in the field.
        own.showDecorationSelected = true;
        const auto *list = qobject_cast<const QAbstractItemView *>(option.widget);
        if (list && list->currentIndex() == index)
            own.state |= QStyle::State_HasFocus;
    }
    QItemDelegate::paint(painter, own, shown(index));
}

QSize LongEntries::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QItemDelegate::sizeHint(option, shown(index));
}
