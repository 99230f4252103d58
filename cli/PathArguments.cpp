#include "cli/PathArguments.h"

#include "cli/Message.h"
#include "cli/PathKind.h"
#include "engine/ListFile.h"

#include <QDir>

namespace {

const QLatin1Char kListMark('@');

/// Why a path of this kind cannot be searched; empty when it can.
QString refusal(PathKind kind)
{
    switch (kind) {
    case PathKind::Missing:
        return QStringLiteral("no such file or folder: ");
    case PathKind::Unreadable:
        return QStringLiteral("cannot be read: ");
    case PathKind::Special:
        return QStringLiteral("neither a file nor a folder: ");
    case PathKind::Folder:
    case PathKind::File:
        break;
    }
    return QString();
}

QString listFileError(const QString &argument)
{
    const QString path = argument.mid(1);
    const PathKind kind = pathKind(path);
    if (kind == PathKind::Folder)
        return QStringLiteral("the list file is a folder: ") + Message::quoted(argument);
    if (kind != PathKind::File)
        return refusal(kind) + Message::quoted(argument);
    bool known = false;
    ListFile::read(path, &known);
    if (!known)
        return QStringLiteral("the list file holds no \"files\": ") + Message::quoted(argument);
    return QString();
}

PathArguments::Result resolveListFile(const QStringList &paths)
{
    PathArguments::Result result;
    if (paths.size() > 1)
        result.error =
            QStringLiteral("a list file stands alone, without ") + Message::quoted(paths.at(1));
    else
        result.error = listFileError(paths.first());
    result.pathlist = paths;
    return result;
}

/// The entry of the path list for one path, or an error.
QString resolveOne(const QString &argument, PathArguments::Result &result)
{
    if (argument.startsWith(kListMark)) {
        result.error = QStringLiteral("a list file stands alone: ") + Message::quoted(argument);
        return QString();
    }
    const QString path = QDir::fromNativeSeparators(argument);
    const PathKind kind = pathKind(path);
    result.error = refusal(kind);
    if (!result.error.isEmpty()) {
        result.error += Message::quoted(argument);
        return QString();
    }
    const bool bareFolder = kind == PathKind::Folder && !path.endsWith(QLatin1Char('/'));
    return bareFolder ? path + QLatin1Char('/') : path;
}

} // namespace

PathArguments::Result PathArguments::resolve(const QStringList &paths)
{
    if (!paths.isEmpty() && paths.first().startsWith(kListMark))
        return resolveListFile(paths);
    Result result;
    for (const QString &path : paths) {
        const QString entry = resolveOne(path, result);
        if (!result.ok())
            return result;
        if (!result.pathlist.contains(entry))
            result.pathlist += entry;
    }
    return result;
}
