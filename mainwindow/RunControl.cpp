#include "mainwindow/RunControl.h"

#include "engine/LineCountReport.h"
#include "engine/SignalSpool.h"
#include "mainwindow/ProgressPanel.h"
#include "mainwindow/SearchForm.h"
#include "mainwindow/SearchSummary.h"
#include "view/GrepEditor.h"
#include "view/ResultLine.h"

#include <QCoreApplication>
#include <QStatusBar>

#include <algorithm>

namespace {

constexpr int kTickMilliseconds = 150;

bool g_isAnyLeftBehind = false;

/// A file's name may hold a line break; what names it is one line all the same.
QStringList onOneLineEach(QStringList messages)
{
    for (QString &message : messages)
        message = ResultLine::withoutBreaks(message);
    return messages;
}

} // namespace

RunControl::RunControl(const Views &views, QObject *parent)
    : QObject(parent), m_views(views), m_listing(*views.resultView, *views.panel)
{
    connect(&m_run, &SearchRun::searchFinished, this, &RunControl::searchFinished);
    connect(&m_run, &SearchRun::lineCountFinished, this, &RunControl::lineCountFinished);
    connect(&m_run, &SearchRun::lineCounted, this, &RunControl::lineCounted);
}

RunControl::~RunControl()
{
    disconnect();
    m_run.end();
}

void RunControl::start(const SearchCondition &condition)
{
    m_running = true;
    m_stopping = false;
    m_condition = condition;
    m_pendingCounts.clear();
    m_memoryAtStart = m_memory();
    m_shortOfMemory = false;
    m_hitsLeftOut = 0;
    m_elapsed.start();
    m_listing.reset();
    // It tells of this run from now on.
    m_views.resultView->clearEscape();
    m_views.form->setButton(SearchForm::Button::Abort);
    m_views.panel->setShown(true);
    if (condition.linecount)
        m_lineCount = std::make_unique<LineCountReport>();
    m_run.start(condition);
    m_timer = std::make_unique<QTimer>(this);
    m_timer->setObjectName(QStringLiteral("tickTimer"));
    connect(m_timer.get(), &QTimer::timeout, this, &RunControl::tick);
    m_timer->start(kTickMilliseconds);
}

/// A button that is disabled hands the focus to the widget behind it, which the next
/// key would then press.
void RunControl::disableButton()
{
    if (m_views.form->isButtonFocused())
        m_views.resultView->setFocus();
    m_views.form->setButtonEnabled(false);
}

void RunControl::abort()
{
    if (!m_running || !m_timer)
        return;
    disableButton();
    m_stopping = true;
    m_run.abort();
    m_views.resultView->stop();
    QCoreApplication::processEvents();
}

void RunControl::abandon()
{
    m_abandoned = true;
    m_run.abort();
}

bool RunControl::endWithin(int milliseconds)
{
    m_abandoned = true;
    return m_run.endWithin(milliseconds);
}

void RunControl::leaveBehind()
{
    g_isAnyLeftBehind = true;
    disconnect();
    m_timer.reset();
    setParent(nullptr);
}

bool RunControl::isAnyLeftBehind()
{
    return g_isAnyLeftBehind;
}

void RunControl::showProgress()
{
    SignalSpool *spool = m_run.spool();
    if (!spool)
        return;
    m_listing.tick(*spool);
    // Which file it waits for is not known: the last one may not be the slow one.
    m_views.statusBar->showMessage(m_stopping ? QStringLiteral("中止しています")
                                              : spool->currentFile());
    m_listing.takeLines(*spool);
    listPendingCounts();
    if (m_shortOfMemory)
        return;
    lookAtMemory();
    if (m_shortOfMemory)
        abort();
}

bool RunControl::hasLeftFileOut()
{
    // Of an abort, too, files are left.
    const SignalSpool *spool = m_run.spool();
    return spool && !m_stopping && spool->searchedCount() == 0 && spool->fileQueueLength() > 0;
}

void RunControl::lookAtMemory()
{
    m_shortOfMemory = m_shortOfMemory || FreeMemory::isTaken(m_memoryAtStart, m_memory());
}

void RunControl::addLineCount(const QString &filename, int count)
{
    if (!m_lineCount)
        return;
    // Listed at the next tick: a line at a time would cost more than counting it.
    m_pendingCounts += m_lineCount->addFile(ResultLine::withoutBreaks(filename), count);
}

void RunControl::listPendingCounts()
{
    m_listing.append(m_pendingCounts);
    m_pendingCounts.clear();
}

std::optional<QStringList> RunControl::listSearchEnd(bool aborted)
{
    if (!m_run.exists() || m_abandoned)
        return std::nullopt;
    m_timer.reset();
    m_views.form->setButton(SearchForm::Button::Displaying);
    // The engine has ended; there is nothing left to abort.
    disableButton();
    QStringList unlisted = m_listing.drain(*m_run.spool(), [this] {
        lookAtMemory();
        return m_abandoned || m_shortOfMemory;
    });
    if (m_shortOfMemory) {
        const auto isHead = [](const QString &line) {
            return line.startsWith(QLatin1String("::"));
        };
        m_hitsLeftOut = unlisted.size()
            - static_cast<int>(std::count_if(unlisted.cbegin(), unlisted.cend(), isHead));
        unlisted.clear();
    }
    const QStringList summary = summaryLines(aborted);
    if (m_abandoned)
        return unlisted + summary;
    m_listing.append(summary);
    m_views.panel->showThreads(m_run.spool()->threadCounts());
    return QStringList();
}

QStringList RunControl::summaryLines(bool aborted)
{
    SignalSpool &spool = *m_run.spool();
    const FormState form = m_views.form->state();
    SearchSummary::Outcome outcome;
    outcome.aborted = aborted || m_shortOfMemory;
    outcome.usesKeyword2 = form.usesKeyword2();
    outcome.keyword2 = m_condition.keyword2;
    outcome.lineDistance = m_condition.plusline;
    outcome.excludesKeyword3 = form.keyword3Group;
    outcome.keyword3 = m_condition.keyword3;
    outcome.matchedFiles = spool.resultFileCount();
    outcome.totalFiles = spool.searchedCount();
    outcome.matchedLines = spool.hitLineCount();
    outcome.elapsedMilliseconds = m_elapsed.elapsed();
    QStringList lines = SearchSummary::lines(outcome);
    if (m_shortOfMemory)
        lines += SearchSummary::shortOfMemory(m_hitsLeftOut);
    if (form.skipped) {
        QStringList warnings;
        spool.takeWarnings(&warnings);
        lines += SearchSummary::warningSection(onOneLineEach(warnings));
    }
    QStringList errors;
    spool.takeErrors(&errors);
    lines += SearchSummary::errorSection(onOneLineEach(errors));
    return lines;
}

std::optional<int> RunControl::listLineCountEnd(bool aborted)
{
    if (!m_run.exists())
        return std::nullopt;
    m_timer.reset();
    listPendingCounts();
    m_listing.append(m_lineCount->finish(aborted));
    if (m_shortOfMemory)
        m_listing.append({SearchSummary::shortOfMemory()});
    QStringList errors;
    return m_run.spool()->takeErrors(&errors);
}

void RunControl::end()
{
    m_running = false;
    m_views.form->setButton(SearchForm::Button::Start);
    m_run.end();
    m_views.form->setButtonEnabled(true);
    m_views.panel->setShown(false);
}
