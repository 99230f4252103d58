#include "mainwindow/HistoryControl.h"

#include "mainwindow/BackgroundTask.h"
#include "mainwindow/SearchForm.h"
#include "mainwindow/history/ResultLogFile.h"
#include "settings/AppSettings.h"
#include "view/DocumentText.h"
#include "view/GrepEditor.h"

#include <QAction>
#include <QMenu>
#include <QTextDocument>
#include <QToolButton>

#include <utility>

namespace {

template <typename Value> void assign(const std::optional<Value> &value, Value &target)
{
    if (value)
        target = *value;
}

/// UTF-16 code units of a label that a menu shows; a keyword may be a page long.
constexpr int kLongestLabel = 120;

/// In a menu an "&" would vanish and underline what follows it.
QString menuText(QString label)
{
    if (label.size() > kLongestLabel)
        label = label.left(kLongestLabel - 1) + QChar(0x2026);
    return label.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

HistoryControl::HistoryControl(const QString &appDir, const Views &views, QObject *parent)
    : QObject(parent)
    , m_appDir(appDir)
    , m_logDirectory(appDir + QStringLiteral("sarviklog"))
    , m_views(views)
    , m_history(m_logDirectory)
    , m_text(views.resultView, this)
{
}

HistoryControl::~HistoryControl() = default;

bool HistoryControl::save(const FormState &request, const QStringList &paths, const QDateTime &time,
                          const QStringList &unlisted)
{
    ResultLog log;
    log.keyword1 = request.keyword1;
    log.ignoreCase = request.ignoreCase;
    log.word = request.word;
    log.regexp = request.regexp;
    log.subdir = request.subdir;
    log.extraGroup = request.extraGroup;
    log.keyword2 = request.usesKeyword2() ? request.keyword2 : QString();
    log.lineDistance = request.lineDistance;
    log.paths = paths;
    log.mask = request.mask;
    log.keyword3Group = request.keyword3Group;
    log.keyword3 = request.keyword3Group ? request.keyword3 : QString();
    log.text = DocumentText::take(*m_views.resultView->document());
    // A sum of the two would be a second text of that size.
    log.text += m_views.resultView->textOfAppended(unlisted);
    bool lastSearch = false;
    bool history = false;
    // A million lines take a second to write.
    BackgroundTask::run([&] {
        lastSearch = ResultLogFile::write(m_appDir + QStringLiteral("sarvik.log"), log);
        history = !m_history.save(time, log).isEmpty();
    });
    m_views.resultView->document()->setModified(false);
    return lastSearch && history;
}

bool HistoryControl::loadLastSearch()
{
    const QString path = m_appDir + QStringLiteral("sarvik.log");
    std::optional<QString> content = ResultLogFile::read(path);
    if (!content)
        return false;
    apply(LogRestore::fromContent(std::move(*content), path, LogRestore::Extent::HeaderOnly));
    emit loaded();
    return true;
}

bool HistoryControl::load(const QString &path)
{
    std::optional<LogRestore> log;
    // Reading a million lines takes a while. What is typed or clicked waits for the
    // form that the log brings.
    BackgroundTask::run(
        [&] {
            if (std::optional<QString> content = ResultLogFile::read(path))
                log = LogRestore::fromContent(std::move(*content), path,
                                              LogRestore::Extent::Everything);
        },
        QEventLoop::ExcludeUserInputEvents);
    if (!log) {
        emit unreadable(path);
        return false;
    }
    apply(*log);
    emit loaded();
    return true;
}

bool HistoryControl::loadEntry(int index)
{
    const QString path = m_history.path(index);
    return !path.isEmpty() && load(path);
}

void HistoryControl::apply(const LogRestore &log)
{
    AppSettings &settings = AppSettings::instance();
    assign(log.ignoreCase, settings.caseinsensitive);
    assign(log.word, settings.word);
    assign(log.regexp, settings.regexp);
    SearchForm &form = *m_views.form;
    form.showToggles();
    if (log.keyword1)
        form.setKeyword1(*log.keyword1);
    if (log.subdir)
        form.setSubdir(*log.subdir);
    if (log.checksExtraGroup)
        form.setExtraGroup(true);
    if (log.keyword2) {
        form.setUseKeyword2(true);
        form.setKeyword2(*log.keyword2);
    }
    if (log.lineDistance)
        form.setLineDistance(*log.lineDistance);
    if (log.pathLines)
        form.setPathLines(*log.pathLines);
    if (log.mask)
        form.setMask(*log.mask);
    if (log.checksKeyword3Group)
        form.setKeyword3Group(true);
    if (log.keyword3)
        form.setKeyword3(*log.keyword3);
    m_text.show(log.text);
    m_views.resultView->highlightCurrentLine();
}

void HistoryControl::rebuildMenu()
{
    m_history.rebuild(AppSettings::instance().logmax);
    QMenu *menu = m_views.buttons.arrowBackBtn->menu();
    menu->clear();
    const QVector<LogHistory::Entry> &entries = m_history.entries();
    menu->setToolTipsVisible(true);
    for (int index = 0; index < entries.size(); ++index) {
        QAction *action = menu->addAction(menuText(entries.at(index).label));
        action->setData(index);
        action->setToolTip(entries.at(index).name);
    }
    updateButtons();
    // The list opens beside this button, and holds the newest log, which no step back
    // leads to.
    m_views.buttons.arrowBackBtn->setEnabled(!entries.isEmpty());
}

bool HistoryControl::goBack()
{
    const bool isLoaded = m_history.canGoBack() && load(m_history.goBack());
    updateButtons();
    return isLoaded;
}

bool HistoryControl::goForward()
{
    const bool canGo = m_history.canGoForward();
    const bool isLoaded = canGo && load(m_history.goForward());
    if (!canGo)
        restoreRemembered();
    updateButtons();
    return isLoaded;
}

void HistoryControl::restoreRemembered()
{
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = m_remembered.ignoreCase;
    settings.word = m_remembered.word;
    settings.regexp = m_remembered.regexp;
    SearchForm &form = *m_views.form;
    form.showToggles();
    form.setPathLines(m_remembered.pathText.split(QLatin1Char('\n')));
    form.setMask(m_remembered.mask);
    form.setKeyword1(m_remembered.keyword1);
    m_text.cancel();
    m_views.resultView->clear();
    m_views.resultView->highlightCurrentLine();
}

void HistoryControl::updateButtons()
{
    m_views.buttons.arrowBackBtn->setEnabled(m_history.canGoBack());
    m_views.buttons.arrowForwardBtn->setEnabled(m_history.canGoForward());
}
