#include "cli/Console.h"

#include "cli/Interrupt.h"
#include "cli/ReportFactory.h"
#include "cli/SearchRequest.h"
#include "cli/StandardStreams.h"
#include "engine/NativePath.h"
#include "engine/SignalSpool.h"
#include "engine/TextGrepCore.h"

#include <utility>

using StandardStreams::Stream;

namespace {

/// Often enough that results do not pile up and progress is seen,
/// rarely enough to cost nothing.
constexpr int kTickMilliseconds = 40;

/// More than is found in a tick, so that the search need not wait for a reader
/// who keeps up.
constexpr qint64 kMostWaitingBytes = Q_INT64_C(32) * 1024 * 1024;

bool wantsColor(Options::Color color)
{
    if (color != Options::Color::Auto)
        return color == Options::Color::Always;
    return StandardStreams::isTerminal(Stream::Output) && qEnvironmentVariableIsEmpty("NO_COLOR");
}

void writeToTerminal(const QByteArray &bytes)
{
    QString ignored;
    StandardStreams::write(Stream::Error, bytes, &Interrupt::isPending, &ignored);
}

} // namespace

Console::Console(const Options &options, const QStringList &pathlist, const SearchLimits &settings,
                 QObject *parent)
    : QObject(parent)
    , m_condition(SearchRequest::condition(options, pathlist))
    , m_engineOptions(SearchRequest::engineOptions(options, settings))
    , m_statistics(options.stats)
    , m_showProgress(StandardStreams::isTerminal(Stream::Error))
    , m_progress(&writeToTerminal)
    , m_output(
          Stream::Output, [this] { m_progress.clear(); }, &Interrupt::isPending)
    , m_messages(
          Stream::Error, [this] { m_progress.clear(); }, &Interrupt::isPending)
    , m_report(makeReport(options, m_condition, wantsColor(options.color), m_output))
    , m_spool(std::make_unique<SignalSpool>())
{
    connectSpool();
    connectEngine();
    m_spool->moveToThread(&m_spoolThread);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Console::onTick);
}

Console::~Console()
{
    m_spool->abort();
    m_spoolThread.quit();
    m_spoolThread.wait();
}

void Console::start()
{
    m_clock.start();
    m_spoolThread.start();
    m_timer.start(kTickMilliseconds);
    m_spool->requestScan(m_condition);
    if (m_interrupted) // before there was anything to stop
        m_spool->abort();
}

void Console::interrupt()
{
    m_interrupted = true;
    m_spool->abort();
}

void Console::onTick()
{
    drain();
    if (m_output.isClosed() && !m_outputLost) {
        m_outputLost = true;
        m_spool->abort();
    }
    if (!m_interrupted && !m_outputLost)
        showProgress();
    const bool flood = m_report->waitingBytes() > kMostWaitingBytes / 8;
    m_timer.start(flood ? 0 : kTickMilliseconds);
}

void Console::onRunEnded(bool aborted)
{
    m_timer.stop();
    drain();
    m_report->finish(aborted);
    m_output.flush();
    m_progress.clear();
    writeStatistics();
    writeOutputError();
    m_messages.flush();
    emit finished(exitStatus());
}

/// Hits come from the threads that find them. Where the output is slower than
/// the search, the search waits.
void Console::connectEngine()
{
    EngineOptions engineOptions = m_engineOptions;
    engineOptions.hitSink = [report = m_report.get()](const QString &path, int codeSet,
                                                      const QStringList &hits) {
        report->addHits({path, codeSet, hits});
    };
    engineOptions.holdBack = [report = m_report.get()] {
        return report->waitingBytes() > kMostWaitingBytes;
    };
    m_spool->setEngineOptions(engineOptions);
}

/// All queued: the spool emits on its own thread and the report is used on this
/// one. The end is queued behind the last count.
void Console::connectSpool()
{
    const SignalSpool *spool = m_spool.get();
    connect(spool, &SignalSpool::finished, this, &Console::onRunEnded, Qt::QueuedConnection);
    connect(spool, &SignalSpool::lcntFinished, this, &Console::onRunEnded, Qt::QueuedConnection);
    connect(
        spool, &SignalSpool::linecntAt, this,
        [this](const QString &path, int count) { m_report->addLineCount(path, count); },
        Qt::QueuedConnection);
    connect(
        spool, &SignalSpool::encodingAt, this,
        [this](const QString &path, int codeSet, int lineEnd, bool bom) {
            m_report->addEncoding(path, codeSet, lineEnd, bom);
            if (codeSet < 0)
                addRefusal(path, codeSet);
        },
        Qt::QueuedConnection);
}

void Console::drain()
{
    m_report->writeWaiting();
    m_output.flush();
    drainMessages();
}

void Console::drainMessages()
{
    QStringList messages;
    m_skipped += m_spool->takeWarnings(&messages);
    m_errors += m_spool->takeErrors(&messages);
    for (const QString &message : std::as_const(messages))
        m_messages.add(NativePath::toNative(message) + '\n');
    m_messages.flush();
}

/// Where encodings are listed the engine reports a refused file as a result and
/// not as an error; the person is told the same as by a search.
void Console::addRefusal(const QString &path, int codeSet)
{
    ++m_errors;
    const int bigsize = m_engineOptions.limits.bigsize;
    m_messages.add(NativePath::toNative(TextGrepCore::refusalMessage(codeSet, bigsize, path))
                   + '\n');
}

void Console::showProgress()
{
    const qint64 elapsed = m_clock.elapsed();
    if (!m_showProgress || !ProgressLine::isDue(elapsed))
        return;
    // First: the process may be ended between the line and what comes next.
    Interrupt::setFarewell(ProgressLine::removal());
    ProgressLine::State state;
    state.searched = m_spool->searchedCount();
    state.foldersQueued = m_spool->dirQueueLength();
    state.filesQueued = m_spool->fileQueueLength();
    state.hits = m_report->hitCount();
    state.currentFile = m_spool->currentFile();
    m_progress.show(state, StandardStreams::terminalColumns(Stream::Error), elapsed);
}

void Console::writeStatistics()
{
    if (!m_statistics)
        return;
    RunReport::Counts counts = m_report->counts(m_spool->searchedCount());
    counts += {{QStringLiteral("skipped"), m_skipped}, {QStringLiteral("errors"), m_errors}};
    for (const auto &[label, count] : std::as_const(counts))
        m_messages.add(label.toUtf8() + ": " + QByteArray::number(count) + '\n');
    const double seconds = static_cast<double>(m_clock.nsecsElapsed()) / 1e9;
    m_messages.add("seconds: " + QByteArray::number(seconds, 'f', 3) + '\n');
}

void Console::writeOutputError()
{
    if (!m_output.errorText().isEmpty())
        m_messages.add("sarvik-cli: cannot write the results: " + m_output.errorText().toUtf8()
                       + '\n');
}

int Console::exitStatus() const
{
    // A run may have ended before the signal was delivered.
    if (m_interrupted || Interrupt::isPending())
        return Interrupted;
    if (!m_output.errorText().isEmpty())
        return Failure;
    return m_report->foundAny() ? HitsFound : NoHits;
}
