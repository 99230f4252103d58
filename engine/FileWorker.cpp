#include "engine/FileWorker.h"

#include "engine/FileCodeSet.h"
#include "engine/SearchPlan.h"
#include "engine/SharedRun.h"
#include "engine/TextDecoder.h"
#include "engine/TextGrepCore.h"
#include "engine/TopEntries.h"

namespace {

FileReader::TypeCheck typeCheckFor(const SharedRun &run)
{
    return TopEntries::nameFiles(run.condition.pathlist) ? FileReader::TypeCheck::BeforeOpen
                                                         : FileReader::TypeCheck::WhenOpen;
}

} // namespace

FileWorker::FileWorker(TextGrepCore &core, const SharedRun &run)
    : m_core(core)
    , m_run(run)
    , m_plan(run.plan)
    , m_loader(m_plan->limits(), typeCheckFor(run))
    , m_searcher(*m_plan)
{
    const auto isAborted = [this] {
        return m_run.isAborted();
    };
    m_loader.stopWhen(isAborted);
    m_searcher.stopWhen(isAborted);
}

void FileWorker::handle(const QString &path)
{
    const bool counts = m_run.condition.linecount;
    const FileLoader::Outcome outcome = counts ? m_loader.load(path) : m_loader.open(path);
    if (m_loader.wasStopped() || outcome == FileLoader::Outcome::Skipped)
        return;
    if (counts && m_loader.hasFailed())
        reportFailed(path);
    else if (counts && m_run.options.reportEncodings)
        reportEncoding(path, outcome);
    else if (outcome == FileLoader::Outcome::Refused)
        reportRefused(path);
    else
        handleLoaded(path);
}

void FileWorker::handleLoaded(const QString &path)
{
    if (m_run.condition.linecount)
        emit m_core.linecntAt(path,
                              countLines(m_loader.content(), m_loader.size(), m_loader.codeSet()));
    else
        search(path);
}

void FileWorker::reportEncoding(const QString &path, FileLoader::Outcome outcome)
{
    if (outcome == FileLoader::Outcome::Loaded)
        emit m_core.encodingAt(path, m_loader.codeSet(), m_loader.lineEnd(), m_loader.hasMark());
    else if (outcome == FileLoader::Outcome::Refused)
        emit m_core.encodingAt(path, kFileRefused, -1, false);
}

void FileWorker::reportRefused(const QString &path)
{
    const int bigsize = m_run.options.limits.bigsize;
    emit m_core.ErrorMsg(TextGrepCore::refusalMessage(m_loader.codeSet(), bigsize, path));
}

/// What the disk does not give back is told: it may hold what is searched.
void FileWorker::reportFailed(const QString &path)
{
    emit m_core.ErrorMsg(QStringLiteral("Error File read:") + path);
}

void FileWorker::search(const QString &path)
{
    emit m_core.progressSrchCount();
    emit m_core.progressFileReport(path);
    const QStringList hits = m_searcher.search(m_loader.pieces(), m_loader.codeSet());
    // What was read of the last line may be half of it, and further hits are missing.
    if (m_loader.wasStopped() || m_searcher.wasStopped())
        return;
    if (!hits.isEmpty() || m_run.condition.fnameflg)
        report(path, hits);
    if (m_loader.hasFailed())
        reportFailed(path);
}

void FileWorker::report(const QString &path, const QStringList &hits)
{
    if (m_run.options.hitSink)
        m_run.options.hitSink(path, m_loader.codeSet(), hits);
    else if (!hits.isEmpty())
        emit m_core.foundAtList(path, hits);
    else
        emit m_core.foundAtFile(path);
}
