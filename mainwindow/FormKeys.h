#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QKeyEvent;
class QWidget;
QT_END_NAMESPACE

/// The keys of the search form and the result view, as an event filter on them.
///
/// | key | where | effect |
/// |---|---|---|
/// | Return, Enter | input field | searchRequested() |
/// | Shift or Ctrl and Return | path editor | a new line |
/// | Escape | anywhere in the window, while busy | abortRequested() |
/// | Escape | keyword 1, idle | quitRequested() |
/// | Ctrl+K | input field | focus to the result view |
/// | Ctrl+K | result view, preview | focus to the input field that had it last |
///
/// Where the last input field is hidden or disabled, or none had the focus yet,
/// keyword 1 gets it. Every other key goes on to its widget. While an input
/// method converts a text, Return and Escape are the input method's. A key that
/// is held down searches and quits once; what it repeats is taken and dropped.
class FormKeys : public QObject {
    Q_OBJECT

signals:
    void searchRequested();
    void abortRequested();
    void quitRequested();

public:
    struct Widgets {
        QList<QWidget *> inputFields;
        QWidget *pathEdit = nullptr; ///< one of the input fields
        QWidget *keyword1 = nullptr; ///< another
        QWidget *resultView = nullptr;
        QWidget *preview = nullptr; ///< may be missing
        /// What the others stand in: the keys that nothing else in it wants.
        QWidget *window = nullptr;
    };

    FormKeys(const Widgets &widgets, QObject *parent);

    /// While a search or a line count runs.
    void setBusy(bool busy) { m_busy = busy; }

    /// What Ctrl+K does in from.
    void moveFocus(QWidget *from);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool handleKey(QWidget *widget, const QKeyEvent &event);
    bool handleReturn(QWidget *field, const QKeyEvent &event);
    bool handleEscape(const QWidget *widget, const QKeyEvent &event);
    QWidget *fieldOf(QWidget *widget) const;
    bool isInputField(QWidget *widget) const;

    const Widgets m_widgets;
    QPointer<QWidget> m_lastField;
    /// Text of an input method that is not committed yet stands in this field.
    QPointer<QWidget> m_composing;
    bool m_busy = false;
};
