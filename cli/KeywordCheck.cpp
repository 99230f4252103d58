#include "cli/KeywordCheck.h"

#include "cli/Message.h"

#include <QRegExp>

namespace {

bool hasLoneSurrogate(const QString &text)
{
    for (int i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool pair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (!pair)
            return true;
        ++i;
    }
    return false;
}

QString patternError(const QString &name, const QString &keyword, const QString &pattern)
{
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
                             QStringLiteral("\\b") + options.keyword + QStringLiteral("\\b"));
    if (error.isEmpty())
        error = keywordError(QStringLiteral("--near"), options.nearKeyword, options);
    if (error.isEmpty())
        error = keywordError(QStringLiteral("--not"), options.notKeyword, options);
    return error;
}
