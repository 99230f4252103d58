#include "app/broadcast/BroadcastRule.h"

std::optional<BroadcastRule::Notice> BroadcastRule::notice(const QByteArray &eventType,
                                                           const std::function<Message()> &read,
                                                           quint32 registeredId,
                                                           quint32 ownThreadId)
{
    if (eventType != "windows_generic_MSG")
        return std::nullopt;
    const Message message = read();
    // Number 0 is an ordinary message that every window gets now and then.
    if (registeredId == 0 || message.number != registeredId)
        return std::nullopt;
    return noticeFromOthers(message.wParam, message.lParam, ownThreadId);
}

std::optional<BroadcastRule::Notice>
BroadcastRule::noticeFromOthers(quint64 threadId, quint64 value, quint32 ownThreadId)
{
    if (threadId == ownThreadId)
        return std::nullopt;
    return Notice{static_cast<uint>(threadId), static_cast<uint>(value)};
}
