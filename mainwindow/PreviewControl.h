#pragma once

#include "mainwindow/PiecewiseText.h"
#include "mainwindow/preview/PreviewFile.h"

#include <QObject>

class GrepEditor;
class SearchForm;
class StatusMessages;

QT_BEGIN_NAMESPACE
class QLabel;
class QStatusBar;
class QTextBlock;
QT_END_NAMESPACE

/// Shows in the preview the file of the hit that the result view's cursor is on,
/// and saves what is edited there.
class PreviewControl : public QObject {
    Q_OBJECT

public:
    /// Not owned; must outlive this object.
    struct Views {
        GrepEditor *resultView = nullptr;
        GrepEditor *preview = nullptr;
        const SearchForm *form = nullptr;
        QStatusBar *statusBar = nullptr;
        StatusMessages *messages = nullptr;
    };

    /// rescueDirectory: where a text goes that cannot be saved under its name; ends
    /// in "/".
    PreviewControl(const Views &views, const QString &rescueDirectory, QObject *parent);

    /// The result view shows hits, or lines counted, which are nothing to preview.
    void setResultShown(bool shown);
    /// A run begins, or a log is shown: nobody has selected a hit of it yet. A
    /// file that was changed meanwhile is then read again.
    void forgetSelection()
    {
        m_lastResultBlock = -1;
        m_mayBeOutdated = true;
    }
    /// The user has selected a hit since then.
    bool hasSelection() const { return m_lastResultBlock >= 0; }

    /// A part of the file's text is still to come.
    bool isLoading() const { return !m_text.isFinished(); }

    /// Tells in the status bar where the selected hit is, when the result view's cursor
    /// is still on it.
    void tellPlace() const;

    /// Follows the result view's cursor, unless the view is not the one that the
    /// user is in. While the mouse is pressed there it waits for the release: the
    /// selection that is being drawn may pass many files, and a box that asks about one
    /// would end it.
    void follow();

    /// Shows what the result view's cursor is on, wherever the user is; nothing while
    /// there is no result.
    void showHit();

    /// Asks whether a modified text is to be saved, and saves it. False when it
    /// was to be saved and was not, or when the question was cancelled. A text that
    /// was given up is not modified any more.
    bool saveIfModified();
    /// For a window that goes without having asked: keeps a modified text in the
    /// rescue directory.
    void rescueIfModified();
    /// Saves the text. A text that nobody has edited, of a file that is still as it is
    /// shown, is not written. False when it was to be saved and was not.
    bool save();

private:
    struct Place {
        QString path;
        int line = 1; ///< from 1
        int column = 1;
    };

    void followAfterMouse();
    bool isShown(const QString &path);
    /// False when the file before stays, because its text could not be kept.
    bool showFile(const QString &path);
    void showPlace();
    void onTextShown();
    bool isModified() const;
    bool leaveFile();
    QString rescue() const;
    bool keepElsewhere();
    bool rescueAndTell();
    bool mayBeSaved(const QString &text);
    bool isPlaceShown() const;
    void moveCursorToPlace();
    int rowInLine(const QTextBlock &block) const;
    void markKeywords();
    void showLabels();
    QString text() const;
    QWidget *window() const;

    const Views m_views;
    const QString m_rescueDirectory;
    PreviewFile m_file; // its path is empty before the first preview
    PiecewiseText m_text; // of m_file
    Place m_place; // of the hit selected last
    bool m_placeWaits = false; // for its part of the text
    int m_lastResultBlock = -1;
    bool m_followWaits = false; // for the release of the mouse
    bool m_resultShown = false;
    bool m_mayBeOutdated = false;
    // Of the status bar.
    QLabel *m_codeSetLabel = nullptr;
    QLabel *m_lineEndLabel = nullptr;
};
