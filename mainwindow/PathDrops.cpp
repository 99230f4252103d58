#include "mainwindow/PathDrops.h"

#include "mainwindow/PathEdit.h"

#include <QDropEvent>
#include <QLineEdit>

PathDrops::PathDrops(QWidget *window, PathEdit *pathEdit, QObject *parent)
    : QObject(parent), m_pathEdit(pathEdit)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
    const QList<QLineEdit *> fields = window->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        field->installEventFilter(this);
}

bool PathDrops::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto *drop = static_cast<QDropEvent *>(event);
    if (!PathEdit::holdsFolders(*drop->mimeData()))
        return QObject::eventFilter(watched, event);
    if (type == QEvent::Drop)
        m_pathEdit->addFolders(*drop->mimeData());
    // Who drags must not think that the files were moved.
    if (drop->possibleActions().testFlag(Qt::CopyAction))
        drop->setDropAction(Qt::CopyAction);
    drop->accept();
    return true;
}
