#include "app/broadcast/NativeEventFilter.h"

NativeEventFilter::NativeEventFilter(QObject *parent) : QObject(parent)
{
    connect(&m_channel, &BroadcastChannel::arrived, this, [this](uint threadId, uint value) {
        if (const auto notice = BroadcastRule::noticeFromOthers(threadId, value, m_ownThreadId))
            announce(*notice);
    });
}

bool NativeEventFilter::nativeEventFilter(const QByteArray &eventType, void *message, long *)
{
    const auto notice = BroadcastRule::notice(
        eventType, [message] { return BroadcastChannel::windowMessage(message); }, m_messageId,
        m_ownThreadId);
    if (notice)
        announce(*notice);
    return notice.has_value();
}

void NativeEventFilter::announce(const BroadcastRule::Notice &notice)
{
    emit BoradCastMessage(notice.threadId, notice.value);
}
