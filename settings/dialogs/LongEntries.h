#pragma once

#include <QItemDelegate>
#include <QStringListModel>

QT_BEGIN_NAMESPACE
class QComboBox;
class QCompleter;
QT_END_NAMESPACE

/// Shows the entries of a list of past texts as the toolkit does, but of a very long one
/// its beginning and its end only: a list lays out each of its entries whole before it
/// opens, and the texts may be pages that were pasted. The entries themselves stay whole.
class LongEntries : public QItemDelegate {
    Q_OBJECT

public:
    /// UTF-16 code units of an entry that are shown, wider than any screen.
    static constexpr int kMostShown = 2048;

    /// Of the list of combo, or of completions; belongs to that list.
    static void shortenIn(QComboBox *combo);
    static void shortenIn(QCompleter *completer);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    enum class Owner { ComboBox, Completer };

    LongEntries(Owner owner, QObject *parent) : QItemDelegate(parent), m_owner(owner) { }

    QModelIndex shown(const QModelIndex &index) const;

    const Owner m_owner;
    /// Holds the shortened text while it is drawn.
    mutable QStringListModel m_shortened;
};
