#include "tests/engine_support/EngineRun.h"

#include "engine/TextGrepCore.h"

#include <QCoreApplication>
#include <QTest>

EngineRun::EngineRun(const EngineOptions &options) : m_engine(new TextGrepCore)
{
    m_engine->setOptions(options);
    connectEngine();
}

EngineRun::~EngineRun()
{
    delete m_engine;
    // What its threads still had to say.
    QCoreApplication::sendPostedEvents(this);
}

void EngineRun::end(QVector<bool> *flags, bool aborted)
{
    if (++m_ended > m_started)
        qFatal("run number %d has ended twice", m_started);
    flags->append(aborted);
    emit ended();
}

void EngineRun::connectEngine()
{
    connect(
        m_engine, &TextGrepCore::foundAtList, this,
        [this](const QString &path, const QStringList &list) {
            lists.append({path, list});
        },
        Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::foundAtFile, this,
        [this](const QString &path) { filesWithoutHits.append(path); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::linecntAt, this,
        [this](const QString &path, int count) {
            lineCounts.append({path, count});
        },
        Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::ErrorMsg, this,
        [this](const QString &message) { errors.append(message); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::WarningMsg, this,
        [this](const QString &message) { warnings.append(message); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::progressFileReport, this,
        [this](const QString &name) { reportedNames.append(name); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::progressFileAllCount, this,
        [this](int count) { announced.append(count); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::progressFileCount, this, [this] { ++topEntries; },
        Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::progressSrchCount, this, [this] { ++searched; },
        Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::finished, this,
        [this](bool aborted) { end(&finishedFlags, aborted); }, Qt::QueuedConnection);
    connect(
        m_engine, &TextGrepCore::lcntFinished, this,
        [this](bool aborted) { end(&lcntFinishedFlags, aborted); }, Qt::QueuedConnection);
}

void EngineRun::start(const SearchCondition &condition)
{
    ++m_started;
    m_engine->scan(condition.pathlist, condition.mask, condition.keyword1, condition.keyword2,
                   condition.keyword3, condition.plusline, condition.flg, condition.fnameflg,
                   condition.subdir, condition.linecount);
}

bool EngineRun::waitForEnd(int timeoutMs)
{
    return QTest::qWaitFor(
        [this] { return !finishedFlags.isEmpty() || !lcntFinishedFlags.isEmpty(); }, timeoutMs);
}

bool EngineRun::run(const SearchCondition &condition, int timeoutMs)
{
    lists.clear();
    filesWithoutHits.clear();
    lineCounts.clear();
    errors.clear();
    warnings.clear();
    reportedNames.clear();
    announced.clear();
    topEntries = 0;
    searched = 0;
    finishedFlags.clear();
    lcntFinishedFlags.clear();
    start(condition);
    return waitForEnd(timeoutMs);
}

QMap<QString, QStringList> EngineRun::hitsByPath() const
{
    QMap<QString, QStringList> hits;
    for (const auto &list : lists)
        hits[list.first] += list.second;
    return hits;
}

QStringList EngineRun::pathsWithHits() const
{
    return hitsByPath().keys();
}
