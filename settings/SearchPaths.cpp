#include "settings/SearchPaths.h"

#include <QFileInfo>

#include <algorithm>

namespace SearchPaths {

namespace {

bool isListFile(const QString &path)
{
    return path.startsWith(QLatin1Char('@'));
}

/// Bytes of a name that are no text stand as lone surrogates, which nobody can be
/// asked about.
bool isText(const QString &path)
{
    return std::none_of(path.begin(), path.end(), [](QChar character) {
        return character.unicode() >= 0xDC80 && character.unicode() <= 0xDCFF;
    });
}

bool isThere(const QString &path)
{
    if (isListFile(path))
        return QFileInfo(path.mid(1)).isFile();
    return QFileInfo(path).isDir();
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

QString firstMissing(const QStringList &paths)
{
    const auto missing = std::find_if(paths.begin(), paths.end(), [](const QString &path) {
        return isText(path) && !isThere(path);
    });
    return missing == paths.end() ? QString() : *missing;
}

} // namespace SearchPaths
