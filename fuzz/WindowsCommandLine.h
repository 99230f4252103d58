#pragma once

#include <QStringList>

/// How a Windows program takes its command line apart: blanks and tabs separate,
/// double quotes keep together, 2n backslashes before a quote are n of them and
/// 2n + 1 are n and the quote itself.
inline QStringList argumentsOnWindows(const QString &line)
{
    QStringList arguments;
    QString argument;
    bool started = false;
    bool quoted = false;
    for (int i = 0; i < line.size();) {
        int backslashes = 0;
        while (i < line.size() && line.at(i) == QLatin1Char('\\')) {
            ++backslashes;
            ++i;
        }
        const QChar c = i < line.size() ? line.at(i) : QLatin1Char(' ');
        const bool quote = i < line.size() && c == QLatin1Char('"');
        argument += QString(quote ? backslashes / 2 : backslashes, QLatin1Char('\\'));
        started = started || backslashes > 0;
        if (i++ >= line.size())
            break;
        if (quote && backslashes % 2 == 0) {
            quoted = !quoted;
            started = true;
        } else if (!quoted && (c == QLatin1Char(' ') || c == QLatin1Char('\t'))) {
            if (started)
                arguments.append(argument);
            argument.clear();
            started = false;
        } else {
            argument += c;
            started = true;
        }
    }
    if (started)
        arguments.append(argument);
    return arguments;
}
