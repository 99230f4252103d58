#include "tests/app/broadcast/SessionBus.h"

#include "tests/support/Patience.h"

#include <QtGlobal>

SessionBus::SessionBus(Socket socket) : m_socket(socket)
{
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address"),
                    QLatin1String("--address=") + address()});
    // The bus tells its address as soon as it can be connected to.
    if (!m_daemon.waitForStarted(kPatienceMilliseconds)
        || !m_daemon.waitForReadyRead(kPatienceMilliseconds))
        qFatal("dbus-daemon: %s", qPrintable(m_daemon.errorString()));
}

SessionBus::~SessionBus()
{
    kill();
}

QString SessionBus::address() const
{
    const QLatin1String way(m_socket == Socket::Abstract ? "unix:abstract=" : "unix:path=");
    return way + m_folder.filePath(QStringLiteral("bus"));
}

QString SessionBus::folder() const
{
    return m_folder.path();
}

void SessionBus::send(const QString &path, const QString &member,
                      const QStringList &arguments) const
{
    QProcess sender;
    sender.start(QStringLiteral("dbus-send"),
                 QStringList{QLatin1String("--bus=") + address(), QStringLiteral("--type=signal"),
                             path, member}
                     + arguments);
    if (!sender.waitForFinished(kPatienceMilliseconds) || sender.exitCode() != 0)
        qFatal("dbus-send: %s", sender.readAllStandardError().constData());
}

void SessionBus::kill()
{
    m_daemon.kill();
    m_daemon.waitForFinished(kPatienceMilliseconds);
}
