#pragma once

#include <QStringList>

class FileMask;
struct SharedRun;
class TextGrepCore;

/// Queues what a request names: its folders and files, or those of a list file.
/// Tells of each by the engine's signals. Used by the supervisor, on its thread.
class TopEntries {
public:
    TopEntries(TextGrepCore &core, SharedRun &run) : m_core(core), m_run(run) { }

    /// Returns early when the run is aborted.
    void queue();

    /// Whether files come from elsewhere than a folder's listing, which tells
    /// what they are.
    static bool nameFiles(const QStringList &pathlist);

private:
    void reserveFolders(const QStringList &entries);
    void queueListFile(const QString &path);
    void queueListEntry(const QString &entry, const FileMask &mask);
    void queueFolder(const QString &folder);

    TextGrepCore &m_core; // whose signals are emitted
    SharedRun &m_run;
};
