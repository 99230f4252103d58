#include "app/broadcast/BroadcastChannel.h"

#include "app/broadcast/LocalBus.h"

#include <QDBusConnection>
#include <QThread>
#include <QUuid>

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

class BroadcastChannel::Bus {
public:
    // A connection is known by its name in the whole process.
    const QString name =
        QLatin1String("sarvik broadcast ") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    std::atomic<bool> givenUp{false};
    // Uses the two above.
    std::unique_ptr<QThread> connecting;
};

BroadcastChannel::BroadcastChannel(QObject *parent)
    : QObject(parent), m_bus(std::make_unique<Bus>())
{
    const QString address = LocalBus::address();
    if (address.isEmpty())
        return;
    m_bus->connecting.reset(QThread::create([address, bus = m_bus.get()] {
        if (LocalBus::answers(address, bus->givenUp))
            QDBusConnection::connectToBus(address, bus->name);
    }));
    // Queued: listen() belongs to the thread of this object.
    connect(m_bus->connecting.get(), &QThread::finished, this, &BroadcastChannel::listen,
            Qt::QueuedConnection);
    m_bus->connecting->start();
}

BroadcastChannel::~BroadcastChannel()
{
    if (!m_bus->connecting)
        return;
    m_bus->givenUp = true;
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
