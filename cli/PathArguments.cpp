#include "cli/PathArguments.h"

#include "cli/Message.h"
#include "cli/PathKind.h"
#include "engine/ListFile.h"

#include <QDir>
#include <QSet>

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
    case PathKind::LinkLoop:
        return QStringLiteral("a loop of links: ");
    case PathKind::NameTooLong:
        return QStringLiteral("the name is too long: ");
    case PathKind::Broken:
        return QStringLiteral("input/output error: ");
    case PathKind::Special:
        return QStringLiteral("neither a file nor a folder: ");
    case PathKind::Folder:
    case PathKind::File:
        break;
    }
    return QString();
}

/// What is wrong with an entry of a list file; empty when it can be searched.
QString listEntryProblem(const QString &entry)
{
    const PathKind kind = pathKind(entry);
    if (kind == PathKind::Folder && !entry.endsWith(QLatin1Char('/')))
        return QStringLiteral("a folder without \"/\" at its end: ");
    return refusal(kind);
}

void readListFile(const QString &argument, PathArguments::Result &result)
{
    const QString path = argument.mid(1);
    const QString quoted = Message::quoted(argument);
    const PathKind kind = pathKind(path);
    if (kind == PathKind::Folder) {
        result.error = QStringLiteral("the list file is a folder: ") + quoted;
        return;
    }
    if (kind != PathKind::File) {
        result.error = refusal(kind) + quoted;
        return;
    }
    bool known = false;
    const QStringList entries = ListFile::read(path, &known);
    if (!known)
        result.error = QStringLiteral("the list file holds no \"files\": ") + quoted;
    for (const QString &entry : entries) {
        const QString problem = listEntryProblem(QDir::fromNativeSeparators(entry));
        if (!problem.isEmpty())
            result.warnings += quoted + QStringLiteral(": ") + problem + Message::quoted(entry);
    }
}

PathArguments::Result resolveListFile(const QStringList &paths)
{
    PathArguments::Result result;
    if (paths.size() > 1)
        result.error =
            QStringLiteral("a list file stands alone, without ") + Message::quoted(paths.at(1));
    else
        readListFile(paths.first(), result);
    result.pathlist = paths;
    return result;
}

/// A folder's path with exactly one "/" at its end: the walk appends names.
QString asFolder(QString path)
{
    while (path.endsWith(QLatin1String("//")))
        path.chop(1);
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
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
    return kind == PathKind::Folder ? asFolder(path) : path;
}

} // namespace

PathArguments::Result PathArguments::resolve(const QStringList &paths)
{
    if (!paths.isEmpty() && paths.first().startsWith(kListMark))
        return resolveListFile(paths);
    Result result;
    QSet<QString> known;
    for (const QString &path : paths) {
        const QString entry = resolveOne(path, result);
        if (!result.ok())
            return result;
        const QString canonical = canonicalPath(entry);
        if (!known.contains(canonical) || canonical.isEmpty())
            result.pathlist += entry;
        known.insert(canonical);
    }
    return result;
}
