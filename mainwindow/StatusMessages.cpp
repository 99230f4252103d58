#include "mainwindow/StatusMessages.h"

#include <QApplication>
#include <QStatusBar>

namespace {

constexpr int kRefusalMilliseconds = 5000;
constexpr int kConfirmationMilliseconds = 2000;

} // namespace

StatusMessages::StatusMessages(QStatusBar *statusBar, QObject *parent)
    : QObject(parent), m_statusBar(statusBar)
{
    setObjectName(QStringLiteral("statusMessages"));
}

void StatusMessages::refuse(const QString &message)
{
    show(message, kRefusalMilliseconds, true);
}

void StatusMessages::confirm(const QString &message)
{
    show(message, kConfirmationMilliseconds, false);
}

void StatusMessages::showNext(const QString &message, const std::function<bool()> &isWanted)
{
    if (m_statusBar->currentMessage().isEmpty()) {
        m_statusBar->showMessage(message);
        return;
    }
    auto *once = new QObject(this);
    const auto onChange = [this, once, message, isWanted](const QString &now) {
        once->deleteLater();
        m_statusBar->disconnect(once);
        if (now.isEmpty() && isWanted())
            m_statusBar->showMessage(message);
    };
    connect(m_statusBar, &QStatusBar::messageChanged, once, onChange);
}

void StatusMessages::show(const QString &message, int milliseconds, bool beeps)
{
    if (beeps)
        QApplication::beep();
    m_statusBar->showMessage(message, milliseconds);
    emit shown(message, milliseconds, beeps);
}
