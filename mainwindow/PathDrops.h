#pragma once

#include <QObject>

class PathEdit;

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// Folders and files that are dropped anywhere on a window become search paths, as
/// if they were dropped on the path editor. What else is dropped goes to the widget
/// under the mouse.
class PathDrops : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object. Widgets in the window that take texts would
    /// take a file as its address; of the line edits that are there now this object
    /// sees to that, a text view has to refuse files itself.
    PathDrops(QWidget *window, PathEdit *pathEdit, QObject *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    PathEdit *m_pathEdit;
};
