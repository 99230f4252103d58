#pragma once

#include <QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QStatusBar;
QT_END_NAMESPACE

/// The messages of the window's status bar that go by themselves. User interface
/// thread only.
class StatusMessages : public QObject {
    Q_OBJECT

signals:
    /// A message stands there, for so long. beeped: the user was called to it.
    void shown(const QString &message, int milliseconds, bool beeped);

public:
    /// statusBar is not owned; it must outlive this object.
    StatusMessages(QStatusBar *statusBar, QObject *parent);

    /// What was asked for cannot be done: beeps, and tells why for 5000 ms.
    void refuse(const QString &message);
    /// What was asked for is done: for 2000 ms.
    void confirm(const QString &message);
    /// When what stands there now is gone, unless another message comes in its place
    /// or isWanted, asked then, says no. Stays.
    void showNext(const QString &message, const std::function<bool()> &isWanted);

private:
    void show(const QString &message, int milliseconds, bool beeps);

    QStatusBar *const m_statusBar;
};
