#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

/// Which messages are a broadcast of another program of the suite, apart from
/// the platform that brings them.
namespace BroadcastRule {

/// What the rule needs of a window message.
struct Message {
    quint32 number = 0;
    quint64 wParam = 0;
    quint64 lParam = 0;
};

/// What a broadcast says: the id of the sender's thread and one more number,
/// which is only logged.
struct Notice {
    uint threadId = 0;
    uint value = 0;

    bool operator==(const Notice &other) const
    {
        return threadId == other.threadId && value == other.value;
    }
};

/// The notice in a native event, or nothing:
/// 1. an event of another type than "windows_generic_MSG" is none; only after
///    that is the message read, because until then nobody knows what it is;
/// 2. a message with another number than registeredId is none, and nothing is
///    while registeredId is 0, which means that no number could be registered;
/// 3. what ownThreadId sent itself is none;
/// 4. of wParam and lParam, the lower 32 bits are the notice.
std::optional<Notice> notice(const QByteArray &eventType, const std::function<Message()> &read,
                             quint32 registeredId, quint32 ownThreadId);

/// Steps 3 and 4 for a notice that came by another way than a window message.
std::optional<Notice> noticeFromOthers(quint64 threadId, quint64 value, quint32 ownThreadId);

} // namespace BroadcastRule
