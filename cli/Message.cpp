#include "cli/Message.h"

namespace {

bool turnsDirection(ushort code)
{
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E)
        || (code >= 0x2066 && code <= 0x2069);
}

QString escaped(QChar c)
{
    const ushort code = c.unicode();
    if (c == QLatin1Char('\\'))
        return QStringLiteral("\\\\");
    if (code < 0x100)
        return QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
    return QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
}

} // namespace

QString Message::quoted(const QString &value)
{
    QString text;
    for (const QChar c : value) {
        if (isUnsafe(c) || c == QLatin1Char('\\'))
            text += escaped(c);
        else
            text += c;
    }
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

bool Message::isUnsafe(QChar c)
{
    const ushort code = c.unicode();
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029
        || turnsDirection(code);
}

bool Message::isPairAt(const QString &text, int index)
{
    return text.at(index).isHighSurrogate() && index + 1 < text.size()
        && text.at(index + 1).isLowSurrogate();
}
