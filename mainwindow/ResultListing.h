#pragma once

#include <QStringList>

#include <functional>

class GrepEditor;
class ProgressPanel;
class SignalSpool;

/// Moves what a run delivers from the spool into the result view: a little at
/// each tick while the run goes on, the rest at the end. While lines are
/// appended the view sends no signal, so that the preview does not follow them.
class ResultListing {
public:
    /// A flood of hits must not freeze the window while the engine runs.
    static constexpr int kLinesPerTick = 100;
    /// Nor when the rest is listed: events are processed before each such block.
    static constexpr int kLinesPerBlock = 800;

    /// Neither is owned; both must outlive this object.
    ResultListing(GrepEditor &view, ProgressPanel &panel);

    /// For a new run: an empty view, no peak.
    void reset();

    /// Shows how the run stands and lists up to kLinesPerTick lines.
    void tick(const SignalSpool &spool);
    void takeLines(SignalSpool &spool);

    /// Lists all that is left, with the window answering in between; stops early
    /// when isCancelled says so. Returns what was not listed then.
    QStringList drain(SignalSpool &spool, const std::function<bool()> &isCancelled);

    void append(const QStringList &lines);

private:
    GrepEditor &m_view;
    ProgressPanel &m_panel;
    /// Largest number of lines seen waiting; -1 before the first tick.
    int m_spoolPeak = -1;
};
