#pragma once

#include "engine/SearchCondition.h"
#include "mainwindow/FreeMemory.h"
#include "mainwindow/ResultListing.h"
#include "mainwindow/SearchRun.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class GrepEditor;
class LineCountReport;
class ProgressPanel;
class SearchForm;
class SignalSpool;

QT_BEGIN_NAMESPACE
class QStatusBar;
QT_END_NAMESPACE

/// A search or a line count as the window shows it: the button, the bars, the
/// lines that arrive and the lines at its end. Its user says when: start(),
/// showProgress() at each tick(), one of the list…() calls when the engine has
/// ended, and end().
class RunControl : public QObject {
    Q_OBJECT

signals:
    /// Every 150 ms while the engine runs.
    void tick();
    /// The engine has ended; once for each run.
    void searchFinished(bool aborted);
    void lineCountFinished(bool aborted);
    /// A file of a line count.
    void lineCounted(QString filename, int count);

public:
    /// Not owned; must outlive this object.
    struct Views {
        SearchForm *form = nullptr;
        ProgressPanel *panel = nullptr;
        GrepEditor *resultView = nullptr;
        QStatusBar *statusBar = nullptr;
    };

    RunControl(const Views &views, QObject *parent);
    /// Aborts a run and waits for it, without limit: see endWithin().
    ~RunControl() override;

    /// From start() to end(), the listing of the last lines included.
    bool isRunning() const { return m_running; }

    /// Empties the result view and begins.
    void start(const SearchCondition &condition);
    /// Asks the engine to end; searchFinished() or lineCountFinished() follows.
    void abort();
    /// For a window that closes: nothing more is listed, and a run that goes on
    /// ends without a trace.
    void abandon();

    /// A result view takes memory for each line. A search that has taken too much of
    /// it ends and tells so; what was found and not yet listed is not listed then.
    /// memory is asked at the start and again and again; by default the system.
    using MemorySource = std::function<FreeMemory::Memory()>;
    void setMemorySource(const MemorySource &memory) { m_memory = memory; }

    /// Abandons a run and waits for it. False when it has not ended after so many
    /// milliseconds: it is in the middle of a line that its pattern is slow on.
    bool endWithin(int milliseconds);
    /// Then, for a program that ends: this object shows nothing any more and belongs
    /// to nobody. It must never be deleted, and the program has to leave without
    /// destructors (isAnyLeftBehind()), because the run's threads go on.
    void leaveBehind();
    static bool isAnyLeftBehind();

    void showProgress();
    void addLineCount(const QString &filename, int count);

    /// Lists the hits that are left, the summary and the sections. The texts of the
    /// conditions are those of the start; the form's check boxes say, as they are
    /// then, which of them are told. Returns the lines that are not listed
    /// because the window was closed meanwhile, which usually are none; nothing
    /// when there is no run or it was abandoned before its end.
    std::optional<QStringList> listSearchEnd(bool aborted);
    /// Nothing when there is no run; otherwise how many files were not counted: they are
    /// over the limit of sizes, no text, not to be read to the end, or too much for the
    /// memory.
    std::optional<int> listLineCountEnd(bool aborted);

    /// The search ended with a single file, which the engine does not load. Until end().
    bool hasLeftFileOut();

    /// Back to idle.
    void end();

private:
    void disableButton();
    QStringList summaryLines(bool aborted);
    void lookAtMemory();
    void listPendingCounts();

    const Views m_views;
    ResultListing m_listing;
    SearchCondition m_condition;
    QElapsedTimer m_elapsed;
    std::unique_ptr<LineCountReport> m_lineCount; // of a line count
    QStringList m_pendingCounts; // its lines that are to be listed at the next tick
    bool m_running = false;
    bool m_abandoned = false;
    MemorySource m_memory = &FreeMemory::now;
    FreeMemory::Memory m_memoryAtStart;
    bool m_shortOfMemory = false; // the run has ended for that
    int m_hitsLeftOut = 0; // for that
    bool m_stopping = false; // the engine has been asked to end
    // Emits into all of the above, so they go after it.
    std::unique_ptr<QTimer> m_timer; // as long as the engine runs
    SearchRun m_run;
};
