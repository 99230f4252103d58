#pragma once

#include <QString>
#include <QStringList>

/// What a walk leaves out by name.
namespace ExclusionList {

/// True when any non-empty entry occurs anywhere in fileName, case-sensitively.
bool excludesFile(const QStringList &entries, const QString &fileName);

/// True when an entry is the whole of folder, case-sensitively: the path as
/// given for a folder named at the top, the bare name for one found below.
bool excludesFolder(const QStringList &entries, const QString &folder);

/// What WarningMsg says of a file or folder that is left out.
QString fileWarning(const QString &name);
QString folderWarning(const QString &folder);

} // namespace ExclusionList
