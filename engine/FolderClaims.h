#pragma once

#include "engine/FolderLister.h"

#include <QHash>

#include <mutex>

/// Sees to it that each real folder is listed at most once in a search, and
/// that links do not make it depend on the threads' order which path it is
/// listed by:
///
/// 1. a folder that is named at the top belongs to the first top path that
///    leads to it;
/// 2. any other folder belongs to the first path by which it is listed; since
///    links are followed only after all real folders, and one after another,
///    that is its real path where the search holds it.
///
/// A folder that is mounted at two places of the tree has two real paths: which
/// of them it is listed by is left to the threads.
///
/// All functions may be called from any thread.
class FolderClaims {
public:
    void clear();

    /// Keeps the folder for path; false when another path has it already.
    bool reserve(const FolderIdentity &identity, const QString &path);

    /// True when path may list the folder now; false when the folder was listed
    /// before or is kept for another path.
    bool claim(const FolderIdentity &identity, const QString &path);

private:
    struct Owner {
        QString path;
        bool listed = false;
    };

    std::mutex m_mutex;
    QHash<FolderIdentity, Owner> m_owners; // guarded by m_mutex
};
