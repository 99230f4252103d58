#pragma once

#include <QLineEdit>

/// The single-line field of the search form: has a clear button and tells of a
/// few keys by signals.
///
/// Return emits lineEditReturn() and goes no further, so returnPressed() does
/// not come for it. returnPressed() comes for the keypad's Enter and for a click
/// on the clear button, after the text is gone: whoever searches on Return
/// connects both signals.
class LineEdit : public QLineEdit {
    Q_OBJECT

signals:
    /// The field has the keyboard focus, whatever gave it.
    void receivedFocus();
    /// Return was pressed.
    void lineEditReturn();
    /// Alt+O, Alt+W and Alt+[, with no other modifier. The key travels on to the
    /// parent as well.
    void CaseChange();
    void WordChange();
    void RegexpChange();
    /// Up (-1) or Down (1) was pressed without a modifier. The key is then
    /// handled as in any line edit.
    void lineEditUpDown(int step);

public:
    explicit LineEdit(QWidget *parent = nullptr);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool emitSwitchSignal(const QKeyEvent &event);
};
