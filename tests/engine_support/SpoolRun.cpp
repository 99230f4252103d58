#include "tests/engine_support/SpoolRun.h"

#include "engine/SignalSpool.h"

#include <QCoreApplication>
#include <QTest>

SpoolRun::SpoolRun(const EngineOptions &options) : m_spool(std::make_unique<SignalSpool>())
{
    listen();
    m_spool->setEngineOptions(options);
    m_thread.start();
    m_spool->moveToThread(&m_thread);
}

SpoolRun::~SpoolRun()
{
    finish();
}

void SpoolRun::finish()
{
    m_thread.exit(0);
    m_thread.wait();
    m_spool.reset();
    QCoreApplication::sendPostedEvents(this);
}

void SpoolRun::listen()
{
    connect(
        m_spool.get(), &SignalSpool::finished, this,
        [this](bool aborted) { finishedFlags.append(aborted); }, Qt::QueuedConnection);
    connect(
        m_spool.get(), &SignalSpool::lcntFinished, this,
        [this](bool aborted) { lcntFinishedFlags.append(aborted); }, Qt::QueuedConnection);
    connect(
        m_spool.get(), &SignalSpool::linecntAt, this,
        [this](const QString &path, int count) {
            lineCounts.append({path, count});
        },
        Qt::QueuedConnection);
    connect(
        m_spool.get(), &SignalSpool::encodingAt, this,
        [this](const QString &path, int codeSet, int lineEnd, bool bom) {
            encodings.append({path, codeSet, lineEnd, bom});
        },
        Qt::QueuedConnection);
}

void SpoolRun::scan(const SearchCondition &c)
{
    QMetaObject::invokeMethod(
        m_spool.get(), "scan", Qt::QueuedConnection, Q_ARG(QStringList, c.pathlist),
        Q_ARG(QString, c.mask), Q_ARG(QString, c.keyword1), Q_ARG(QString, c.keyword2),
        Q_ARG(QString, c.keyword3), Q_ARG(int, c.plusline), Q_ARG(int, c.flg),
        Q_ARG(bool, c.fnameflg), Q_ARG(bool, c.subdir), Q_ARG(bool, c.linecount));
}

void SpoolRun::settle()
{
    QMetaObject::invokeMethod(
        m_spool.get(), [] {}, Qt::BlockingQueuedConnection);
}

bool SpoolRun::waitForEnds(int count)
{
    return QTest::qWaitFor(
        [this, count] { return finishedFlags.size() + lcntFinishedFlags.size() >= count; }, 60000);
}

QStringList SpoolRun::takeAll()
{
    QStringList lines;
    m_spool->takeResults(&lines, 0);
    return lines;
}
