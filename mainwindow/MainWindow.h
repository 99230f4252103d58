#pragma once

#include "engine/SearchCondition.h"
#include "mainwindow/FormState.h"
#include "mainwindow/TextFind.h"
#include "view/GrepEditorHost.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QStringList>
#include <QTimer>

#include <memory>

class AppSettings;
class FormKeys;
class GrepEditor;
class LineCountReport;
class ResultListing;
class SearchRun;

QT_BEGIN_NAMESPACE
class QComboBox;
class QCompleter;
class QLabel;
class QMenu;
class QToolButton;
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
    /// Aborts a run and stores the settings.
    ~MainWindow() override;

    // GrepEditorHost
    void setKeyword1(const QString &word) override;
    void setKeyword2(const QString &word) override;
    void refreshForm() override;
    QStringList searchPaths() const override { return m_pathlist; }

    static QString versionString();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    enum class Mode { Search, LineCount };

    void setUpEnvironment();
    void buildViews();
    void buildToolBar();
    QToolButton *addToolButton(const QString &name, const QString &icon, const QString &text,
                               const QKeySequence &shortcut, void (MainWindow::*slot)());
    void connectActions();
    void connectForm();
    void connectKeys();
    void fillHistories();
    void refillKeywords();
    void showRequest(const QStringList &pathlist, const QString &mask, const QString &findword);
    void showDocument(const QString &relativePath);
    void flipToggle(bool AppSettings::*toggle);
    void choosePastKeyword(const QString &keyword);
    void find(TextFind::Direction direction);
    void storeState();
    void confirmQuit();

    void refuse(const QString &message);
    bool confirmWholeMask();
    void start(Mode mode, const FormState &form);
    void rememberKeywords();
    void showHighlightWords(const FormState &form);
    SearchCondition condition(Mode mode, const FormState &form) const;
    void setRunning(bool running);
    void abortRun();
    void stopProgress();
    void appendSummary(bool aborted);
    void flushLineCounts();
    void rememberMask();
    void endRun();

    std::unique_ptr<Ui::MainWindow> m_ui;
    const QString m_applicationDirectory;
    GrepEditor *m_resultView = nullptr;
    GrepEditor *m_preview = nullptr;
    FormKeys *m_formKeys = nullptr;
    QToolButton *m_backButton = nullptr;
    QToolButton *m_forwardButton = nullptr;
    QMenu *m_backMenu = nullptr;

    // The current request: its paths, its mask and the keywords in use.
    QStringList m_pathlist;
    QString m_mask;
    QString m_keyword1;
    QString m_keyword2;
    QString m_keyword3;
    QString m_findText;
    QElapsedTimer m_elapsed;

    // The run; the timer exists as long as it ticks.
    SearchRun *m_run = nullptr;
    std::unique_ptr<QTimer> m_progressTimer;
    std::unique_ptr<ResultListing> m_listing;
    std::unique_ptr<LineCountReport> m_lineCount; // of the last line count
    QStringList m_pendingLines; // of a line count, to be listed at the next tick
    /// The result view shows hits, which can be previewed; not lines counted.
    bool m_resultShown = false;
    bool m_running = false;
    bool m_abortRequested = false;
    bool m_closing = false;
};
