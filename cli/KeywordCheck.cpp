#include "cli/KeywordCheck.h"

#include "cli/Message.h"
#include "cli/SearchRequest.h"
#include "engine/LineMatcher.h"
#include "engine/PatternLimits.h"

#include <QRegExp>

namespace {

bool hasLoneSurrogate(const QString &text)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        if (!Message::isPairAt(text, i))
            return true;
        ++i;
    }
    return false;
}

QString patternError(const QString &name, const QString &keyword, const QString &pattern)
{
    if (!PatternLimits::isReasonable(pattern))
        return name + QStringLiteral(" is too complex a pattern: ") + Message::quoted(keyword);
    const QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    if (expression.isValid())
        return QString();
    return name + QStringLiteral(" is not a valid pattern: ") + Message::quoted(keyword)
        + QStringLiteral(" (") + expression.errorString() + QLatin1Char(')');
}

QString keywordError(const QString &name, const QString &keyword, const Options &options)
{
    if (hasLoneSurrogate(keyword))
        return name + QStringLiteral(" is not valid UTF-8: ") + Message::quoted(keyword);
    if (keyword.contains(QLatin1Char('\n')))
        return name + QStringLiteral(" holds a line feed, and no line does: ")
            + Message::quoted(keyword);
    return options.fixedStrings ? QString() : patternError(name, keyword, keyword);
}

} // namespace

QString KeywordCheck::error(const Options &options)
{
    const QString keywordName = QStringLiteral("KEYWORD");
    if (options.keyword.isEmpty())
        return keywordName + QStringLiteral(" is empty: ''");
    QString error = keywordError(keywordName, options.keyword, options);
    // A search for whole words wraps the pattern, and wrapping can break one
    // that is right alone.
    if (error.isEmpty() && options.word && !options.fixedStrings)
        error = patternError(keywordName, options.keyword,
                             LineMatcher::effectiveKeyword1(SearchRequest::condition(options, {})));
    if (error.isEmpty())
        error = keywordError(QStringLiteral("--near"), options.nearKeyword, options);
    if (error.isEmpty())
        error = keywordError(QStringLiteral("--not"), options.notKeyword, options);
    return error;
}
