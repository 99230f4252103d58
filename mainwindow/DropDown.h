#pragma once

#include <QObject>
#include <QStringList>

#include <optional>

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

/// The list of past texts below a field of the search form: an editable combo box,
/// whose text is the user's. It is replaced only by a choice from the list, by Up and
/// Down, which go on from the text that is in the field, and by showText(); the mouse
/// wheel passes by.
///
/// User interface thread only.
class DropDown : public QObject {
    Q_OBJECT

public:
    /// Belongs to combo, whose line edit it takes as it is now.
    explicit DropDown(QComboBox *combo);

    /// Replaces the entries; not while the list is shown, but when it is closed. What
    /// the user typed stays, with cursor and selection, and can still be undone while there
    /// were entries and still are.
    void setItems(const QStringList &items);
    /// Shows text, with the cursor behind it. When the field holds it already, what was
    /// typed can still be undone.
    void showText(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QStringList items() const;
    bool replaceAroundCurrent(const QStringList &items);
    bool replaceWithoutCurrent(const QStringList &items);
    void goOnFromText();
    void setWaitingItems();

    QComboBox *const m_combo;
    /// To know its events by: they come when m_combo is no combo box any more, too.
    const QObject *const m_view;
    /// Entries that wait until the list is closed.
    std::optional<QStringList> m_waiting;
};
