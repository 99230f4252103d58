#include "mainwindow/ResultListing.h"

#include "engine/SignalSpool.h"
#include "mainwindow/ProgressPanel.h"
#include "view/GrepEditor.h"

#include <QCoreApplication>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {

/// Moves a block out of lines: freed together at the end, a million lines would
/// block the window.
QStringList takeBlock(QStringList &lines, int start)
{
    const int end = std::min(start + ResultListing::kLinesPerBlock, lines.size());
    QStringList block;
    block.reserve(end - start);
    for (int index = start; index < end; ++index)
        block += std::exchange(lines[index], QString());
    return block;
}

} // namespace

ResultListing::ResultListing(GrepEditor &view, ProgressPanel &panel) : m_view(view), m_panel(panel)
{
}

void ResultListing::reset()
{
    m_view.clear();
    m_view.highlightCurrentLine();
    m_spoolPeak = -1;
}

void ResultListing::tick(const SignalSpool &spool)
{
    const int fill = spool.resultCount();
    m_spoolPeak = std::max(m_spoolPeak, fill);
    m_panel.showDirectories(spool.dirQueueLength());
    m_panel.showFiles(spool.fileQueueLength());
    m_panel.showSpool(fill, m_spoolPeak);
}

void ResultListing::takeLines(SignalSpool &spool)
{
    QStringList lines;
    spool.takeResults(&lines, kLinesPerTick);
    append(lines);
    m_panel.showThreads(spool.threadCounts());
}

QStringList ResultListing::drain(SignalSpool &spool, const std::function<bool()> &isCancelled)
{
    QStringList lines;
    spool.takeResults(&lines, 0);
    const int count = lines.size();
    m_spoolPeak = std::max(m_spoolPeak, count);
    m_panel.startDisplaying(m_spoolPeak);
    for (int shown = 0; shown < count; shown += kLinesPerBlock) {
        QCoreApplication::processEvents();
        if (isCancelled())
            return lines.mid(shown);
        append(takeBlock(lines, shown));
        m_panel.showDisplayed(std::min(shown + kLinesPerBlock, count));
    }
    return {};
}

void ResultListing::append(const QStringList &lines)
{
    if (lines.isEmpty())
        return;
    const QSignalBlocker blocker(&m_view);
    m_view.appendLines(lines);
}
