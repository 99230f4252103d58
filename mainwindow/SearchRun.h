#pragma once

#include "engine/SearchCondition.h"

#include <QObject>
#include <QThread>

#include <memory>

QT_BEGIN_NAMESPACE
class QSemaphore;
QT_END_NAMESPACE
class SignalSpool;

/// One search or line count at a time, on a thread of its own. Lives on the user
/// interface's thread; all its signals arrive there, in the order in which the
/// engine said them.
///
/// A run exists from start() to end(). What it found waits in the spool until
/// it is taken, also after searchFinished(); nothing is left of it after end().
class SearchRun : public QObject {
    Q_OBJECT

signals:
    /// The engine has ended; all hits are in the spool.
    void searchFinished(bool aborted);
    void lineCountFinished(bool aborted);
    void lineCounted(QString filename, int count);

public:
    explicit SearchRun(QObject *parent = nullptr);
    /// Aborts a run and waits for it.
    ~SearchRun() override;

    /// Ends a former run first.
    void start(const SearchCondition &condition);
    /// Asks the engine to end; returns at once.
    void abort();
    /// Waits until the thread has ended and forgets the run. Inside one line of a
    /// pattern nothing can be ended: that may take for ever.
    void end();
    /// abort() and end(), but false, and the run goes on, when the engine has not
    /// ended after so many milliseconds.
    bool endWithin(int milliseconds);

    bool exists() const { return m_spool != nullptr; }
    /// Null when no run exists.
    SignalSpool *spool() const { return m_spool.get(); }

private:
    // The spool lives on the thread and is deleted after it has ended.
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<SignalSpool> m_spool;
    /// One permit as soon as the engine has told its end.
    std::shared_ptr<QSemaphore> m_engineEnd;
};
