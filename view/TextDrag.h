#pragma once

#include <QObject>
#include <QTextCursor>

#include <functional>

QT_BEGIN_NAMESPACE
class QDrag;
class QDropEvent;
class QMimeData;
class QMouseEvent;
class QPlainTextEdit;
QT_END_NAMESPACE

/// Drags selected text out of a text view, in place of the view's own drags, which
/// offer to move the text: who drags a word of the shown file into a search field would
/// cut it out of the file. Only inside the view a drag moves the text, or copies it
/// with Ctrl held.
///
/// The view does not know of the drag: it would see neither its end nor the mouse button's
/// release, and from a first step that ends outside it would scroll and drag again for ever.
class TextDrag : public QObject {
    Q_OBJECT

public:
    /// Makes the data of the view's selection, which the caller owns.
    using Contents = std::function<QMimeData *()>;
    /// Runs drag to its end and sees to its deletion, as QDrag::exec() does.
    using Runner = std::function<void(QDrag *drag, Qt::DropActions offered)>;

    /// Belongs to view.
    TextDrag(QPlainTextEdit *view, Contents contents);

    /// QDrag::exec() until this is called.
    void setRunner(Runner runner) { m_runner = std::move(runner); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void notePress(const QMouseEvent &event);
    bool isPressedOnSelection() const;
    bool takeMove(const QMouseEvent &event);
    bool takeDrop(QDropEvent *event);
    void run();
    void forgetPressInView();
    void moveSelectionTo(QTextCursor target);

    QPlainTextEdit *m_view;
    const Contents m_contents;
    Runner m_runner;
    QTextCursor m_pressed; // the selection that was pressed on; null: none
    QPoint m_pressPlace;
    bool m_isRunning = false;
};
