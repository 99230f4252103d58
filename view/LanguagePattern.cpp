#include "view/LanguagePattern.h"

#include "engine/PatternLimits.h"

QRegExp LanguagePattern::compiled(const QString &pattern)
{
    const QRegExp expression = PatternLimits::compiled(pattern, Qt::CaseSensitive);
    return expression.isValid() ? expression : QRegExp();
}
