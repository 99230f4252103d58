#pragma once

#include "view/AssistFile.h"
#include "view/AssistPlace.h"

#include <QDialog>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QTimer>

class AssistTextEdit;
QT_BEGIN_NAMESPACE
class QToolButton;
QT_END_NAMESPACE

/// A note beside a window: it follows the window wherever that moves, hides with
/// it, and keeps its place and size in the assist definition file.
///
/// The mouse moves it by any point, sizes it at the lower right corner, closes
/// the notes by the button that appears under the mouse, and opens a menu to copy
/// the text. Escape and F1, and closing by the window system, ask to close the
/// notes too.
class UserAssistWindow : public QDialog {
    Q_OBJECT

signals:
    /// The user asked to close all notes. This one stays until somebody does.
    void UserAssistWindowAllClose();

public:
    /// Belongs to parent, beside whose window it is put once the event loop runs; where
    /// the screen ends too soon for that, elsewhere (see AssistPlace).
    /// Without a parent, its position is one on the screen.
    UserAssistWindow(const AssistRecord &record, const QString &file, QWidget *parent);
    ~UserAssistWindow() override;

    /// The file is written at once, but not more often than this.
    static constexpr int kSaveIntervalMilliseconds = 200;

    AssistTextEdit *textEdit() const { return m_textEdit; }

    /// What Escape does: asks to close.
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void enterEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildPanel(const AssistRecord &record);
    void buildCloseButton(const AssistRecord &record);
    void finishPlacement();
    AssistPlace::Surroundings surroundings() const;
    void followWindow();
    void save();
    void savePending();
    QRect relativeGeometry() const;
    QPoint windowPosition() const;

    QString m_group;
    QString m_file;
    /// The window beside which this one stands; may be none.
    QPointer<QWidget> m_window;
    QWidget *m_panel = nullptr;
    AssistTextEdit *m_textEdit = nullptr;
    QToolButton *m_closeButton = nullptr;

    /// As it stands in the file, or where the screen had room when it was opened: no
    /// change to save.
    QRect m_savedGeometry;
    /// Where the window was when this one was last put beside it.
    QPoint m_windowPosition;
    bool m_placed = false;
    bool m_savePending = false;
    QTimer m_saveInterval;

    bool m_dragging = false;
    /// From the note's position to the mouse.
    QPoint m_dragOffset;
};
