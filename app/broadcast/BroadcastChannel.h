#pragma once

#include "app/broadcast/BroadcastRule.h"

#include <QObject>

#include <memory>

/// The platform's part of a broadcast.
///
/// Windows: a message registered as "sarvedit broadcast message", sent to all
/// top-level windows. It comes through the native event filter, so the channel
/// only tells its number and reads it; it never emits arrived().
///
/// Elsewhere: a signal on the user's session bus (D-Bus),
///
///     path       /sarvedit/broadcast
///     interface  sarvedit.broadcast
///     member     message
///     arguments  uu: the id of the sender's thread (gettid), a second number
///
/// for example, in one line,
///
///     dbus-send --type=signal /sarvedit/broadcast
///               sarvedit.broadcast.message uint32:4711 uint32:0
///
/// From any sender; a signal with other arguments is ignored. Only a bus that
/// is already there, on a local socket, is asked (LocalBus), and none is started.
/// Without one, with one that breaks off or does not answer, the program works
/// and says nothing.
class BroadcastChannel : public QObject {
    Q_OBJECT

signals:
    /// In the thread of this object, from its event loop.
    void arrived(uint threadId, uint value);

public:
    /// Connects in the background: the constructor waits for nobody.
    explicit BroadcastChannel(QObject *parent = nullptr);
    /// Gives up an attempt to connect that is under way.
    ~BroadcastChannel() override;

    /// The system's number for the calling thread, as senders put it into a
    /// broadcast.
    static quint32 currentThreadId();
    /// The number of the registered window message; 0 where there are no window
    /// messages or the registration failed.
    static quint32 registeredMessage();
    /// Reads the message of an event of type "windows_generic_MSG"; empty where
    /// there are no window messages.
    static BroadcastRule::Message windowMessage(const void *message);

private slots:
    void listen();

private:
    class Bus;
    std::unique_ptr<Bus> m_bus;
};
