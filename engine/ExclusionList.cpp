#include "engine/ExclusionList.h"

#include <algorithm>

bool ExclusionList::excludesFile(const QStringList &entries, const QString &fileName)
{
    return std::any_of(entries.cbegin(), entries.cend(), [&fileName](const QString &entry) {
        return !entry.isEmpty() && fileName.contains(entry);
    });
}

bool ExclusionList::excludesFolder(const QStringList &entries, const QString &folder)
{
    return entries.contains(folder);
}

QString ExclusionList::fileWarning(const QString &name)
{
    return QStringLiteral("Warning exclution file:") + name;
}

QString ExclusionList::folderWarning(const QString &folder)
{
    return QStringLiteral("Warning exclution folder:") + folder;
}
