#include "mainwindow/MainWindow.h"

#include "app/broadcast/NativeEventFilter.h"
#include "icon/Icons.h"
#include "mainwindow/AssistNotes.h"
#include "mainwindow/FindControl.h"
#include "mainwindow/FormKeys.h"
#include "mainwindow/HistoryControl.h"
#include "mainwindow/KeywordControl.h"
#include "mainwindow/KeywordMarks.h"
#include "mainwindow/PreviewControl.h"
#include "mainwindow/Questions.h"
#include "mainwindow/RunControl.h"
#include "mainwindow/WindowLayout.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/CodecEnvironment.h"
#include "settings/ParameterFile.h"
#include "settings/SearchPaths.h"
#include "settings/dialogs/InputFolderDialog.h"
#include "settings/dialogs/LineEdit.h"
#include "settings/dialogs/optionDialog.h"
#include "settings/dialogs/verupdialog.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"
#include "view/fileDialog.h"

#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>

namespace {

constexpr int kRefusalMilliseconds = 5000;
constexpr int kSavedMilliseconds = 2000;

QString programName()
{
    return QStringLiteral("sarvik");
}

QString runningText()
{
    return QStringLiteral("検索中です。中止してから実行してください");
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
    buildViews();
    buildToolBar();
    m_keywords = new KeywordControl(m_ui->searchForm, this);
    connectActions();
    connectForm();
    connectKeys();
    connectRun();
    WindowLayout::restore({this, m_ui->viewSplitter, m_resultView, m_preview});
    buildPreview();
    listenForBroadcasts();
    fillHistories();
    buildHistory();
    showRequest(pathlist, mask, findword);
    m_history->remember(m_ui->searchForm->state());
}

MainWindow::~MainWindow()
{
    // What still runs must end before anything that it reads or shows goes.
    delete m_run;
    storeState();
    AppSettings::instance().save(m_applicationDirectory);
}

void MainWindow::setUpEnvironment()
{
    QLoggingCategory::setFilterRules(CodecEnvironment::loggingFilterRules());
    CodecEnvironment::applyUnicodeMap();
    AppSettings::instance().load(m_applicationDirectory);
    Icons::load();
    AssistNotes::install();
}

void MainWindow::buildViews()
{
    m_resultView = new GrepEditor(true, this);
    m_resultView->setObjectName(QStringLiteral("resultView"));
    m_resultView->setAccessibleName(QStringLiteral("検索結果"));
    m_resultView->setToolTip(QStringLiteral(
        "カーソル位置でキーを押すと、カーソル位置からの単語を取得してキーワードにセットできます。\n"
        "F5: キーワード１　F6: キーワード２"));
    m_resultView->setReadOnly(true);
    m_resultView->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_resultView->setTabChangesFocus(true);
    m_preview = new GrepEditor(false, this);
    m_preview->setObjectName(QStringLiteral("preview"));
    m_preview->setAccessibleName(QStringLiteral("プレビュー"));
    m_preview->setReadOnly(true);
    m_preview->setTabChangesFocus(true);
    m_preview->setToolTip(
        QStringLiteral("Ctrl+S: 保存　Ctrl+Tab: タブを入力　Shift+Enter: エディタで開く"));
    m_find = new FindControl({m_resultView, m_preview, statusBar()}, this);
    m_ui->viewSplitter->addWidget(m_resultView);
    m_ui->viewSplitter->addWidget(m_preview);
    connect(m_resultView, &GrepEditor::BackButton, this, &MainWindow::arrowBack);
    connect(m_resultView, &GrepEditor::ForwardButton, this, &MainWindow::arrowForward);
}

void MainWindow::buildPreview()
{
    m_previewControl =
        new PreviewControl({m_resultView, m_preview, m_ui->searchForm, statusBar()},
                           m_applicationDirectory + QStringLiteral("sarvikrescue/"), this);
    connect(m_resultView, &GrepEditor::cursorPositionChanged, this, &MainWindow::previewFile);
    auto *save = new QShortcut(QKeySequence::Save, m_preview);
    save->setContext(Qt::WidgetShortcut);
    connect(save, &QShortcut::activated, m_previewControl, &PreviewControl::save);
    // Tab itself goes on to the next widget, as everywhere in the window.
    auto *tab = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Tab")), m_preview);
    tab->setContext(Qt::WidgetShortcut);
    connect(tab, &QShortcut::activated, m_preview, [this] {
        if (!m_preview->isReadOnly())
            m_preview->insertPlainText(QStringLiteral("\t"));
    });
}

void MainWindow::buildToolBar()
{
    m_toolButtons = ToolButtons::addTo(m_ui->toolBar);
    auto *backMenu = new QMenu(m_toolButtons.arrowBackBtn);
    m_toolButtons.arrowBackBtn->setMenu(backMenu);
    connect(backMenu, &QMenu::aboutToShow, this, &MainWindow::makeBackMenu);
    connect(backMenu, &QMenu::triggered, this, &MainWindow::openLogfile);
    const auto connectButton = [this](QToolButton *button, void (MainWindow::*slot)()) {
        connect(button, &QToolButton::clicked, this, slot);
    };
    connectButton(m_toolButtons.arrowBackBtn, &MainWindow::arrowBack);
    connectButton(m_toolButtons.arrowForwardBtn, &MainWindow::arrowForward);
    connectButton(m_toolButtons.findBtn, &MainWindow::findDialogPopup);
    connectButton(m_toolButtons.findNextBtn, &MainWindow::findnext);
    connectButton(m_toolButtons.findPrevBtn, &MainWindow::findprev);
    connectButton(m_toolButtons.optionBtn, &MainWindow::optionDialogPopup);
}

void MainWindow::connectActions()
{
    connect(m_ui->actionOpenLog, &QAction::triggered, this, &MainWindow::openFile);
    connect(m_ui->actionQuit, &QAction::triggered, this, &MainWindow::close);
    connect(m_ui->actionOptions, &QAction::triggered, this, &MainWindow::optionDialogPopup);
    connect(m_ui->actionLineCount, &QAction::triggered, this, &MainWindow::lineCountGrep);
    connect(m_ui->actionHelp, &QAction::triggered, this, &MainWindow::help);
    connect(m_ui->actionRegExpHelp, &QAction::triggered, this, &MainWindow::regexphelp);
    connect(m_ui->actionVersion, &QAction::triggered, this, &MainWindow::about);
    connect(m_ui->actionAboutQt, &QAction::triggered, qApp, &QApplication::aboutQt);
}

void MainWindow::connectForm()
{
    const SearchForm *form = m_ui->searchForm;
    connect(form->caseButton(), &QAbstractButton::clicked, this, &MainWindow::onClick_btn_case);
    connect(form->wordButton(), &QAbstractButton::clicked, this, &MainWindow::onClick_btn_word);
    connect(form->regexpButton(), &QAbstractButton::clicked, this, &MainWindow::onClick_btn_regexp);
    const LineEdit *keyword1 = form->keyword1Edit();
    connect(keyword1, &LineEdit::CaseChange, this, &MainWindow::onClick_btn_case);
    connect(keyword1, &LineEdit::WordChange, this, &MainWindow::onClick_btn_word);
    connect(keyword1, &LineEdit::RegexpChange, this, &MainWindow::onClick_btn_regexp);
    // The field's keys are taken by FormKeys, except those that a completer passes on.
    connect(keyword1, &LineEdit::lineEditReturn, this, &MainWindow::GrepDummy);
    // The clear button; it is no button to abort a run by.
    connect(keyword1, &LineEdit::returnPressed, this, [this] {
        if (!m_run->isRunning())
            GrepDummy();
    });
}

void MainWindow::connectKeys()
{
    const SearchForm *form = m_ui->searchForm;
    FormKeys::Widgets widgets;
    widgets.inputFields = form->inputFields();
    widgets.pathEdit = form->pathEdit();
    widgets.keyword1 = form->keyword1Combo();
    widgets.resultView = m_resultView;
    widgets.preview = m_preview;
    widgets.window = this;
    m_formKeys = new FormKeys(widgets, this);
    connect(m_formKeys, &FormKeys::searchRequested, this, &MainWindow::GrepDummy);
    connect(m_formKeys, &FormKeys::abortRequested, this, &MainWindow::abortRun);
    connect(m_formKeys, &FormKeys::quitRequested, this, &MainWindow::confirmQuit);
    const auto *menu = new QShortcut(QKeySequence(QStringLiteral("Ctrl+H")), this);
    connect(menu, &QShortcut::activated, this, &MainWindow::historyBackMenuPopup);
}

void MainWindow::connectRun()
{
    RunControl::Views views;
    views.form = m_ui->searchForm;
    views.panel = m_ui->progressPanel;
    views.resultView = m_resultView;
    views.statusBar = statusBar();
    m_run = new RunControl(views, this);
    connect(m_run, &RunControl::tick, this, &MainWindow::onTimerProgressReport);
    connect(m_run, &RunControl::searchFinished, this, &MainWindow::searchFinished);
    connect(m_run, &RunControl::lineCountFinished, this, &MainWindow::linecntFinished);
    connect(m_run, &RunControl::lineCounted, this, &MainWindow::showLinecntResult);
}

void MainWindow::listenForBroadcasts()
{
    auto *filter = new NativeEventFilter(this);
    connect(filter, &NativeEventFilter::BoradCastMessage, this, &MainWindow::onBoradCastMessage);
    qApp->installNativeEventFilter(filter);
}

void MainWindow::fillHistories()
{
    SearchForm *form = m_ui->searchForm;
    form->applyLook();
    form->loadSwitches();
    form->showToggles();
    m_keywords->fillAll();
    form->setKeyword1(QString());
    form->setKeyword2(QString());
}

void MainWindow::buildHistory()
{
    m_history = new HistoryControl(m_applicationDirectory,
                                   {m_ui->searchForm, m_resultView, m_toolButtons}, this);
    connect(m_history, &HistoryControl::loaded, this, [this] {
        m_previewControl->setResultShown(true);
        m_previewControl->forgetSelection();
        showHighlightWords();
    });
    m_history->loadLastSearch();
    makeBackMenu();
}

void MainWindow::showRequest(const QStringList &pathlist, const QString &mask,
                             const QString &findword)
{
    SearchForm *form = m_ui->searchForm;
    form->setPathLines(SearchPaths::toLines(pathlist));
    if (!mask.isEmpty() && mask != QLatin1String("*.*"))
        form->setMask(mask);
    QString keyword = findword;
    if (keyword.startsWith(QLatin1Char('"')))
        keyword.remove(QLatin1Char('"'));
    if (!keyword.isEmpty())
        form->setKeyword1(keyword);
    form->selectKeyword1();
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
    QString path = m_applicationDirectory;
    if (!InputFolderDialog::edit(this, path, QStringLiteral("追加する検索パス"),
                                 QStringLiteral("SearchPath"), m_applicationDirectory)
        || path.isEmpty())
        return;
    path = SearchPaths::withSlash(path);
    if (SearchPaths::fromText(m_ui->searchForm->state().pathText).contains(path))
        refuse(QStringLiteral("既に登録されています"));
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

void MainWindow::refuse(const QString &message)
{
    QApplication::beep();
    statusBar()->showMessage(message, kRefusalMilliseconds);
}

void MainWindow::on_pushButton_clicked()
{
    if (m_run->isRunning()) {
        abortRun();
        return;
    }
    const FormState form = m_ui->searchForm->state();
    const QString refusal = FormRequest::refusal(FormRequest::Mode::Search, form);
    if (!refusal.isEmpty())
        return refuse(refusal);
    if (form.mask == QLatin1String("*.*") && !Questions::searchAllFiles(this))
        return;
    start(FormRequest::Mode::Search, form);
    m_resultView->setFocus();
}

void MainWindow::lineCountGrep()
{
    if (m_run->isRunning())
        return refuse(runningText());
    const FormState form = m_ui->searchForm->state();
    const QString refusal = FormRequest::refusal(FormRequest::Mode::LineCount, form);
    if (!refusal.isEmpty())
        return refuse(refusal);
    start(FormRequest::Mode::LineCount, form);
}

void MainWindow::start(FormRequest::Mode mode, const FormState &form)
{
    setWindowTitle(form.keyword1 + QStringLiteral(" -- ") + programName());
    m_resultView->clear();
    m_resultView->setFocus();
    m_previewControl->setResultShown(mode == FormRequest::Mode::Search);
    m_previewControl->forgetSelection();
    m_history->cancelLoading();
    m_request = form;
    if (mode == FormRequest::Mode::Search)
        m_history->remember(form);
    const SearchCondition condition = FormRequest::condition(mode, form);
    m_pathlist = condition.pathlist;
    ParameterFile(m_applicationDirectory).write({m_pathlist, form.mask, form.keyword1});
    m_keywords->remember(condition);
    showHighlightWords();
    setRunning(true);
    m_run->start(condition);
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
    const auto unlisted = m_run->listSearchEnd(aborted, m_ui->searchForm->state());
    if (!unlisted)
        return;
    if (m_history->save(m_request, m_pathlist, QDateTime::currentDateTime(), *unlisted))
        statusBar()->showMessage(QStringLiteral("セーブしました"), kSavedMilliseconds);
    else
        statusBar()->clearMessage();
    makeBackMenu();
    m_keywords->rememberMask(m_request.mask);
    endRun();
}

void MainWindow::showLinecntResult(QString filename, int count)
{
    m_run->addLineCount(filename, count);
}

void MainWindow::linecntFinished(bool aborted)
{
    if (m_run->listLineCountEnd(aborted))
        endRun();
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
        return refuse(runningText());
    if (!optionDialog::edit(this))
        return;
    AppSettings::instance().save(m_applicationDirectory);
    applySettings();
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
        refuse(QStringLiteral("%1 を開けません").arg(QDir::cleanPath(path)));
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
    if (index >= 0 && !m_run->isRunning())
        m_history->loadEntry(index);
}

void MainWindow::historyBackMenuPopup()
{
    makeBackMenu();
    QMenu *menu = m_toolButtons.arrowBackBtn->menu();
    const QSize free = size() - menu->sizeHint();
    menu->popup(mapToGlobal(QPoint(free.width() / 2, free.height() / 2)));
}

void MainWindow::arrowBack()
{
    if (!m_run->isRunning())
        m_history->goBack();
}

void MainWindow::arrowForward()
{
    if (!m_run->isRunning())
        m_history->goForward();
}

void MainWindow::openFile()
{
    if (m_run->isRunning())
        return;
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
