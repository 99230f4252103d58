#include "app/broadcast/BroadcastChannel.h"

#include <QDBusConnection>
#include <QFileInfo>
#include <QThread>
#include <QUuid>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

// The address of a bus that runs already, or nothing. The toolkit's own way to
// find the session bus may start one, which takes long and lets it run on when
// the program has ended.
QString runningBus()
{
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!given.isEmpty())
        return given.startsWith(QLatin1String("autolaunch:")) ? QString() : given;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + QLatin1String("/bus");
    if (folder.isEmpty() || !QFileInfo::exists(socket))
        return {};
    return QLatin1String("unix:path=") + socket;
}

} // namespace

class BroadcastChannel::Bus {
public:
    // A connection is known by its name in the whole process.
    const QString name =
        QLatin1String("sarvik broadcast ") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    std::unique_ptr<QThread> connecting;
};

BroadcastChannel::BroadcastChannel(QObject *parent)
    : QObject(parent), m_bus(std::make_unique<Bus>())
{
    const QString address = runningBus();
    if (address.isEmpty())
        return;
    m_bus->connecting.reset(QThread::create(
        [address, name = m_bus->name] { QDBusConnection::connectToBus(address, name); }));
    // Queued: listen() belongs to the thread of this object.
    connect(m_bus->connecting.get(), &QThread::finished, this, &BroadcastChannel::listen,
            Qt::QueuedConnection);
    m_bus->connecting->start();
}

BroadcastChannel::~BroadcastChannel()
{
    if (!m_bus->connecting)
        return;
    m_bus->connecting->wait();
    QDBusConnection::disconnectFromBus(m_bus->name);
}

void BroadcastChannel::listen()
{
    QDBusConnection bus(m_bus->name);
    if (!bus.isConnected())
        return;
    bus.connect(QString(), QStringLiteral("/sarvedit/broadcast"),
                QStringLiteral("sarvedit.broadcast"), QStringLiteral("message"),
                QStringLiteral("uu"), this, SIGNAL(arrived(uint, uint)));
}

quint32 BroadcastChannel::currentThreadId()
{
    return static_cast<quint32>(::syscall(SYS_gettid));
}

quint32 BroadcastChannel::registeredMessage()
{
    return 0;
}

BroadcastRule::Message BroadcastChannel::windowMessage(const void *)
{
    return {};
}
