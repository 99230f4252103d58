#pragma once

#include "engine/FileLoader.h"
#include "engine/FileSearcher.h"

#include <memory>

class SearchPlan;
struct SharedRun;
class TextGrepCore;

/// Loads files and searches them, or counts their lines, and tells what it finds
/// by the engine's signals. One object a thread.
class FileWorker {
public:
    FileWorker(TextGrepCore &core, const SharedRun &run);

    /// Tells nothing of a file in the middle of which the run is aborted.
    void handle(const QString &path);

private:
    void handleLoaded(const QString &path);
    void reportEncoding(const QString &path, FileLoader::Outcome outcome);
    void reportRefused(const QString &path);
    void reportFailed(const QString &path);
    void search(const QString &path);
    void report(const QString &path, const QStringList &hits);

    TextGrepCore &m_core; // whose signals are emitted
    const SharedRun &m_run;
    const std::shared_ptr<const SearchPlan> m_plan;
    FileLoader m_loader;
    FileSearcher m_searcher;
};
