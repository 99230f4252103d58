#include "mainwindow/MainWindow.h"

#include "engine/LineCountReport.h"
#include "engine/SignalSpool.h"
#include "mainwindow/FormKeys.h"
#include "mainwindow/ResultListing.h"
#include "mainwindow/SearchPaths.h"
#include "mainwindow/SearchRun.h"
#include "mainwindow/SearchSummary.h"
#include "mainwindow/WindowLayout.h"
#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/CodecEnvironment.h"
#include "settings/HistoryList.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "settings/dialogs/InputFolderDialog.h"
#include "settings/dialogs/LineEdit.h"
#include "settings/dialogs/findDialog.h"
#include "settings/dialogs/optionDialog.h"
#include "settings/dialogs/prompts/UserPrompt.h"
#include "settings/dialogs/verupdialog.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"

#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QDesktopServices>
#include <QLoggingCategory>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>

namespace {

const char kProgramName[] = "sarvik";

constexpr int kRefusalMilliseconds = 5000;
constexpr int kTickMilliseconds = 150;

QString programName()
{
    return QLatin1String(kProgramName);
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
    m_run = new SearchRun(this);
    connectActions();
    connectForm();
    connectKeys();
    WindowLayout::restore({this, m_ui->viewSplitter, m_resultView, m_preview});
    fillHistories();
    showRequest(pathlist, mask, findword);
}

MainWindow::~MainWindow()
{
    // What still runs must end before anything that it reads goes.
    m_run->end();
    storeState();
    AppSettings::instance().save(m_applicationDirectory);
}

void MainWindow::setUpEnvironment()
{
    QLoggingCategory::setFilterRules(CodecEnvironment::loggingFilterRules());
    CodecEnvironment::applyUnicodeMap();
    AppSettings::instance().load(m_applicationDirectory);
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
    m_ui->viewSplitter->addWidget(m_resultView);
    m_ui->viewSplitter->addWidget(m_preview);
    m_listing = std::make_unique<ResultListing>(*m_resultView, *m_ui->progressPanel);
    connect(m_resultView, &GrepEditor::cursorPositionChanged, this, &MainWindow::previewFile);
    connect(m_resultView, &GrepEditor::BackButton, this, &MainWindow::arrowBack);
    connect(m_resultView, &GrepEditor::ForwardButton, this, &MainWindow::arrowForward);
}

void MainWindow::buildToolBar()
{
    m_backMenu = new QMenu(this);
    m_backButton = addToolButton(QStringLiteral("arrowBackBtn"), QStringLiteral("arrow-back"),
                                 QStringLiteral("前の検索結果"), {}, &MainWindow::arrowBack);
    m_backButton->setToolTip(QStringLiteral("前に検索結果を表示します"));
    m_backButton->setMenu(m_backMenu);
    m_backButton->setPopupMode(QToolButton::MenuButtonPopup);
    m_forwardButton =
        addToolButton(QStringLiteral("arrowForwardBtn"), QStringLiteral("arrow-forward"),
                      QStringLiteral("次の検索結果"), {}, &MainWindow::arrowForward);
    m_ui->toolBar->addSeparator();
    addToolButton(QStringLiteral("findBtn"), QStringLiteral("edit-find-4"), QStringLiteral("検索"),
                  QKeySequence(QStringLiteral("Ctrl+F")), &MainWindow::findDialogPopup);
    addToolButton(QStringLiteral("findNextBtn"), QStringLiteral("go-down-5"),
                  QStringLiteral("次を検索"), QKeySequence(QStringLiteral("Ctrl+Down")),
                  &MainWindow::findnext);
    addToolButton(QStringLiteral("findPrevBtn"), QStringLiteral("go-up-5"),
                  QStringLiteral("前を検索"), QKeySequence(QStringLiteral("Ctrl+Up")),
                  &MainWindow::findprev);
    m_ui->toolBar->addSeparator();
    addToolButton(QStringLiteral("optionBtn"), QStringLiteral("option"), QStringLiteral("設定"), {},
                  &MainWindow::optionDialogPopup);
    connect(m_backMenu, &QMenu::aboutToShow, this, &MainWindow::makeBackMenu);
    connect(m_backMenu, &QMenu::triggered, this, &MainWindow::openLogfile);
}

QToolButton *MainWindow::addToolButton(const QString &name, const QString &icon,
                                       const QString &text, const QKeySequence &shortcut,
                                       void (MainWindow::*slot)())
{
    auto *button = new QToolButton(m_ui->toolBar);
    button->setObjectName(name);
    button->setIcon(QIcon(QStringLiteral(":/icon/%1.png").arg(icon)));
    button->setText(text);
    button->setAccessibleName(text);
    button->setShortcut(shortcut);
    button->setToolTip(
        shortcut.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, shortcut.toString()));
    button->setFocusPolicy(Qt::NoFocus);
    m_ui->toolBar->addWidget(button);
    connect(button, &QToolButton::clicked, this, slot);
    return button;
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
    connect(m_run, &SearchRun::searchFinished, this, &MainWindow::searchFinished);
    connect(m_run, &SearchRun::lineCountFinished, this, &MainWindow::linecntFinished);
    connect(m_run, &SearchRun::lineCounted, this, &MainWindow::showLinecntResult);
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
    connect(keyword1, &LineEdit::returnPressed, this, &MainWindow::GrepDummy);
    connect(form, &SearchForm::pastKeywordChosen, this, &MainWindow::choosePastKeyword);
}

void MainWindow::connectKeys()
{
    const SearchForm *form = m_ui->searchForm;
    FormKeys::Widgets widgets;
    widgets.inputFields = form->inputFields();
    widgets.pathEdit = form->pathEdit();
    widgets.keyword1 = form->keyword1Combo();
    widgets.resultView = m_resultView;
    m_formKeys = new FormKeys(widgets, this);
    connect(m_formKeys, &FormKeys::searchRequested, this, &MainWindow::GrepDummy);
    connect(m_formKeys, &FormKeys::abortRequested, this, &MainWindow::abortRun);
    connect(m_formKeys, &FormKeys::quitRequested, this, &MainWindow::confirmQuit);
}

void MainWindow::fillHistories()
{
    SearchForm *form = m_ui->searchForm;
    form->applyLook();
    form->loadSwitches();
    form->showToggles();
    form->fillMasks();
    form->fillKeywords2();
    refillKeywords();
    form->setKeyword1(QString());
    form->setKeyword2(QString());
}

void MainWindow::refillKeywords()
{
    m_ui->searchForm->fillKeywords1();
    auto *completer = new QCompleter(AppSettings::instance().keywordHistory->keywords());
    SetCompleter(m_ui->searchForm->keyword1Combo(), completer);
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
    m_closing = true;
    m_run->abort();
    event->accept();
}

void MainWindow::confirmQuit()
{
    UserPrompt::Message question;
    question.icon = QMessageBox::Question;
    question.title = programName();
    question.text = QStringLiteral("終了します。よろしいですか？。");
    question.buttons = QMessageBox::Yes | QMessageBox::No;
    question.defaultButton = QMessageBox::Yes;
    if (UserPrompt::current().message(this, question) == QMessageBox::Yes)
        close();
}

// The form's buttons

void MainWindow::GrepDummy()
{
    on_pushButton_clicked();
}

void MainWindow::SetCompleter(QComboBox *le_keyword, QCompleter *completer)
{
    QCompleter *former = le_keyword->completer();
    completer->setParent(le_keyword);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    le_keyword->setCompleter(completer);
    delete former;
}

void MainWindow::onClick_btn_case()
{
    flipToggle(&AppSettings::caseinsensitive);
}

void MainWindow::onClick_btn_word()
{
    flipToggle(&AppSettings::word);
}

void MainWindow::onClick_btn_regexp()
{
    flipToggle(&AppSettings::regexp);
}

void MainWindow::flipToggle(bool AppSettings::*toggle)
{
    AppSettings &settings = AppSettings::instance();
    settings.*toggle = !(settings.*toggle);
    m_ui->searchForm->showToggles();
}

/// A past keyword comes back with the switches it was searched with.
void MainWindow::choosePastKeyword(const QString &keyword)
{
    AppSettings &settings = AppSettings::instance();
    const int index = settings.keywordHistory->find(keyword);
    if (index < 0)
        return;
    const auto &entry = settings.keywordHistory->entries()[static_cast<size_t>(index)];
    settings.caseinsensitive = entry.flagA;
    settings.word = entry.flagB;
    settings.regexp = entry.flagC;
    m_ui->searchForm->showToggles();
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
    if (m_running) {
        abortRun();
        return;
    }
    if (m_run->exists())
        return;
    const FormState form = m_ui->searchForm->state();
    if (form.keyword1.isEmpty())
        return refuse(QStringLiteral("キーワード１を指定してください"));
    if (form.pathText.isEmpty())
        return refuse(QStringLiteral("検索パスを指定してください"));
    if (form.mask.isEmpty())
        return refuse(QStringLiteral("マスクを指定してください"));
    if (form.mask == QLatin1String("*.*") && !confirmWholeMask())
        return;
    start(Mode::Search, form);
    m_resultView->setFocus();
}

bool MainWindow::confirmWholeMask()
{
    UserPrompt::Message question;
    question.icon = QMessageBox::Question;
    question.title = programName();
    question.text = QStringLiteral(
        "マスクが(*.*)で指定されると、テキストファイル以外も対象になります。\nよろしいですか？。");
    question.buttons = QMessageBox::Yes | QMessageBox::No;
    question.defaultButton = QMessageBox::Yes;
    return UserPrompt::current().message(this, question) == QMessageBox::Yes;
}

void MainWindow::lineCountGrep()
{
    if (m_running)
        return refuse(QStringLiteral("検索中です"));
    const FormState form = m_ui->searchForm->state();
    if (form.pathText.isEmpty())
        return refuse(QStringLiteral("検索パスを指定してください"));
    if (form.mask.isEmpty())
        return refuse(QStringLiteral("マスクを指定してください"));
    m_lineCount = std::make_unique<LineCountReport>();
    start(Mode::LineCount, form);
}

void MainWindow::start(Mode mode, const FormState &form)
{
    m_pendingLines.clear();
    m_elapsed.start();
    m_keyword1 = form.keyword1;
    m_keyword2 = form.usesKeyword2() ? form.keyword2 : QString();
    m_keyword3 = form.keyword3Group ? form.keyword3 : QString();
    m_mask = form.mask;
    m_pathlist = SearchPaths::fromText(form.pathText);
    m_resultShown = mode == Mode::Search;
    setWindowTitle(m_keyword1 + QStringLiteral(" -- ") + programName());
    m_listing->reset();
    m_resultView->setFocus();
    setRunning(true);
    ParameterFile(m_applicationDirectory).write({m_pathlist, m_mask, m_keyword1});
    rememberKeywords();
    showHighlightWords(form);
    m_run->start(condition(mode, form));
    m_progressTimer = std::make_unique<QTimer>(this);
    connect(m_progressTimer.get(), &QTimer::timeout, this, &MainWindow::onTimerProgressReport);
    m_progressTimer->start(kTickMilliseconds);
}

void MainWindow::rememberKeywords()
{
    AppSettings &settings = AppSettings::instance();
    if (!m_keyword1.isEmpty()) {
        settings.keywordHistory->add(m_keyword1, settings.caseinsensitive, settings.word,
                                     settings.regexp);
        refillKeywords();
    }
    if (!m_keyword2.isEmpty()) {
        HistoryList::insert(settings.history2, m_keyword2);
        m_ui->searchForm->fillKeywords2();
    }
}

void MainWindow::showHighlightWords(const FormState &form)
{
    const QRegExp pattern1 = m_resultView->findPattern(form.keyword1);
    if (form.usesKeyword2() && !form.keyword2.isEmpty())
        m_resultView->highlighter().setFind(pattern1, m_resultView->findPattern(form.keyword2));
    else
        m_resultView->highlighter().setFind(pattern1);
}

SearchCondition MainWindow::condition(Mode mode, const FormState &form) const
{
    SearchCondition condition;
    condition.pathlist = m_pathlist;
    condition.mask = m_mask;
    condition.keyword1 = m_keyword1;
    condition.keyword2 = m_keyword2;
    condition.keyword3 = m_keyword3;
    condition.plusline = form.lineDistance;
    condition.flg = (form.ignoreCase ? SearchCondition::IgnoreCaseFlag : 0)
        + (form.word ? SearchCondition::WordFlag : 0)
        + (form.regexp ? SearchCondition::RegExpFlag : 0);
    condition.fnameflg = form.emptyFiles;
    condition.subdir = form.subdir;
    condition.linecount = mode == Mode::LineCount;
    return condition;
}

void MainWindow::setRunning(bool running)
{
    m_running = running;
    m_abortRequested = false;
    m_formKeys->setBusy(running);
    m_ui->searchForm->setButton(running ? SearchForm::Button::Abort : SearchForm::Button::Start);
    // Each of these would replace the results or change what the engine reads.
    m_ui->actionOpenLog->setEnabled(!running);
    m_ui->actionOptions->setEnabled(!running);
    m_ui->actionLineCount->setEnabled(!running);
    if (running)
        m_ui->progressPanel->setShown(true);
}

void MainWindow::abortRun()
{
    if (!m_running)
        return;
    const QSignalBlocker blocker(this);
    m_abortRequested = true;
    m_ui->searchForm->setButtonEnabled(false);
    m_run->abort();
    m_resultView->stop();
    QCoreApplication::processEvents();
}

// Progress and end

void MainWindow::onTimerProgressReport()
{
    SignalSpool *spool = m_run->spool();
    if (!spool)
        return;
    // Said again: an engine that had not begun did not hear it.
    if (m_abortRequested)
        m_run->abort();
    m_listing->tick(*spool);
    statusBar()->showMessage(spool->currentFile());
    m_listing->takeLines(*spool);
    flushLineCounts();
}

void MainWindow::stopProgress()
{
    m_progressTimer.reset();
}

void MainWindow::searchFinished(bool aborted)
{
    SignalSpool *spool = m_run->spool();
    if (!spool)
        return;
    stopProgress();
    m_ui->searchForm->setButton(SearchForm::Button::Displaying);
    m_listing->drain(*spool, [this] { return m_closing; });
    if (m_closing)
        return;
    appendSummary(aborted);
    m_ui->progressPanel->showThreads(spool->threadCounts());
    rememberMask();
    endRun();
}

void MainWindow::appendSummary(bool aborted)
{
    SignalSpool &spool = *m_run->spool();
    const FormState form = m_ui->searchForm->state();
    SearchSummary::Outcome outcome;
    outcome.aborted = aborted;
    outcome.usesKeyword2 = form.usesKeyword2();
    outcome.keyword2 = form.keyword2;
    outcome.lineDistance = form.lineDistance;
    outcome.excludesKeyword3 = form.keyword3Group;
    outcome.keyword3 = form.keyword3;
    outcome.matchedFiles = spool.resultFileCount();
    outcome.totalFiles = spool.searchedCount();
    outcome.matchedLines = spool.hitLineCount();
    outcome.elapsedMilliseconds = m_elapsed.elapsed();
    QStringList lines = SearchSummary::lines(outcome);
    QStringList warnings;
    spool.takeWarnings(&warnings);
    if (form.skipped)
        lines += SearchSummary::warningSection(warnings);
    QStringList errors;
    spool.takeErrors(&errors);
    lines += SearchSummary::errorSection(errors);
    m_listing->append(lines);
}

void MainWindow::rememberMask()
{
    if (m_mask.isEmpty())
        return;
    HistoryList::insert(AppSettings::instance().maskhistory, m_mask);
    m_ui->searchForm->fillMasks();
}

void MainWindow::endRun()
{
    setRunning(false);
    activateWindow();
    raise();
    m_run->end();
    m_ui->searchForm->setButtonEnabled(true);
    m_ui->progressPanel->setShown(false);
}

// Line count

void MainWindow::showLinecntResult(QString filename, int count)
{
    // Listed at the next tick: a line at a time would cost more than counting it.
    m_pendingLines += m_lineCount->addFile(filename, count);
}

void MainWindow::flushLineCounts()
{
    m_listing->append(m_pendingLines);
    m_pendingLines.clear();
}

void MainWindow::linecntFinished(bool aborted)
{
    if (!m_run->exists())
        return;
    stopProgress();
    flushLineCounts();
    m_listing->append(m_lineCount->finish(aborted));
    endRun();
}

// Views

void MainWindow::find(TextFind::Direction direction)
{
    if (m_findText.isEmpty())
        return findDialogPopup();
    const AppSettings &settings = AppSettings::instance();
    const TextFind::Options options{settings.findcase, settings.findword, settings.findregexp};
    GrepEditor *view = m_preview->hasFocus() ? m_preview : m_resultView;
    switch (TextFind::find(*view, m_findText, options, direction)) {
    case TextFind::Result::Found:
        statusBar()->clearMessage();
        break;
    case TextFind::Result::FoundAfterWrap:
        statusBar()->showMessage(direction == TextFind::Direction::Forward
                                     ? QStringLiteral("末尾まで検索したので先頭に戻りました")
                                     : QStringLiteral("先頭まで検索したので末尾に戻りました"),
                                 kRefusalMilliseconds);
        break;
    case TextFind::Result::NotFound:
        refuse(QStringLiteral("「%1」は見つかりません").arg(m_findText));
        break;
    }
}

void MainWindow::findnext()
{
    find(TextFind::Direction::Forward);
}

void MainWindow::findprev()
{
    find(TextFind::Direction::Backward);
}

void MainWindow::findDialogPopup()
{
    QString text = m_findText;
    if (!findDialog::ask(0, text, this) || text.isEmpty())
        return;
    m_findText = text;
    findnext();
}

// Other dialogs

void MainWindow::optionDialogPopup()
{
    if (m_running)
        return refuse(QStringLiteral("検索中です"));
    if (!optionDialog::edit(this))
        return;
    const AppSettings &settings = AppSettings::instance();
    AppSettings::instance().save(m_applicationDirectory);
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
    QDesktopServices::openUrl(QUrl::fromLocalFile(m_applicationDirectory + relativePath));
}

void MainWindow::help()
{
    showDocument(QStringLiteral("/doc/sarvik/index.html"));
}

void MainWindow::regexphelp()
{
    showDocument(QStringLiteral("/doc/sarvik/sarvik_regexp.html"));
}

// History and preview: not built yet

void MainWindow::previewFile()
{
}
void MainWindow::onBoradCastMessage(uint, uint)
{
}
void MainWindow::openFile()
{
}
void MainWindow::makeBackMenu()
{
}
void MainWindow::openLogfile(QAction *)
{
}
void MainWindow::historyBackMenuPopup()
{
}
void MainWindow::arrowBack()
{
}
void MainWindow::arrowForward()
{
}
