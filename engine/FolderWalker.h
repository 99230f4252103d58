#pragma once

#include "engine/FileMask.h"
#include "engine/FolderLister.h"

#include <QStringList>

struct SharedRun;
class TextGrepCore;

/// Lists folders and queues what the search wants of their entries. One object a
/// thread.
class FolderWalker {
public:
    FolderWalker(TextGrepCore &core, SharedRun &run);

    /// The folder's entries; none when it was listed before. folder ends in "/".
    QVector<FolderEntry> list(const QString &folder) const;
    /// Queues the files that pass and the folders below, and tells of each entry
    /// by the engine's signals. Nothing is queued once the run is aborted.
    void queue(const QString &folder, const QVector<FolderEntry> &entries);

private:
    bool mayList(const FolderIdentity &identity, const QString &folder) const;
    void sortOutFile(const QString &path, const QString &name, QStringList *files);
    void sortOutFolder(const QString &path, const FolderEntry &entry, QStringList *folders);

    TextGrepCore &m_core; // whose signals are emitted
    SharedRun &m_run;
    const FileMask m_mask;
};
