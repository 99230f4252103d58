#include "engine/RegExpEscape.h"

void escapeRegExpMetaChars(QString &text)
{
    static const QString metaChars = QStringLiteral("()[]{}^.$*+?|");
    for (const QChar metaChar : metaChars)
        text.replace(metaChar, QString(QLatin1Char('\\')) + metaChar);
}
