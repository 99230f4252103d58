#include "engine/TopEntries.h"

#include "engine/ExclusionList.h"
#include "engine/ListFile.h"
#include "engine/SharedRun.h"
#include "engine/TextGrepCore.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

bool namesFolder(const QString &path)
{
    return path.endsWith(QLatin1Char('/'));
}

bool namesListFile(const QStringList &pathlist)
{
    return !pathlist.isEmpty() && pathlist.first().startsWith(QLatin1Char('@'));
}

} // namespace

bool TopEntries::nameFiles(const QStringList &pathlist)
{
    return namesListFile(pathlist) || !std::all_of(pathlist.cbegin(), pathlist.cend(), namesFolder);
}

void TopEntries::queue()
{
    const QStringList &entries = m_run.condition.pathlist;
    if (namesListFile(entries)) {
        queueListFile(entries.first().mid(1));
        return;
    }
    reserveFolders(entries);
    for (const QString &entry : entries) {
        if (entry.isEmpty())
            continue;
        emit m_core.progressFileCount();
        if (m_run.isAborted())
            return;
        if (namesFolder(entry)) {
            queueFolder(entry);
        } else {
            emit m_core.progressFileReport(entry);
            m_run.files.append({entry});
        }
    }
}

void TopEntries::reserveFolders(const QStringList &entries)
{
    FolderIdentity identity;
    for (const QString &entry : entries) {
        const bool listed = namesFolder(entry) && !m_run.exclusions.excludesFolder(entry);
        if (listed && m_run.options.lister->identify(entry, &identity))
            m_run.claims.reserve(identity, entry);
        if (m_run.isAborted())
            return;
    }
}

void TopEntries::queueListFile(const QString &path)
{
    const QStringList entries = ListFile::read(path);
    emit m_core.progressFileAllCount(entries.size());
    if (m_run.condition.subdir)
        reserveFolders(entries);
    const FileMask mask = m_run.mask;
    for (int i = 0; i < entries.size(); ++i) {
        emit m_core.progressFileCount();
        if (i % SharedRun::kEntriesPerAbortCheck == 0) {
            QThread::yieldCurrentThread();
            if (m_run.isAborted())
                return;
        }
        queueListEntry(entries.at(i), mask);
    }
}

void TopEntries::queueListEntry(const QString &entry, const FileMask &mask)
{
    // No name holds a NUL; up to there it may be the name of something else.
    if (entry.contains(QChar(0)))
        return;
    if (namesFolder(entry)) {
        if (m_run.condition.subdir)
            queueFolder(entry);
        return;
    }
    const QString name = QFileInfo(entry).fileName();
    if (m_run.exclusions.excludesFile(name)) {
        emit m_core.WarningMsg(ExclusionList::fileWarning(name));
    } else if (mask.passes(name)) {
        emit m_core.progressFileReport(entry);
        m_run.files.append({entry});
    }
}

void TopEntries::queueFolder(const QString &folder)
{
    if (m_run.exclusions.excludesFolder(folder))
        emit m_core.WarningMsg(ExclusionList::folderWarning(folder));
    else
        m_run.folders.append(folder);
}
