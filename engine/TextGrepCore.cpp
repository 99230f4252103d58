#include "engine/TextGrepCore.h"

#include "engine/CurrentThread.h"
#include "engine/FileCodeSet.h"
#include "engine/FileWorker.h"
#include "engine/FolderLister.h"
#include "engine/FolderWalker.h"
#include "engine/SearchPlan.h"
#include "engine/ThreadPoolTask.h"
#include "engine/TopEntries.h"
#include "settings/AppSettings.h"

#include <QDebug>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <new>

namespace {

constexpr int kThreadsOnOneProcessor = 4;
/// A yield gives away a whole turn where other programs want the processor: one
/// for each folder doubled the time of a search there.
constexpr int kFoldersPerYield = 256;
constexpr std::chrono::milliseconds kSupervisorPeriod{5};
constexpr unsigned long kShortestPollUs = 20;
constexpr unsigned long kLongestPollUs = 2000;

/// Between two looks at the workers that are to end, in microseconds: they end
/// at once but for one that is in the middle of a large file.
unsigned long pauseAfter(unsigned long pause)
{
    return std::clamp(2 * pause, kShortestPollUs, kLongestPollUs);
}

} // namespace

TextGrepCore::TextGrepCore(QObject *parent)
    : QObject(parent), m_maxThreadCount(threadLimit(QThread::idealThreadCount()))
{
    m_pool.setMaxThreadCount(m_maxThreadCount);
}

TextGrepCore::~TextGrepCore()
{
    abortBlocking();
}

int TextGrepCore::threadLimit(int idealThreadCount)
{
    return idealThreadCount <= 1 ? kThreadsOnOneProcessor : idealThreadCount + 1;
}

void TextGrepCore::setOptions(const EngineOptions &options)
{
    m_run.options = options;
    m_optionsGiven = true;
}

void TextGrepCore::scan(QStringList pathlist, QString mask, QString keyword1, QString keyword2,
                        QString keyword3, int plusline, int flg, bool fnameflg, bool subdir,
                        bool linecount)
{
    abortBlocking();
    prepareRun(
        {pathlist, mask, keyword1, keyword2, keyword3, plusline, flg, fnameflg, subdir, linecount});
    startTasks();
}

void TextGrepCore::prepareRun(const SearchCondition &condition)
{
    m_run.folders.clear();
    m_run.files.clear();
    m_run.claims.clear();
    m_run.folders.drainPermits();
    m_run.files.drainPermits();
    if (!m_optionsGiven)
        m_run.options.limits = SearchLimits::fromSettings(AppSettings::instance());
    if (!m_run.options.lister)
        m_run.options.lister = std::make_shared<NativeFolderLister>();
    m_run.condition = condition;
    m_run.mask = FileMask(condition.mask);
    m_run.exclusions =
        ExclusionList(m_run.options.limits.excludedFiles, m_run.options.limits.excludedFolders);
    m_run.plan = std::make_shared<const SearchPlan>(condition, m_run.options);
}

void TextGrepCore::startTask(void (TextGrepCore::*slot)(), bool replicate)
{
    m_tasks.push_back(std::make_unique<ThreadPoolTask>(&m_pool));
    ThreadPoolTask *const task = m_tasks.back().get();
    connect(task, &ThreadPoolTask::start, this, slot, Qt::DirectConnection);
    // Last: the task's lock, which each copy takes first, shows it the rest.
    task->setReplicate(replicate);
    m_pool.start(task);
}

void TextGrepCore::startTasks()
{
    const std::lock_guard lock(m_samplingLock);
    m_tasks.clear();
    m_run.folders.holdOpen();
    startTask(&TextGrepCore::doWalkDirs, false);
    // Before the walkers, which spread over every thread that is still free.
    if (m_run.condition.linecount)
        startTask(&TextGrepCore::doLoadFile, false);
    startTask(&TextGrepCore::doWalkSubDirs, true);
}

void TextGrepCore::abort()
{
    {
        const std::lock_guard lock(m_abortLock);
        if (m_run.isAborted())
            return;
        m_run.aborted = true;
        m_run.folders.drainPermits();
        m_run.files.drainPermits();
    }
    wakeSupervisor();
}

void TextGrepCore::abortBlocking()
{
    abort();
    m_pool.waitForDone();
    meetWorkers();
    const std::lock_guard lock(m_abortLock);
    m_run.aborted = false;
}

int TextGrepCore::otherWorkers() const
{
    return m_pool.activeThreadCount() - 1;
}

void TextGrepCore::wakeSupervisor()
{
    const std::lock_guard lock(m_samplingLock);
    m_changed.notify_all();
}

/// Passes through the lock that scan holds while it starts the workers: what a
/// worker did until it ends is then seen by whoever waits for it.
void TextGrepCore::meetWorkers()
{
    const std::lock_guard lock(m_samplingLock);
}

void TextGrepCore::doWalkDirs()
{
    const WorkerScope scope(*this);
    TopEntries(*this, m_run).queue();
    m_run.folders.finishListing();
    supervise();
    endWorkers();
    if (m_run.condition.linecount)
        emit lcntFinished(m_run.isAborted());
    else
        emit finished(m_run.isAborted());
}

/// Watches the queues until the run is over, and starts the load phase of a
/// search when the walk is. Woken by what may change its mind, and every 5 ms.
void TextGrepCore::supervise()
{
    bool loadPhaseStarted = m_run.condition.linecount;
    std::unique_lock lock(m_samplingLock);
    while (!m_run.isAborted()) {
        const bool walking = m_run.folders.hasWork();
        const int fileCount = m_run.files.length();
        // Fewer files than the threshold are left unloaded. The walkers still
        // wait for folders then, so that nothing but this would end the run.
        const bool tooFew = !loadPhaseStarted && fileCount < m_run.options.loadThreshold;
        if (!walking && (fileCount == 0 || tooFew))
            return;
        if (!walking && !loadPhaseStarted) {
            lock.unlock();
            startLoadPhase(fileCount);
            lock.lock();
            loadPhaseStarted = true;
        }
        if (otherWorkers() == 0)
            return;
        m_changed.wait_for(lock, kSupervisorPeriod);
    }
}

/// Ends the walkers, so that every thread but the supervisor's is free, and
/// starts the loaders on all of them.
void TextGrepCore::startLoadPhase(int fileCount)
{
    qDebug() << "doWalkDirs"
             << "dsemcnt=" << 0 << "fcnt=" << fileCount << "thcnt=" << m_pool.activeThreadCount();
    for (unsigned long pause = 0; otherWorkers() > 0 && !m_run.isAborted();
         pause = pauseAfter(pause)) {
        wake(m_run.folders);
        QThread::usleep(pause);
    }
    if (!m_run.isAborted())
        startTask(&TextGrepCore::doLoadFile, true);
}

/// Wakes every worker that waits for a folder or a file; it finds none and ends.
void TextGrepCore::endWorkers()
{
    for (unsigned long pause = 0; otherWorkers() > 0; pause = pauseAfter(pause)) {
        wake(m_run.folders);
        wake(m_run.files);
        QThread::usleep(pause);
    }
}

/// Sees to it that there is a permit for every other worker.
template <typename Queue> void TextGrepCore::wake(Queue &queue) const
{
    for (int missing = otherWorkers() - queue.permits(); missing > 0; --missing)
        queue.releasePermit();
}

void TextGrepCore::doWalkSubDirs()
{
    const WorkerScope scope(*this);
    FolderWalker walker(*this, m_run);
    int foldersListed = 0;
    int entriesListed = 0;
    while (!m_run.isAborted()) {
        m_run.folders.acquirePermit();
        QString folder;
        int queueLength = 0;
        const bool taken = m_run.folders.beginListing(&folder, &queueLength);
        emit progressDirSemaphoreCount(queueLength);
        if (!taken)
            return;
        emit progressFileSemaphoreCount(m_run.files.length());
        if (++foldersListed % kFoldersPerYield == 0)
            QThread::yieldCurrentThread();
        if (m_run.isAborted())
            return;
        const QVector<FolderEntry> entries = walker.list(folder);
        entriesListed += entries.size();
        emit ThreadCount(CurrentThread::id(), entriesListed);
        walker.queue(folder, entries);
        if (m_run.folders.finishListing())
            wakeSupervisor();
    }
}

void TextGrepCore::doLoadFile()
{
    const WorkerScope scope(*this);
    FileWorker worker(*this, m_run);
    int filesLoaded = 0;
    while (waitWhileHeldBack()) {
        m_run.files.acquirePermit();
        if (m_run.isAborted())
            return;
        QString path;
        int queueLength = 0;
        const bool taken = m_run.files.takeFirst(&path, &queueLength);
        emit progressFileSemaphoreCount(queueLength);
        if (!taken)
            return;
        if (queueLength == 1)
            wakeSupervisor();
        emit ThreadCount(CurrentThread::id(), ++filesLoaded);
        try {
            worker.handle(path);
        } catch (const std::bad_alloc &) { // one large file must not end the program
            emit ErrorMsg(QStringLiteral("Error out of memory:") + path);
        }
    }
}

/// False when the run is aborted.
bool TextGrepCore::waitWhileHeldBack() const
{
    while (!m_run.isAborted() && m_run.options.holdBack && m_run.options.holdBack())
        QThread::msleep(1);
    return !m_run.isAborted();
}

QString TextGrepCore::refusalMessage(int codeSet, int bigsize, const QString &path)
{
    if (codeSet == kFileRefused)
        return QStringLiteral("Error File size over %1 MByte:").arg(bigsize) + path;
    qDebug() << "doLoadFile" << codeSet << "getFileCodeSet() error" << path;
    return QStringLiteral("Error GetFileCode:") + path;
}
