#include "cli/Message.h"

QString Message::quoted(const QString &value)
{
    QString text;
    for (const QChar c : value) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            text += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            text += c;
    }
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}
