#include "view/LaunchCommand.h"

#include <algorithm>

namespace {

const QLatin1Char kSlash('/');
const QLatin1Char kBackslash('\\');
const QLatin1Char kQuote('"');

bool isAsciiLetter(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
        || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

bool isSeparator(QChar c)
{
    return c == kSlash || c == kBackslash;
}

bool startsAtDrive(const QString &path)
{
    return path.size() >= 3 && isAsciiLetter(path.at(0)) && path.at(1) == QLatin1Char(':')
        && isSeparator(path.at(2));
}

} // namespace

QString LaunchRules::withNativeSeparators(const QString &path, PathStyle style)
{
    if (style == PathStyle::Unix && !startsAtDrive(path))
        return path;
    QString native = path;
    return native.replace(kSlash, kBackslash);
}

bool LaunchRules::isAbsolute(const QString &path, PathStyle style)
{
    return path.startsWith(kSlash) || startsAtDrive(path)
        || (style == PathStyle::Windows && path.startsWith(kBackslash));
}

QString LaunchRules::directoryPart(const QString &path, PathStyle style)
{
    int end = path.lastIndexOf(kSlash);
    if (style == PathStyle::Windows)
        end = std::max(end, path.lastIndexOf(kBackslash));
    if (end < 0)
        return {};
    const bool root = end == 0 || (end == 2 && startsAtDrive(path));
    return path.left(root ? end + 1 : end);
}

QString LaunchRules::suiteProgram(const QString &name, PathStyle style)
{
    const QLatin1String suffix(".exe");
    if (style == PathStyle::Unix && name.endsWith(suffix))
        return name.chopped(suffix.size());
    return name;
}

QString LaunchRules::quotedIfBlank(const QString &text)
{
    const bool quoted = text.size() >= 2 && text.startsWith(kQuote) && text.endsWith(kQuote);
    if (quoted || !text.contains(QLatin1Char(' ')))
        return text;
    return kQuote + text + kQuote;
}

QString LaunchRules::windowsArgument(const QString &text)
{
    QString argument(kQuote);
    int backslashes = 0;
    for (const QChar c : text) {
        if (c == kQuote)
            argument += QString(backslashes + 1, kBackslash);
        backslashes = c == kBackslash ? backslashes + 1 : 0;
        argument += c;
    }
    return argument + QString(backslashes, kBackslash) + kQuote;
}

QString LaunchRules::commandLine(const LaunchCommand &command)
{
    return quotedIfBlank(command.program) + QLatin1Char(' ') + command.parameters;
}
