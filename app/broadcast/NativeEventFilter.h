#pragma once

#include "app/broadcast/BroadcastChannel.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

/// Hears when another program of the suite has changed the keyword history,
/// which they share. This program only listens.
///
/// Create it in the GUI thread, whose broadcasts count as the program's own, and
/// install it on the application (QCoreApplication::installNativeEventFilter).
/// BroadcastChannel says by which way a broadcast comes on which platform.
class NativeEventFilter : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

signals:
    /// A broadcast of another thread than this object's: the id of the sender's
    /// thread and a second number, which is only for the log. Emitted in the
    /// GUI thread, from its event loop. The spelling is part of the interface.
    void BoradCastMessage(uint threadId, uint value);

public:
    explicit NativeEventFilter(QObject *parent = nullptr);

    /// True for a window message that was a broadcast of another thread, after
    /// BoradCastMessage was emitted for it; result is left untouched.
    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

private:
    void announce(const BroadcastRule::Notice &notice);

    const quint32 m_messageId = BroadcastChannel::registeredMessage();
    const quint32 m_ownThreadId = BroadcastChannel::currentThreadId();
    BroadcastChannel m_channel;
};
