#include "view/FindPattern.h"

#include "engine/PatternLimits.h"
#include "engine/RegExpEscape.h"

QRegExp FindPattern::forKeyword(const QString &keyword, const Options &options)
{
    if (keyword.isEmpty())
        return QRegExp(keyword, Qt::CaseSensitive);
    QString pattern = keyword;
    if (options.regexp)
        pattern.replace(QLatin1Char('|'), QLatin1String("\\|"));
    else
        escapeRegExpMetaChars(pattern);
    if (options.word)
        pattern = QLatin1String("\\b") + pattern + QLatin1String("\\b");
    if (options.regexp && !PatternLimits::isReasonable(pattern))
        return QRegExp();
    return QRegExp(pattern, options.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
}
