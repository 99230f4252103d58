#pragma once

#include "cli/LineOutput.h"
#include "cli/Options.h"
#include "cli/ProgressLine.h"
#include "cli/RunReport.h"
#include "engine/EngineOptions.h"
#include "engine/SearchCondition.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QThread>
#include <QTimer>

#include <memory>

class SignalSpool;

/// One run of the console program: starts the spool on a thread of its own,
/// moves what it collects to the output while the run goes on, and ends with an
/// exit status. Lives on the main thread and needs its event loop. One run an
/// object: start() is called once.
class Console : public QObject {
    Q_OBJECT

public:
    enum ExitStatus { HitsFound = 0, NoHits = 1, Failure = 2, Interrupted = 130 };

signals:
    /// Emitted once, when all is written; an ExitStatus.
    void finished(int exitStatus);

public slots:
    /// To be called from inside the event loop: a run may end at once.
    void start();
    /// Aborts the run through the engine. What was found until then is still
    /// written; the exit status is Interrupted.
    void interrupt();

public:
    /// pathlist as PathArguments made it; settings: the limits of the settings
    /// file, or the defaults.
    Console(const Options &options, const QStringList &pathlist, const SearchLimits &settings,
            QObject *parent = nullptr);
    /// Aborts a run that is still going on and waits for it.
    ~Console() override;

private slots:
    void onTick();
    void onRunEnded(bool aborted);

private:
    void connectSpool();
    void connectEngine();
    void drain();
    void drainMessages();
    void addRefusal(const QString &path, int codeSet);
    void showProgress();
    void writeStatistics();
    void writeOutputError();
    int exitStatus() const;

    const SearchCondition m_condition;
    const EngineOptions m_engineOptions;
    const bool m_statistics;
    const bool m_showProgress;

    ProgressLine m_progress;
    LineOutput m_output;
    LineOutput m_messages;
    const std::unique_ptr<RunReport> m_report; // writes to m_output

    QThread m_spoolThread;
    const std::unique_ptr<SignalSpool> m_spool; // lives on the thread above, ends after it
    QTimer m_timer;
    QElapsedTimer m_clock;
    int m_skipped = 0;
    int m_errors = 0;
    bool m_interrupted = false;
    bool m_outputLost = false; ///< nobody reads on: the run is told to end
};
