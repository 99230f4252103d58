#include "mainwindow/MainWindow.h"

#include "mainwindow/FindControl.h"
#include "mainwindow/FormKeys.h"
#include "mainwindow/HistoryControl.h"
#include "mainwindow/KeywordControl.h"
#include "mainwindow/KeywordMarks.h"
#include "mainwindow/PreviewControl.h"
#include "mainwindow/Questions.h"
#include "mainwindow/RunControl.h"
#include "mainwindow/StatusMessages.h"
#include "mainwindow/WindowLayout.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/ParameterFile.h"
#include "settings/SearchPaths.h"
#include "settings/dialogs/InputFolderDialog.h"
#include "settings/dialogs/optionDialog.h"
#include "settings/dialogs/verupdialog.h"
#include "view/GrepEditor.h"
#include "view/fileDialog.h"

#include "ui_MainWindow.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

namespace {

/// With an engine that is to end when its window has gone.
constexpr int kPatienceMilliseconds = 2000;

QString programName()
{
    return QStringLiteral("sarvik");
}

QString runningText()
{
    return QStringLiteral("検索中です。中止してから実行してください");
}

QString noLogsText()
{
    return QStringLiteral("過去の検索結果はありません");
}

QString onlyOneFileText()
{
    return QStringLiteral("対象のファイルが１つだけのため、検索されませんでした");
}

QString notCountedText(int files)
{
    return QStringLiteral(
               "数えなかったファイル: %L1 （大きすぎる、文字コードが分からない、読めない）")
        .arg(files);
}

QString nothingIsKeptText()
{
    return QStringLiteral(
        "プログラムのフォルダに書き込めないため、設定・履歴・検索結果は保存されません");
}

QString settingsNotSavedText()
{
    return QStringLiteral("設定を保存できませんでした");
}

} // namespace

QString MainWindow::versionString()
{
    return QStringLiteral("5.00");
}

MainWindow::MainWindow(const QStringList &pathlist, const QString &mask, const QString &findword,
                       QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
    , m_applicationDirectory(ApplicationDirectory::path())
{
    setUpEnvironment();
    m_ui->setupUi(this);
    m_messages = new StatusMessages(statusBar(), this);
    buildViews();
    buildToolBar();
    m_keywords = new KeywordControl(m_ui->searchForm, this);
    connectActions();
    connectForm();
    connectKeys();
    connectRun();
    buildPreview();
    listenForBroadcasts();
    fillHistories();
    buildHistory();
    showRequest(pathlist, mask, findword);
    // Before all is in it, its least size is larger than it will be.
    WindowLayout::restore({this, m_ui->viewSplitter, m_resultView, m_preview});
    m_history->remember(m_ui->searchForm->state());
    if (!ApplicationDirectory::canBeWritten(m_applicationDirectory))
        statusBar()->showMessage(nothingIsKeptText());
}

MainWindow::~MainWindow()
{
    // First, so that it ends while the rest is done.
    m_run->abandon();
    // The program may end without closing its window.
    m_previewControl->rescueIfModified();
    storeState();
    AppSettings::instance().save(m_applicationDirectory);
    // What still runs must end before anything that it reads or shows goes. Inside a
    // line nothing ends it, and nobody should wait for it.
    if (m_run->endWithin(kPatienceMilliseconds))
        delete m_run;
    else
        m_run->leaveBehind();
}

void MainWindow::storeState()
{
    const FormState form = m_ui->searchForm->state();
    AppSettings &settings = AppSettings::instance();
    settings.subdir = form.subdir;
    settings.fname = form.emptyFiles;
    settings.warningmsg = form.skipped;
    WindowLayout::store({this, m_ui->viewSplitter, m_resultView, m_preview});
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_previewControl->saveIfModified()) {
        event->ignore();
        return;
    }
    m_run->abandon();
    event->accept();
}

void MainWindow::confirmQuit()
{
    if (Questions::quit(this))
        close();
}

/// Another program of the suite has changed the keyword history.
void MainWindow::onBoradCastMessage(uint first, uint thid)
{
    qDebug().noquote() << QStringLiteral("BoradCastMessage %1 %2").arg(first).arg(thid);
    const QSignalBlocker blocker(this);
    m_keywords->reload();
}

// The form's buttons

void MainWindow::GrepDummy()
{
    on_pushButton_clicked();
}

void MainWindow::SetCompleter(QComboBox *le_keyword, QCompleter *completer)
{
    KeywordControl::setCompleter(le_keyword, completer);
}

void MainWindow::onClick_btn_case()
{
    m_keywords->flip(&AppSettings::caseinsensitive);
}

void MainWindow::onClick_btn_word()
{
    m_keywords->flip(&AppSettings::word);
}

void MainWindow::onClick_btn_regexp()
{
    m_keywords->flip(&AppSettings::regexp);
}

void MainWindow::on_btnKeyword1_clicked()
{
    const QString keyword = m_ui->searchForm->state().keyword1;
    if (!keyword.contains(QLatin1Char('\\')))
        m_ui->searchForm->setKeyword1(keyword);
}

void MainWindow::on_btnKeyword2_clicked(bool checked)
{
    m_ui->searchForm->showExtraConditions(checked);
}

void MainWindow::on_btnPlus_clicked()
{
    // Empty: the folder to add is somewhere else, and what is typed would be appended.
    QString path;
    if (!InputFolderDialog::edit(this, path, QStringLiteral("追加する検索パス"),
                                 QStringLiteral("SearchPath"), m_applicationDirectory)
        || path.isEmpty())
        return;
    path = SearchPaths::withSlash(path);
    // As lines, where a list file is the same with and without the slash.
    const QStringList listed =
        SearchPaths::toLines(SearchPaths::fromText(m_ui->searchForm->state().pathText));
    if (listed.contains(SearchPaths::toLines({path}).value(0)))
        m_messages->refuse(QStringLiteral("既に登録されています"));
    else
        m_ui->searchForm->addPathLine(path);
}

void MainWindow::setKeyword1(const QString &word)
{
    m_ui->searchForm->setKeyword1(word);
}

void MainWindow::setKeyword2(const QString &word)
{
    m_ui->searchForm->setKeyword2(word);
    // A word that was picked into a field that nobody sees would be lost.
    m_ui->searchForm->showExtraConditions(true);
}

/// Before the first search, those of the form.
QStringList MainWindow::searchPaths() const
{
    return m_pathlist.isEmpty() ? SearchPaths::fromText(m_ui->searchForm->state().pathText)
                                : m_pathlist;
}

void MainWindow::refreshForm()
{
    m_ui->searchForm->update();
}

// Start

void MainWindow::refuseFile(const QString &path)
{
    m_messages->refuse(QStringLiteral("%1 を開けません").arg(QDir::cleanPath(path)));
}

/// Then says so.
bool MainWindow::isIncomplete(FormRequest::Mode mode, const FormState &form)
{
    const FormRequest::Field missing = FormRequest::missing(mode, form);
    if (missing == FormRequest::Field::None)
        return false;
    m_messages->refuse(FormRequest::refusal(missing));
    return true;
}

void MainWindow::on_pushButton_clicked()
{
    if (m_run->isRunning()) {
        abortRun();
        return;
    }
    const FormState form = m_ui->searchForm->state();
    if (isIncomplete(FormRequest::Mode::Search, form))
        return;
    if (form.mask == QLatin1String("*.*") && !Questions::searchAllFiles(this))
        return;
    start(FormRequest::Mode::Search, form);
    m_resultView->setFocus();
}

void MainWindow::lineCountGrep()
{
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    const FormState form = m_ui->searchForm->state();
    if (isIncomplete(FormRequest::Mode::LineCount, form))
        return;
    start(FormRequest::Mode::LineCount, form);
}

void MainWindow::start(FormRequest::Mode mode, const FormState &form)
{
    showTitle(form.keyword1);
    m_resultView->clear();
    m_resultView->setFocus();
    m_previewControl->setResultShown(mode == FormRequest::Mode::Search);
    m_previewControl->forgetSelection();
    m_history->cancelLoading();
    m_find->stop();
    m_request = form;
    if (mode == FormRequest::Mode::Search)
        m_history->remember(form);
    const SearchCondition condition = FormRequest::condition(mode, form);
    m_pathlist = condition.pathlist;
    ParameterFile(m_applicationDirectory).write({m_pathlist, form.mask, form.keyword1});
    m_keywords->remember(condition, form);
    showHighlightWords();
    setRunning(true);
    m_run->start(condition);
}

/// Tells which search is shown.
void MainWindow::showTitle(const QString &keyword1)
{
    // "[*]" is where the toolkit marks what was changed; twice, it stands for itself.
    QString keyword = keyword1;
    keyword.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    setWindowTitle(keyword + QStringLiteral(" -- ") + programName());
}

/// What the result view marks: the keywords of the form that are in use.
void MainWindow::showHighlightWords()
{
    KeywordMarks::show(*m_resultView, m_ui->searchForm->state());
}

void MainWindow::setRunning(bool running)
{
    m_formKeys->setBusy(running);
    // Each of these would replace the results or change what the engine reads.
    m_ui->actionOpenLog->setEnabled(!running);
    m_ui->actionOptions->setEnabled(!running);
    m_ui->actionLineCount->setEnabled(!running);
    m_toolButtons.optionBtn->setEnabled(!running);
}

void MainWindow::abortRun()
{
    const QSignalBlocker blocker(this);
    m_run->abort();
}

// Progress and end

void MainWindow::onTimerProgressReport()
{
    m_run->showProgress();
}

void MainWindow::searchFinished(bool aborted)
{
    const auto unlisted = m_run->listSearchEnd(aborted);
    if (!unlisted)
        return;
    const bool onlyOneFile = m_run->hasLeftFileOut();
    if (m_history->save(m_request, m_pathlist, QDateTime::currentDateTime(), *unlisted))
        m_messages->confirm(QStringLiteral("セーブしました"));
    else
        statusBar()->clearMessage();
    makeBackMenu();
    m_keywords->rememberMask(m_request.mask);
    endRun();
    if (onlyOneFile)
        tellNext(onlyOneFileText());
    else
        tellMissingPath();
}

void MainWindow::showLinecntResult(QString filename, int count)
{
    m_run->addLineCount(filename, count);
}

void MainWindow::linecntFinished(bool aborted)
{
    const auto notCounted = m_run->listLineCountEnd(aborted);
    if (!notCounted)
        return;
    // The file that was counted last.
    statusBar()->clearMessage();
    endRun();
    if (!tellMissingPath() && *notCounted > 0)
        tellNext(notCountedText(*notCounted));
}

/// A folder that is not there has no files, which looks as if nothing was found.
/// False when all are there.
bool MainWindow::tellMissingPath()
{
    const QString missing = SearchPaths::firstMissing(m_pathlist);
    if (!missing.isEmpty())
        tellNext(QStringLiteral("検索パスがありません: %1").arg(missing));
    return !missing.isEmpty();
}

/// Unless the next run has begun by then.
void MainWindow::tellNext(const QString &hint)
{
    m_messages->showNext(hint, [this] { return !m_run->isRunning(); });
}

void MainWindow::endRun()
{
    setRunning(false);
    if (isVisible()) {
        activateWindow();
        raise();
    }
    m_run->end();
    if (!m_previewControl->hasSelection())
        m_resultView->ensureCursorVisible();
}

// Views

/// Of a log or of the file in the preview.
bool MainWindow::isLoading(const GrepEditor &view) const
{
    return &view == m_preview ? m_previewControl->isLoading() : m_history->isLoading();
}

void MainWindow::findnext()
{
    m_find->find(TextFind::Direction::Forward);
}

void MainWindow::findprev()
{
    m_find->find(TextFind::Direction::Backward);
}

void MainWindow::findDialogPopup()
{
    m_find->ask();
}

// Other dialogs

void MainWindow::optionDialogPopup()
{
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    if (!optionDialog::edit(this))
        return;
    const bool saved = AppSettings::instance().save(m_applicationDirectory);
    applySettings();
    if (!saved)
        m_messages->refuse(settingsNotSavedText());
}

void MainWindow::applySettings()
{
    const AppSettings &settings = AppSettings::instance();
    m_ui->searchForm->applyLook();
    m_resultView->setViewFont(settings.grepFont, true);
    m_preview->setViewFont(settings.textFont, true);
    m_resultView->applyColours();
    m_preview->applyColours();
}

void MainWindow::about()
{
    verupdialog(programName(), versionString(), QPixmap(QStringLiteral(":icon/sarvik.png")), this)
        .exec();
}

void MainWindow::showDocument(const QString &relativePath)
{
    const QString path = m_applicationDirectory + relativePath;
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    if (!opened || !QFileInfo::exists(path))
        refuseFile(path);
}

void MainWindow::help()
{
    showDocument(QStringLiteral("/doc/sarvik/index.html"));
}

void MainWindow::regexphelp()
{
    showDocument(QStringLiteral("/doc/sarvik/sarvik_regexp.html"));
}

// History

void MainWindow::makeBackMenu()
{
    m_history->rebuildMenu();
}

void MainWindow::openLogfile(QAction *action)
{
    const int index = action->data().toInt();
    qDebug().noquote() << index << action->text();
    if (index < 0)
        return;
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    m_history->loadEntry(index);
}

/// For the menu that is about to show. One without an entry is nothing to see, and
/// takes all keys: it goes at once.
void MainWindow::listLogs()
{
    makeBackMenu();
    QMenu *menu = m_toolButtons.arrowBackBtn->menu();
    if (!menu->isEmpty())
        return;
    QTimer::singleShot(0, menu, &QMenu::close);
    m_messages->refuse(noLogsText());
}

void MainWindow::historyBackMenuPopup()
{
    makeBackMenu();
    QMenu *menu = m_toolButtons.arrowBackBtn->menu();
    if (menu->isEmpty())
        return m_messages->refuse(noLogsText());
    const QSize free = size() - menu->sizeHint();
    menu->popup(mapToGlobal(QPoint(free.width() / 2, free.height() / 2)));
}

void MainWindow::arrowBack()
{
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    m_history->goBack();
}

void MainWindow::arrowForward()
{
    // The view may be emptied.
    m_find->stop();
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    m_history->goForward();
}

void MainWindow::openFile()
{
    if (m_run->isRunning())
        return m_messages->refuse(runningText());
    // Before the first search there is none, and the chooser would start elsewhere.
    QDir().mkpath(m_history->logDirectory());
    QString path;
    if (!fileDialog::choose(m_history->logDirectory(), path, this))
        return;
    if (!path.isEmpty())
        m_history->load(path);
}

// Preview

void MainWindow::previewFile()
{
    m_previewControl->follow();
}
