#include "engine/TextGrepCore.h"

#include "engine/CurrentThread.h"
#include "engine/ExclusionList.h"
#include "engine/FileCodeSet.h"
#include "engine/FileSearcher.h"
#include "engine/FolderLister.h"
#include "engine/ListFile.h"
#include "engine/SearchPlan.h"
#include "engine/TextDecoder.h"
#include "engine/ThreadPoolTask.h"
#include "settings/AppSettings.h"

#include <QDebug>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <new>

namespace {

constexpr int kThreadsOnOneProcessor = 4;
constexpr std::chrono::milliseconds kSupervisorPeriod{5};
constexpr int kEntriesPerAbortCheck = 100;
constexpr unsigned long kShortestPollUs = 20;
constexpr unsigned long kLongestPollUs = 2000;

QString excludedFileWarning(const QString &name)
{
    return QStringLiteral("Warning exclution file:") + name;
}

QString excludedFolderWarning(const QString &folder)
{
    return QStringLiteral("Warning exclution folder:") + folder;
}

bool namesFolder(const QString &path)
{
    return path.endsWith(QLatin1Char('/'));
}

/// Between two looks at the workers that are to end, in microseconds: they end
/// at once but for one that is in the middle of a large file.
unsigned long pauseAfter(unsigned long pause)
{
    return std::clamp(2 * pause, kShortestPollUs, kLongestPollUs);
}

bool namesListFile(const QStringList &pathlist)
{
    return !pathlist.isEmpty() && pathlist.first().startsWith(QLatin1Char('@'));
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
    m_options = options;
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
    m_folders.clear();
    m_files.clear();
    m_claims.clear();
    m_folders.drainPermits();
    m_files.drainPermits();
    if (!m_optionsGiven)
        m_options.limits = SearchLimits::fromSettings(AppSettings::instance());
    if (!m_options.lister)
        m_options.lister = std::make_shared<NativeFolderLister>();
    m_condition = condition;
    m_mask = FileMask(condition.mask);
    m_plan = std::make_shared<const SearchPlan>(condition, m_options);
    m_namedFiles = namesListFile(condition.pathlist)
        || !std::all_of(condition.pathlist.cbegin(), condition.pathlist.cend(), namesFolder);
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
    m_folders.holdOpen();
    startTask(&TextGrepCore::doWalkDirs, false);
    // Before the walkers, which spread over every thread that is still free.
    if (m_condition.linecount)
        startTask(&TextGrepCore::doLoadFile, false);
    startTask(&TextGrepCore::doWalkSubDirs, true);
}

void TextGrepCore::abort()
{
    {
        const std::lock_guard lock(m_abortLock);
        if (isAborted())
            return;
        m_aborted = true;
        m_folders.drainPermits();
        m_files.drainPermits();
    }
    wakeSupervisor();
}

void TextGrepCore::abortBlocking()
{
    abort();
    m_pool.waitForDone();
    meetWorkers();
    const std::lock_guard lock(m_abortLock);
    m_aborted = false;
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
    queueTopEntries();
    m_folders.finishListing();
    supervise();
    endWorkers();
    if (m_condition.linecount)
        emit lcntFinished(isAborted());
    else
        emit finished(isAborted());
}

void TextGrepCore::queueTopEntries()
{
    const QStringList &entries = m_condition.pathlist;
    if (namesListFile(entries)) {
        queueListFile(entries.first().mid(1));
        return;
    }
    reserveTopFolders(entries);
    for (const QString &entry : entries) {
        if (entry.isEmpty())
            continue;
        emit progressFileCount();
        QThread::yieldCurrentThread();
        if (isAborted())
            return;
        if (namesFolder(entry)) {
            queueFolder(entry);
        } else {
            emit progressFileReport(entry);
            m_files.append({entry});
        }
    }
}

void TextGrepCore::queueListFile(const QString &path)
{
    const QStringList entries = ListFile::read(path);
    emit progressFileAllCount(entries.size());
    if (m_condition.subdir)
        reserveTopFolders(entries);
    const FileMask mask = m_mask;
    for (int i = 0; i < entries.size(); ++i) {
        emit progressFileCount();
        QThread::yieldCurrentThread();
        if (i % kEntriesPerAbortCheck == 0 && isAborted())
            return;
        queueListEntry(entries.at(i), mask);
    }
}

void TextGrepCore::queueListEntry(const QString &entry, const FileMask &mask)
{
    if (namesFolder(entry)) {
        if (m_condition.subdir)
            queueFolder(entry);
        return;
    }
    const QString name = QFileInfo(entry).fileName();
    if (ExclusionList::excludesFile(m_options.limits.excludedFiles, name)) {
        emit WarningMsg(excludedFileWarning(name));
    } else if (mask.passes(name)) {
        emit progressFileReport(entry);
        m_files.append({entry});
    }
}

void TextGrepCore::queueFolder(const QString &folder)
{
    if (ExclusionList::excludesFolder(m_options.limits.excludedFolders, folder))
        emit WarningMsg(excludedFolderWarning(folder));
    else
        m_folders.append(folder);
}

void TextGrepCore::reserveTopFolders(const QStringList &entries)
{
    FolderIdentity identity;
    for (const QString &entry : entries) {
        const bool listed = namesFolder(entry)
            && !ExclusionList::excludesFolder(m_options.limits.excludedFolders, entry);
        if (listed && m_options.lister->identify(entry, &identity))
            m_claims.reserve(identity, entry);
        if (isAborted())
            return;
    }
}

/// Watches the queues until the run is over, and starts the load phase of a
/// search when the walk is. Woken by what may change its mind, and every 5 ms.
void TextGrepCore::supervise()
{
    bool loadPhaseStarted = m_condition.linecount;
    std::unique_lock lock(m_samplingLock);
    while (!isAborted()) {
        const bool walking = m_folders.hasWork();
        const int fileCount = m_files.length();
        // Fewer files than the threshold are left unloaded. The walkers still
        // wait for folders then, so that nothing but this would end the run.
        const bool tooFew = !loadPhaseStarted && fileCount < m_options.loadThreshold;
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
    for (unsigned long pause = 0; otherWorkers() > 0 && !isAborted(); pause = pauseAfter(pause)) {
        wake(m_folders);
        QThread::usleep(pause);
    }
    if (!isAborted())
        startTask(&TextGrepCore::doLoadFile, true);
}

/// Wakes every worker that waits for a folder or a file; it finds none and ends.
void TextGrepCore::endWorkers()
{
    for (unsigned long pause = 0; otherWorkers() > 0; pause = pauseAfter(pause)) {
        wake(m_folders);
        wake(m_files);
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
    const FileMask mask = m_mask;
    int entriesListed = 0;
    while (!isAborted()) {
        m_folders.acquirePermit();
        QString folder;
        int queueLength = 0;
        const bool taken = m_folders.beginListing(&folder, &queueLength);
        emit progressDirSemaphoreCount(queueLength);
        if (!taken)
            return;
        emit progressFileSemaphoreCount(m_files.length());
        QThread::yieldCurrentThread();
        if (isAborted())
            return;
        const QVector<FolderEntry> entries = m_options.lister->list(
            folder,
            [this, &folder](const FolderIdentity &identity) { return mayList(identity, folder); },
            [this] { return !isAborted(); });
        entriesListed += entries.size();
        emit ThreadCount(CurrentThread::id(), entriesListed);
        queueEntries(folder, entries, mask);
        if (m_folders.finishListing())
            wakeSupervisor();
    }
}

/// Real folders form a tree, so that one without an identity is met once; what
/// a link leads to may be a folder above it.
bool TextGrepCore::mayList(const FolderIdentity &identity, const QString &folder)
{
    return identity.isKnown() ? m_claims.claim(identity, folder) : !m_folders.followsLinks();
}

/// Queues what the search wants of a folder's entries, sorted by name: the
/// platform's order differs from file system to file system.
void TextGrepCore::queueEntries(const QString &folder, const QVector<FolderEntry> &entries,
                                const FileMask &mask)
{
    QStringList files;
    QStringList folders;
    for (int i = 0; i < entries.size(); ++i) {
        const FolderEntry &entry = entries.at(i);
        const QString path = folder + entry.name;
        emit progressFileReport(path);
        if (i % kEntriesPerAbortCheck == 0 && isAborted())
            return;
        if (entry.kind == FolderEntry::File)
            sortOutFile(path, entry.name, mask, &files);
        else if (entry.kind != FolderEntry::Other)
            sortOutFolder(path + QLatin1Char('/'), entry, &folders);
    }
    std::sort(files.begin(), files.end());
    std::sort(folders.begin(), folders.end());
    m_files.append(files);
    m_folders.append(folders);
}

void TextGrepCore::sortOutFile(const QString &path, const QString &name, const FileMask &mask,
                               QStringList *files)
{
    if (ExclusionList::excludesFile(m_options.limits.excludedFiles, name)) {
        emit WarningMsg(excludedFileWarning(name));
    } else if (mask.passes(name)) {
        emit progressFileReport(path);
        files->append(path);
    }
}

void TextGrepCore::sortOutFolder(const QString &path, const FolderEntry &entry,
                                 QStringList *folders)
{
    if (ExclusionList::excludesFolder(m_options.limits.excludedFolders, entry.name))
        emit WarningMsg(excludedFolderWarning(path));
    else if (!m_condition.subdir)
        return;
    else if (entry.kind == FolderEntry::FolderLink)
        m_folders.appendLink(path);
    else
        folders->append(path);
}

void TextGrepCore::doLoadFile()
{
    const WorkerScope scope(*this);
    const std::shared_ptr<const SearchPlan> plan = m_plan;
    FileLoader loader(plan->limits(),
                      m_namedFiles ? FileReader::TypeCheck::BeforeOpen
                                   : FileReader::TypeCheck::WhenOpen);
    loader.stopWhen([this] { return isAborted(); });
    FileSearcher searcher(*plan);
    int filesLoaded = 0;
    while (waitWhileHeldBack()) {
        m_files.acquirePermit();
        if (isAborted())
            return;
        QString path;
        int queueLength = 0;
        const bool taken = m_files.takeFirst(&path, &queueLength);
        emit progressFileSemaphoreCount(queueLength);
        if (!taken)
            return;
        if (queueLength == 1)
            wakeSupervisor();
        emit ThreadCount(CurrentThread::id(), ++filesLoaded);
        try {
            loadOne(path, loader, searcher);
        } catch (const std::bad_alloc &) { // one large file must not end the program
            emit ErrorMsg(QStringLiteral("Error out of memory:") + path);
        }
    }
}

/// False when the run is aborted.
bool TextGrepCore::waitWhileHeldBack() const
{
    while (!isAborted() && m_options.holdBack && m_options.holdBack())
        QThread::msleep(1);
    return !isAborted();
}

void TextGrepCore::loadOne(const QString &path, FileLoader &loader, FileSearcher &searcher)
{
    const FileLoader::Outcome outcome =
        m_condition.linecount ? loader.load(path) : loader.open(path);
    if (loader.wasStopped())
        return;
    if (m_condition.linecount && m_options.reportEncodings)
        reportEncoding(path, loader, outcome);
    else if (outcome == FileLoader::Outcome::Refused)
        reportRefused(path, loader.codeSet());
    else if (outcome == FileLoader::Outcome::Skipped)
        return;
    else if (m_condition.linecount)
        emit linecntAt(path, countLines(loader.content(), loader.size(), loader.codeSet()));
    else
        searchLoaded(path, loader, searcher);
}

void TextGrepCore::reportRefused(const QString &path, int codeSet)
{
    emit ErrorMsg(refusalMessage(codeSet, m_options.limits.bigsize, path));
}

QString TextGrepCore::refusalMessage(int codeSet, int bigsize, const QString &path)
{
    if (codeSet == kFileRefused)
        return QStringLiteral("Error File size over %1 MByte:").arg(bigsize) + path;
    qDebug() << "doLoadFile" << codeSet << "getFileCodeSet() error" << path;
    return QStringLiteral("Error GetFileCode:") + path;
}

void TextGrepCore::reportEncoding(const QString &path, const FileLoader &loader,
                                  FileLoader::Outcome outcome)
{
    if (outcome == FileLoader::Outcome::Loaded)
        emit encodingAt(path, loader.codeSet(), loader.lineEnd(), loader.hasMark());
    else if (outcome == FileLoader::Outcome::Refused)
        emit encodingAt(path, kFileRefused, -1, false);
}

void TextGrepCore::searchLoaded(const QString &path, FileLoader &loader, FileSearcher &searcher)
{
    emit progressSrchCount();
    emit progressFileReport(path);
    const QStringList hits = searcher.search(loader.pieces(), loader.codeSet());
    if (loader.wasStopped()) // what was read of its last line may be half of it
        return;
    if (!hits.isEmpty())
        emit foundAtList(path, hits);
    else if (m_condition.fnameflg)
        emit foundAtFile(path);
}
