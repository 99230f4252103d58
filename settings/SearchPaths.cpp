#include "settings/SearchPaths.h"

namespace SearchPaths {

namespace {

bool isListFile(const QString &path)
{
    return path.startsWith(QLatin1Char('@'));
}

} // namespace

QString withSlash(const QString &path)
{
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

QStringList fromText(const QString &text)
{
    QStringList paths;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        if (isListFile(line)) {
            paths += line;
            break;
        }
        paths += withSlash(line);
    }
    paths.removeDuplicates();
    return paths;
}

QStringList toLines(const QStringList &paths)
{
    QStringList lines;
    for (QString path : paths) {
        const bool listFile = isListFile(path);
        if (listFile && path.endsWith(QLatin1Char('/')))
            path.chop(1);
        if (!path.isEmpty())
            lines += path;
        if (listFile)
            break;
    }
    return lines;
}

} // namespace SearchPaths
