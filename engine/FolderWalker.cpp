#include "engine/FolderWalker.h"

#include "engine/ExclusionList.h"
#include "engine/SharedRun.h"
#include "engine/TextGrepCore.h"

#include <algorithm>

FolderWalker::FolderWalker(TextGrepCore &core, SharedRun &run)
    : m_core(core), m_run(run), m_mask(run.mask)
{
}

QVector<FolderEntry> FolderWalker::list(const QString &folder) const
{
    return m_run.options.lister->list(
        folder,
        [this, &folder](const FolderIdentity &identity) { return mayList(identity, folder); },
        [this] { return !m_run.isAborted(); });
}

/// Real folders form a tree, so that one without an identity is met once; what
/// a link leads to may be a folder above it.
bool FolderWalker::mayList(const FolderIdentity &identity, const QString &folder) const
{
    return identity.isKnown() ? m_run.claims.claim(identity, folder)
                              : !m_run.folders.followsLinks();
}

/// Sorted by name: the platform's order differs from file system to file system.
void FolderWalker::queue(const QString &folder, const QVector<FolderEntry> &entries)
{
    QStringList files;
    QStringList folders;
    for (int i = 0; i < entries.size(); ++i) {
        const FolderEntry &entry = entries.at(i);
        const QString path = folder + entry.name;
        emit m_core.progressFileReport(path);
        if (i % SharedRun::kEntriesPerAbortCheck == 0 && m_run.isAborted())
            return;
        if (entry.kind == FolderEntry::File)
            sortOutFile(path, entry.name, &files);
        else if (entry.kind != FolderEntry::Other)
            sortOutFolder(path + QLatin1Char('/'), entry, &folders);
    }
    std::sort(files.begin(), files.end());
    std::sort(folders.begin(), folders.end());
    m_run.files.append(files);
    m_run.folders.append(folders);
}

void FolderWalker::sortOutFile(const QString &path, const QString &name, QStringList *files)
{
    if (m_run.exclusions.excludesFile(name)) {
        emit m_core.WarningMsg(ExclusionList::fileWarning(name));
    } else if (m_mask.passes(name)) {
        emit m_core.progressFileReport(path);
        files->append(path);
    }
}

void FolderWalker::sortOutFolder(const QString &path, const FolderEntry &entry,
                                 QStringList *folders)
{
    if (m_run.exclusions.excludesFolder(entry.name))
        emit m_core.WarningMsg(ExclusionList::folderWarning(path));
    else if (!m_run.condition.subdir)
        return;
    else if (entry.kind == FolderEntry::FolderLink)
        m_run.folders.appendLink(path);
    else
        folders->append(path);
}
