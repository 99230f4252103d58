#pragma once

#include "mainwindow/FormRequest.h"
#include "mainwindow/ToolButtons.h"
#include "view/GrepEditorHost.h"

#include <QMainWindow>
#include <QStringList>

#include <memory>

class FindControl;
class FormKeys;
class GrepEditor;
class HistoryControl;
class KeywordControl;
class PreviewControl;
class RunControl;
class StatusMessages;

QT_BEGIN_NAMESPACE
class QComboBox;
class QCompleter;
namespace Ui {
class MainWindow;
}
QT_END_NAMESPACE

/// The window of the program: ties the search form, the running search, the
/// result view, the preview and the history together. What each of them does is
/// theirs; which happens when is here.
///
/// A window is idle, runs (from a start until searchFinished() or
/// linecntFinished() is through) and is idle again. While it runs, what would
/// replace the results or change the settings that the engine reads is refused.
///
/// User interface thread only.
class MainWindow : public QMainWindow, public GrepEditorHost {
    Q_OBJECT

public slots:
    // The order of the slots is the order of their method indices.
    void GrepDummy();
    void SetCompleter(QComboBox *le_keyword, QCompleter *completer);
    void onBoradCastMessage(uint first, uint thid);
    void onClick_btn_case();
    void onClick_btn_word();
    void onClick_btn_regexp();
    void showLinecntResult(QString filename, int count);
    void onTimerProgressReport();
    void findnext();
    void findprev();
    void findDialogPopup();
    void linecntFinished(bool aborted);
    void searchFinished(bool aborted);
    void openFile();
    void optionDialogPopup();
    void on_pushButton_clicked();
    void previewFile();
    void about();
    void help();
    void regexphelp();
    void lineCountGrep();
    void on_btnKeyword1_clicked();
    void makeBackMenu();
    void openLogfile(QAction *action);
    void historyBackMenuPopup();
    void arrowBack();
    void arrowForward();
    void on_btnKeyword2_clicked(bool checked);
    void on_btnPlus_clicked();

public:
    /// Shows the request that was handed over, without searching. Loads
    /// AppSettings from the application directory.
    MainWindow(const QStringList &pathlist, const QString &mask, const QString &findword,
               QWidget *parent = nullptr);
    /// Aborts a run and stores the settings. A modified preview that nobody was
    /// asked about is kept in the rescue directory. Afterwards, ask
    /// RunControl::isAnyLeftBehind().
    ~MainWindow() override;

    // GrepEditorHost
    void setKeyword1(const QString &word) override;
    void setKeyword2(const QString &word) override;
    void refreshForm() override;
    QStringList searchPaths() const override;

    static QString versionString();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpEnvironment();
    void buildViews();
    void buildPreview();
    void buildToolBar();
    void connectActions();
    void connectForm();
    void connectKeys();
    void connectRun();
    void listenForBroadcasts();
    void fillHistories();
    void buildHistory();
    void listLogs();
    void showRequest(const QStringList &pathlist, const QString &mask, const QString &findword);
    void storeState();

    void refuseFile(const QString &path);
    bool isIncomplete(FormRequest::Mode mode, const FormState &form);
    bool isLoading(const GrepEditor &view) const;
    void start(FormRequest::Mode mode, const FormState &form);
    void abortRun();
    void endRun();
    bool tellMissingPath();
    void tellNext(const QString &hint);
    void setRunning(bool running);
    void showTitle(const QString &keyword1);
    void showHighlightWords();
    void showDocument(const QString &relativePath);
    void applySettings();
    void confirmQuit();

    std::unique_ptr<Ui::MainWindow> m_ui;
    const QString m_applicationDirectory;
    StatusMessages *m_messages = nullptr;
    GrepEditor *m_resultView = nullptr;
    GrepEditor *m_preview = nullptr;
    FormKeys *m_formKeys = nullptr;
    KeywordControl *m_keywords = nullptr;
    FindControl *m_find = nullptr;
    RunControl *m_run = nullptr;
    HistoryControl *m_history = nullptr;
    PreviewControl *m_previewControl = nullptr;
    ToolButtons m_toolButtons;

    // Of the last start.
    FormState m_request;
    QStringList m_pathlist;
};
