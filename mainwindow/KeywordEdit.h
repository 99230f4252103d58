#pragma once

#include "settings/dialogs/LineEdit.h"

QT_BEGIN_NAMESPACE
class QAbstractItemView;
QT_END_NAMESPACE

/// The field of keyword 1. While the list of its completer is shown, that sends the
/// keys to the field alone, past every filter: this class tells of those that mean
/// something to the form. Escape puts back what was typed before an entry of the list came
/// into the field.
class KeywordEdit : public LineEdit {
    Q_OBJECT

signals:
    /// Return, Enter, Tab or Shift+Tab was pressed on an entry of the list. Comes before what
    /// the key does otherwise; the text is in the field already.
    void completionChosen(const QString &text);
    /// Ctrl+K was pressed. The list is closed.
    void leaveRequested();

public:
    explicit KeywordEdit(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// The list while it is shown, otherwise null.
    QAbstractItemView *completions() const;
    void takeCompletion();
    bool refuseCompletion();

    /// What the user typed last; the entries of the list go into the field, too.
    QString m_typed;
};
