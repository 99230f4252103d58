#pragma once

#include <QString>
#include <QStringList>

/// Turns the PATHs of the command line into the path list of a search, and
/// looks at the disk to refuse what cannot be searched.
namespace PathArguments {

struct Result {
    QStringList pathlist; ///< as in SearchCondition; meaningful only without an error
    QString error; ///< one line that names the path; empty when all can be searched

    bool ok() const { return error.isEmpty(); }
};

/// Folders get a "/" at the end, files lose none; the order stays and doubles
/// go. A first path that begins with "@" names a list file and must stand alone.
Result resolve(const QStringList &paths);

} // namespace PathArguments
