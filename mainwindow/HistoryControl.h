#pragma once

#include "mainwindow/FormState.h"
#include "mainwindow/PiecewiseText.h"
#include "mainwindow/ToolButtons.h"
#include "mainwindow/history/LogHistory.h"
#include "mainwindow/history/LogRestore.h"

#include <QDateTime>
#include <QObject>

class GrepEditor;
class SearchForm;

/// Past searches in the window: saves what the result view shows, lists the
/// logs in the back menu, and brings a log back into the form and the view. The
/// text of a large log comes piece by piece; see PiecewiseText.
class HistoryControl : public QObject {
    Q_OBJECT

signals:
    /// Form and result view show another log; the rest of its text may follow.
    void loaded();
    /// The log that was to be shown cannot be read; nothing has changed.
    void unreadable(const QString &path);

public:
    /// Not owned; must outlive this object.
    struct Views {
        SearchForm *form = nullptr;
        GrepEditor *resultView = nullptr;
        ToolButtons buttons;
    };

    /// appDir ends in "/". Nothing is read yet.
    HistoryControl(const QString &appDir, const Views &views, QObject *parent);
    ~HistoryControl() override;

    const QString &logDirectory() const { return m_logDirectory; }

    /// The log of the last search, for the start of the program. False when there
    /// is none.
    bool loadLastSearch();
    /// A log whole. False when it cannot be read; see unreadable().
    bool load(const QString &path);
    /// The log of the back menu's entry index. False when it cannot be read, or for an
    /// index out of range.
    bool loadEntry(int index);

    /// Writes the log of the last search and, for time, one into the history: the
    /// result view's text and then unlisted, lines that the view does not show.
    /// False when one of them was not written; nobody is told. Events are
    /// processed while the files are written.
    bool save(const FormState &request, const QStringList &paths, const QDateTime &time,
              const QStringList &unlisted = {});

    /// Lists the logs anew, deletes those beyond logmax and begins at the newest. The
    /// back button, which opens the list, is enabled when there is one.
    void rebuildMenu();
    /// Pages to an older or newer log; forward from the newest restores what
    /// remember() was told last and empties the view. True when a log was loaded.
    bool goBack();
    bool goForward();

    /// The form as it is for the newest search; that of the start until then.
    void remember(const FormState &form) { m_remembered = form; }

    /// The result view is for something else now: gives up the rest of a log.
    void cancelLoading() { m_text.cancel(); }
    bool isLoading() const { return !m_text.isFinished(); }

private:
    void apply(const LogRestore &log);
    void restoreRemembered();
    void updateButtons();

    const QString m_appDir;
    const QString m_logDirectory;
    const Views m_views;
    LogHistory m_history;
    FormState m_remembered;
    PiecewiseText m_text; // of the log in the result view
};
