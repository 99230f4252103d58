#include "mainwindow/MainWindow.h"

#include "app/broadcast/NativeEventFilter.h"
#include "icon/Icons.h"
#include "mainwindow/AssistNotes.h"
#include "mainwindow/FindControl.h"
#include "mainwindow/FormKeys.h"
#include "mainwindow/HistoryControl.h"
#include "mainwindow/KeywordControl.h"
#include "mainwindow/KeywordEdit.h"
#include "mainwindow/PathDrops.h"
#include "mainwindow/PathEdit.h"
#include "mainwindow/PreviewControl.h"
#include "mainwindow/RunControl.h"
#include "mainwindow/ViewKeys.h"
#include "settings/AppSettings.h"
#include "settings/CodecEnvironment.h"
#include "settings/SearchPaths.h"
#include "view/GrepEditor.h"

#include "ui_MainWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLoggingCategory>
#include <QMenu>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>

// How the window is put together; what it does then is in MainWindow.cpp.

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
    const auto isLoading = [this](const GrepEditor &view) {
        return this->isLoading(view);
    };
    m_find = new FindControl({m_resultView, m_preview, statusBar(), isLoading}, this);
    m_ui->viewSplitter->addWidget(m_resultView);
    m_ui->viewSplitter->addWidget(m_preview);
    connect(m_resultView, &GrepEditor::BackButton, this, &MainWindow::arrowBack);
    connect(m_resultView, &GrepEditor::ForwardButton, this, &MainWindow::arrowForward);
}

void MainWindow::buildPreview()
{
    m_previewControl =
        new PreviewControl({m_resultView, m_preview, m_ui->searchForm, statusBar(), m_messages},
                           m_applicationDirectory + QStringLiteral("sarvikrescue/"), this);
    connect(m_resultView, &GrepEditor::cursorPositionChanged, this, &MainWindow::previewFile);
    connect(m_find, &FindControl::placeWanted, m_previewControl, &PreviewControl::tellPlace);
    connect(m_find, &FindControl::foundUnfocused, m_previewControl, &PreviewControl::showHit);
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
    connect(backMenu, &QMenu::aboutToShow, this, &MainWindow::listLogs);
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
    new PathDrops(this, form->pathEdit(), this);
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
    connect(form->keyword1Edit(), &KeywordEdit::leaveRequested, m_formKeys,
            [this, form] { m_formKeys->moveFocus(form->keyword1Combo()); });
    const auto onKey = [this](const char *key, void (MainWindow::*slot)()) {
        const auto *shortcut = new QShortcut(QKeySequence(QLatin1String(key)), this);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    onKey("Ctrl+H", &MainWindow::historyBackMenuPopup);
    onKey("F1", &MainWindow::help);
    // Beside the keys of the tool buttons, for who knows these from elsewhere.
    onKey("F3", &MainWindow::findnext);
    onKey("Shift+F3", &MainWindow::findprev);
    for (GrepEditor *view : {m_resultView, m_preview})
        ViewKeys::install(view, m_ui->viewSplitter);
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
    form->setMask(AppSettings::instance().maskhistory.value(0));
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
        m_find->stop();
        showHighlightWords();
    });
    connect(m_history, &HistoryControl::unreadable, this, &MainWindow::refuseFile);
    m_history->loadLastSearch();
    // From here on a log is one that was asked for: the window is that search's, and
    // what the status bar tells of another one is over.
    connect(m_history, &HistoryControl::loaded, this, [this] {
        showTitle(m_ui->searchForm->state().keyword1);
        statusBar()->clearMessage();
    });
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
