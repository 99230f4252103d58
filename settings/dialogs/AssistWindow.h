#pragma once

#include <QObject>
#include <QString>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// Help that floats beside a window, as long as this object lives: making one
/// shows it, deleting it closes it.
class AssistWindow : public QObject {
    Q_OBJECT

signals:
    /// The user asked, in the help itself, to close it. Whoever opened it deletes
    /// it then, by deleteLater().
    void closeRequested();

public:
    /// Makes the help of a definition file beside parent, or returns null when
    /// there is nothing to show. The result belongs to the caller.
    using Factory = std::function<AssistWindow *(const QString &file, QWidget *parent)>;

    using QObject::QObject;

    /// What open() calls. Without a factory there is no help.
    static void setFactory(const Factory &factory);
    static AssistWindow *open(const QString &file, QWidget *parent);
};
