#pragma once

#include <QString>
#include <QStringList>

/// Turns the PATHs of the command line into the path list of a search, and
/// looks at the disk to refuse what cannot be searched.
namespace PathArguments {

struct Result {
    QStringList pathlist; ///< as in SearchCondition; meaningful only without an error
    QStringList warnings; ///< one line each: what of a list file cannot be searched
    QString error; ///< one line that names the path; empty when all can be searched

    bool ok() const { return error.isEmpty(); }
};

/// Folders end in one "/", files lose none. The order stays; of several paths to
/// one file or folder the first stays. A first path that begins with "@" names a
/// list file and must stand alone; its entries are looked at, too, but one that
/// cannot be searched is no error: a list may be older than the tree.
Result resolve(const QStringList &paths);

} // namespace PathArguments
