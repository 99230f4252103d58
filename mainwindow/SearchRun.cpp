#include "mainwindow/SearchRun.h"

#include "engine/SignalSpool.h"
#include "settings/AppSettings.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSemaphore>

SearchRun::SearchRun(QObject *parent) : QObject(parent)
{
}

SearchRun::~SearchRun()
{
    end();
}

void SearchRun::start(const SearchCondition &condition)
{
    end();
    m_spool = std::make_unique<SignalSpool>();
    const SignalSpool *spool = m_spool.get();
    // At once, as nobody processes events here while endWithin() waits; and first, so
    // that whoever hears of the end finds it known.
    m_engineEnd = std::make_shared<QSemaphore>();
    const auto tellEnd = [end = m_engineEnd] {
        end->release();
    };
    connect(spool, &SignalSpool::finished, spool, tellEnd, Qt::DirectConnection);
    connect(spool, &SignalSpool::lcntFinished, spool, tellEnd, Qt::DirectConnection);
    // Queued: the spool emits on its own thread.
    connect(spool, &SignalSpool::finished, this, &SearchRun::searchFinished, Qt::QueuedConnection);
    connect(spool, &SignalSpool::lcntFinished, this, &SearchRun::lineCountFinished,
            Qt::QueuedConnection);
    connect(spool, &SignalSpool::linecntAt, this, &SearchRun::lineCounted, Qt::QueuedConnection);
    // Taken here, on the thread that changes the settings.
    EngineOptions options;
    options.limits = SearchLimits::fromSettings(AppSettings::instance());
    m_spool->setEngineOptions(options);
    m_thread = std::make_unique<QThread>();
    m_thread->setObjectName(QStringLiteral("spool"));
    m_thread->start(QThread::InheritPriority);
    m_spool->moveToThread(m_thread.get());
    m_spool->requestScan(condition);
}

void SearchRun::abort()
{
    if (m_spool)
        m_spool->abort();
}

bool SearchRun::endWithin(int milliseconds)
{
    abort();
    if (m_spool && !m_engineEnd->tryAcquire(1, milliseconds))
        return false;
    end();
    return true;
}

void SearchRun::end()
{
    if (!m_spool)
        return;
    abort();
    m_thread->quit();
    m_thread->wait();
    // Nothing of this run may arrive in the next one, not even what is on its way.
    disconnect(m_spool.get(), nullptr, this, nullptr);
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_spool.reset();
    m_thread.reset();
}
