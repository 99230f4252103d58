#include "engine/SignalSpool.h"

#include "engine/CallQueue.h"
#include "engine/TextGrepCore.h"

#include <QThread>

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

/// Moves all of from to the end of target; from is left empty.
int moveAll(QStringList &from, QStringList *target)
{
    const int count = from.size();
    if (target->isEmpty())
        target->swap(from);
    else
        target->append(from);
    from.clear();
    return count;
}

} // namespace

SignalSpool::SignalSpool(QObject *parent) : QObject(parent), m_calls(new CallQueue(this))
{
}

SignalSpool::~SignalSpool()
{
    endEngine();
    // All threads have ended. That they did so before the members go, only a lock tells
    // the thread sanitizer.
    const std::scoped_lock ended(m_resultLock, m_currentFileLock, m_errorLock, m_warningLock,
                                 m_threadCountLock);
}

void SignalSpool::setEngineOptions(const EngineOptions &options)
{
    m_engineOptions = options;
}

void SignalSpool::scan(QStringList pathlist, QString mask, QString keyword1, QString keyword2,
                       QString keyword3, int plusline, int flg, bool fnameflg, bool subdir,
                       bool linecount)
{
    endEngine();
    ++m_run;
    {
        const std::lock_guard lock(m_resultLock);
        m_hitLines = 0;
        m_results.clear();
    }
    {
        const std::lock_guard lock(m_errorLock);
        m_errors.clear();
    }
    {
        const std::lock_guard lock(m_threadCountLock);
        m_threadCounts.clear();
    }
    m_dirQueueLength = 0;
    m_fileQueueLength = 0;

    auto *const engine = new TextGrepCore;
    if (m_engineOptions)
        engine->setOptions(*m_engineOptions);
    queueResults(engine);
    takeProgress(engine);
    m_engineThread = new QThread;
    m_engineThread->start();
    engine->moveToThread(m_engineThread);
    {
        const std::lock_guard lock(m_engineLock);
        m_engine = engine;
    }
    QMetaObject::invokeMethod(engine, "scan", Qt::QueuedConnection, Q_ARG(QStringList, pathlist),
                              Q_ARG(QString, mask), Q_ARG(QString, keyword1),
                              Q_ARG(QString, keyword2), Q_ARG(QString, keyword3),
                              Q_ARG(int, plusline), Q_ARG(int, flg), Q_ARG(bool, fnameflg),
                              Q_ARG(bool, subdir), Q_ARG(bool, linecount));
}

/// Results, messages and the end keep their order through one queue.
void SignalSpool::queueResults(TextGrepCore *engine)
{
    connectQueued(engine, &TextGrepCore::lcntFinished, &SignalSpool::lcntFinished);
    connectQueued(engine, &TextGrepCore::linecntAt, &SignalSpool::linecntAt);
    connectQueued(engine, &TextGrepCore::encodingAt, &SignalSpool::encodingAt);
    connectQueued(engine, &TextGrepCore::finished, &SignalSpool::onfinished);
    connectQueued(engine, &TextGrepCore::foundAtFile, &SignalSpool::showSearchResultFile);
    connectQueued(engine, &TextGrepCore::foundAtList, &SignalSpool::showSearchResultList);
    connectQueued(engine, &TextGrepCore::ErrorMsg, &SignalSpool::onErrorMsg);
    connectQueued(engine, &TextGrepCore::WarningMsg, &SignalSpool::onWarningMsg);
}

/// What waits in the queue outlives the engine that emitted it: after a
/// scan that stopped a run it must not count for the new one.
template <typename... Arguments>
void SignalSpool::connectQueued(TextGrepCore *engine, void (TextGrepCore::*signal)(Arguments...),
                                void (SignalSpool::*member)(Arguments...))
{
    connect(
        engine, signal, this,
        [this, member, run = m_run](const Arguments &...arguments) {
            m_calls->add([=, taken = std::tuple<Arguments...>(arguments...)]() mutable {
                if (run != m_run)
                    return;
                // Moved, so that the slot is the only owner of a list and may take it apart.
                std::apply([=](Arguments &...values) { (this->*member)(std::move(values)...); },
                           taken);
            });
        },
        Qt::DirectConnection);
}

/// Progress is emitted for every entry and every file: called directly, its
/// slots are locked or atomic.
void SignalSpool::takeProgress(const TextGrepCore *engine)
{
    connect(engine, &TextGrepCore::ThreadCount, this, &SignalSpool::slotThreadCount,
            Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressFileReport, this, &SignalSpool::progressFileReport,
            Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressFileCount, this, &SignalSpool::onFileCount,
            Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressFileAllCount, this, &SignalSpool::onFileAllCount,
            Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressFileSemaphoreCount, this,
            &SignalSpool::onFileSemaphoreCount, Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressDirSemaphoreCount, this,
            &SignalSpool::onDirSemaphoreCount, Qt::DirectConnection);
    connect(engine, &TextGrepCore::progressSrchCount, this, &SignalSpool::onSrchCount,
            Qt::DirectConnection);
}

void SignalSpool::endEngine()
{
    TextGrepCore *engine = nullptr;
    QThread *thread = nullptr;
    {
        const std::lock_guard lock(m_engineLock);
        std::swap(engine, m_engine);
        std::swap(thread, m_engineThread);
    }
    if (!engine)
        return;
    thread->exit(0);
    thread->wait();
    delete thread;
    delete engine;
}

void SignalSpool::requestScan(const SearchCondition &condition)
{
    const std::lock_guard lock(m_engineLock);
    QMetaObject::invokeMethod(
        this,
        [this, condition, request = ++m_requests] {
            scan(condition.pathlist, condition.mask, condition.keyword1, condition.keyword2,
                 condition.keyword3, condition.plusline, condition.flg, condition.fnameflg,
                 condition.subdir, condition.linecount);
            const std::lock_guard engineLock(m_engineLock);
            if (request <= m_abortedRequests)
                abortEngine();
        },
        Qt::QueuedConnection);
}

void SignalSpool::abort()
{
    const std::lock_guard lock(m_engineLock);
    m_abortedRequests = m_requests;
    abortEngine();
}

/// With m_engineLock held.
void SignalSpool::abortEngine()
{
    if (!m_engine)
        return;
    // At once for the run that is under way, and behind the events that wait
    // for one whose scan is still among them.
    m_engine->abort();
    QMetaObject::invokeMethod(m_engine, "abort", Qt::QueuedConnection);
}

void SignalSpool::onfinished(bool sw)
{
    emit finished(sw);
    endEngine();
}

void SignalSpool::onDirSemaphoreCount(int cnt)
{
    m_dirQueueLength = cnt;
}

void SignalSpool::onFileSemaphoreCount(int cnt)
{
    m_fileQueueLength = cnt;
}

void SignalSpool::onWarningMsg(QString errmsg)
{
    const std::lock_guard lock(m_warningLock);
    m_warnings.append(errmsg);
}

void SignalSpool::onErrorMsg(QString errmsg)
{
    const std::lock_guard lock(m_errorLock);
    m_errors.append(errmsg);
}

void SignalSpool::slotThreadCount(int threadid, int cnt)
{
    const std::lock_guard lock(m_threadCountLock);
    m_threadCounts.insert(threadid, cnt);
}

void SignalSpool::showSearchResultList(QString filename, QStringList list)
{
    const std::lock_guard lock(m_resultLock);
    ++m_resultFiles;
    addResult(QStringLiteral("::") + filename);
    for (QString &line : list)
        addResult(std::move(line));
    m_hitLines += list.size();
}

void SignalSpool::onFileAllCount(int cnt)
{
    m_announced += cnt;
}

void SignalSpool::onFileCount()
{
    ++m_topEntries;
}

void SignalSpool::onSrchCount()
{
    ++m_searched;
}

void SignalSpool::progressFileReport(QString filename)
{
    const std::lock_guard lock(m_currentFileLock);
    m_currentFile.swap(filename);
}

void SignalSpool::showSearchResultFile(QString filename)
{
    const std::lock_guard lock(m_resultLock);
    ++m_resultFiles;
    addResult(QStringLiteral("::") + filename);
}

void SignalSpool::addResult(QString &&line)
{
    m_results.append(QString());
    m_results.last().swap(line);
}

int SignalSpool::resultCount() const
{
    const std::lock_guard lock(m_resultLock);
    return m_results.size();
}

int SignalSpool::takeResults(QStringList *lines, int max)
{
    const std::lock_guard lock(m_resultLock);
    const int count = m_results.size();
    if (max < 1 || count <= max)
        return moveAll(m_results, lines);
    for (int i = 0; i < max; ++i)
        lines->append(m_results.takeFirst());
    return max;
}

int SignalSpool::takeErrors(QStringList *messages)
{
    const std::lock_guard lock(m_errorLock);
    return moveAll(m_errors, messages);
}

int SignalSpool::takeWarnings(QStringList *messages)
{
    const std::lock_guard lock(m_warningLock);
    return moveAll(m_warnings, messages);
}

QString SignalSpool::currentFile() const
{
    const std::lock_guard lock(m_currentFileLock);
    return m_currentFile;
}

int SignalSpool::dirQueueLength() const
{
    return m_dirQueueLength;
}

int SignalSpool::fileQueueLength() const
{
    return m_fileQueueLength;
}

int SignalSpool::resultFileCount() const
{
    const std::lock_guard lock(m_resultLock);
    return m_resultFiles;
}

int SignalSpool::hitLineCount() const
{
    const std::lock_guard lock(m_resultLock);
    return m_hitLines;
}

QMap<int, int> SignalSpool::threadCounts() const
{
    const std::lock_guard lock(m_threadCountLock);
    return m_threadCounts;
}
