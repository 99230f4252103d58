#include "mainwindow/SearchRun.h"

#include "engine/SignalSpool.h"
#include "settings/AppSettings.h"

#include <QCoreApplication>
#include <QEvent>

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
    // Queued: the spool emits on its own thread.
    const SignalSpool *spool = m_spool.get();
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
