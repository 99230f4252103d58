#include "app/broadcast/BroadcastChannel.h"

#include <windows.h>

// Nothing to hold: the messages come to the windows.
class BroadcastChannel::Bus { };

BroadcastChannel::BroadcastChannel(QObject *parent) : QObject(parent)
{
}

BroadcastChannel::~BroadcastChannel() = default;

quint32 BroadcastChannel::currentThreadId()
{
    return ::GetCurrentThreadId();
}

quint32 BroadcastChannel::registeredMessage()
{
    return ::RegisterWindowMessageA("sarvedit broadcast message");
}

BroadcastRule::Message BroadcastChannel::windowMessage(const void *message)
{
    const MSG *msg = static_cast<const MSG *>(message);
    return {msg->message, static_cast<quint64>(msg->wParam), static_cast<quint64>(msg->lParam)};
}

void BroadcastChannel::listen()
{
}
