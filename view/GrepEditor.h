#pragma once

#include "view/BlockPainter.h"
#include "view/WordPicker.h"

#include <QFont>
#include <QPlainTextEdit>
#include <QRegExp>
#include <QString>
#include <QStringList>

#include <memory>

class FileLineSearch;
class GrepEditorHost;
class Highlighter;
class ProgramLauncher;

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

/// The text view of the main window, used twice: as the result view, which
/// lists the hits, and as the preview, which shows the file of the selected
/// one. Opens a hit in the external editor, picks words into the form's
/// keywords, starts a second search, zooms, and makes blanks and ends visible.
///
/// Fonts, colours, switches and the editor are those of AppSettings at the
/// time they are needed, except colours and fonts, which applyColours() and
/// setViewFont() take over.
class GrepEditor : public QPlainTextEdit {
    Q_OBJECT

signals:
    void BackButton();
    void ForwardButton();
    /// The view's font became smaller; the argument is this view.
    void ZoomedOut(GrepEditor *view);
    /// A mouse button was released over the view, the left one is up, and what the
    /// release does to the cursor is done.
    void mouseReleased();

public slots:
    /// The cursor moved, or another text came without a signal: the next F5 or F6
    /// picks one word again.
    void highlightCurrentLine();
    /// Starts this program once more, with the selected text and where it stands as
    /// arguments (see OtherGrepCommand); nothing without a selection.
    void othergrep();

public:
    /// When parent is a GrepEditorHost it becomes the host.
    explicit GrepEditor(bool isResultView, QWidget *parent = nullptr);
    ~GrepEditor() override;

    bool isResultView() const { return m_isResultView; }

    /// Colours the text; belongs to the document. The result view's knows no
    /// language from the start, the preview's waits for one.
    Highlighter &highlighter() const { return *m_highlighter; }

    /// Not owned; null when there is nobody to give a picked word to.
    void setHost(GrepEditorHost *host) { m_host = host; }
    /// Not owned; the platform's own until this is called.
    void setLauncher(ProgramLauncher *launcher) { m_launcher = launcher; }

    /// Shows the text in font, see ShownFont, and keeps font in AppSettings as this view's
    /// (grepFont or textFont). A font to remember is the one that resetting
    /// the zoom returns to.
    void setViewFont(QFont font, bool remember);
    /// Takes the colours over from AppSettings.
    void applyColours();

    /// Text of the cursor's line, exactly as it is in the document.
    QString currentLineText() const;
    /// Text of the file line that heads the cursor's line.
    QString fileLineText() const;

    /// What the view is about; line and column as a hit line gives them.
    void setLocation(const QString &fileName, int line, int column);
    const QString &fileName() const { return m_fileName; }
    int line() const { return m_line; }
    int column() const { return m_column; }

    /// Whether the result view's lines are those of a search, as they are at first.
    /// Those of a line count may begin as hits do, but point nowhere.
    void setListsHits(bool listsHits) { m_listsHits = listsHits; }

    /// Opens the file in the external editor. The result view opens what the
    /// cursor's line points to, which becomes the location, a number that cannot be
    /// read as 0; a line that is neither a file's nor a hit's does nothing. The
    /// preview opens its file at the cursor.
    void openInEditor();

    /// What is marked as found for a keyword of the form, with the switches as
    /// they are now.
    QRegExp findPattern(const QString &keyword) const;

    /// Appends each text as appendPlainText() does, in one go, but a file line as
    /// one line whatever the file's name (see ResultLine). The text is the same, but the cursor and
    /// the selection stay, and so does what is seen, except that a view scrolled to the end follows
    /// it. Undo forgets all that was before: nobody takes back a listed hit by Ctrl+Z.
    void appendLines(const QStringList &lines);

    /// What appendLines() would add to the text: the lines, a line feed before each
    /// that is not the first of the view.
    QString textOfAppended(const QStringList &lines) const;

    /// The last word picked with F5 or F6.
    const QString &pickedWord() const { return m_pickedWord; }

    /// Set by the Escape key or by stop() until clearEscape().
    bool escapePressed() const { return m_escapePressed; }
    void stop() { m_escapePressed = true; }
    void clearEscape() { m_escapePressed = false; }

    /// The left mouse button was pressed in the view and is down, as far as the view knows:
    /// while a selection is drawn, its cursor is not yet where the user wants it.
    bool isMousePressed() const { return m_isMousePressed; }

    /// Changes the font's size by step points, unless nothing would be left of
    /// it or it is as large as can be shown; 0 returns to the remembered font.
    void zoom(int step);

    /// The view's context menu, as it is shown.
    std::unique_ptr<QMenu> makeContextMenu();

protected:
    /// The text alone, letter by letter. The toolkit would offer it formatted as well, a
    /// second copy of all of it, which takes many seconds for a million hits.
    QMimeData *createMimeDataFromSelection() const override;
    /// Not a file: dropped, it is for the window, and its address is no text to insert.
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool takeLocationFromLine();
    BlockPainter::Look look() const;
    void keepCursorInSelectedLine();
    bool isCursorInSight(int viewportHeight) const;
    int rowsToCursor() const;
    int rowsIn(int viewportHeight) const;
    void zoomByWheel(const QWheelEvent &event);
    void scrollByLines(const QWheelEvent &event);
    /// Picks one word more than the last time that count was used.
    bool pickWord(int &count);
    void pickKeyword1();
    void pickKeyword2();
    void resetPickCounts();
    ProgramLauncher &launcher() const;

    std::unique_ptr<FileLineSearch> m_fileLineSearch;
    Highlighter *m_highlighter = nullptr;
    QString m_pickedWord;
    QString m_fileName;
    QFont m_defaultFont;
    int m_pickCount1 = 0;
    int m_pickCount2 = 0;
    int m_line = 0;
    int m_column = 0;
    const bool m_isResultView;
    bool m_listsHits = true;
    bool m_escapePressed = false;
    bool m_isMousePressed = false;
    bool m_selectsLines = false; // since a triple click
    bool m_isLaidOut = false; // for the width of a view that was once shown
    WordPicker m_picker;
    GrepEditorHost *m_host = nullptr;
    ProgramLauncher *m_launcher = nullptr;
    /// Where relative names start: a launch changes the current directory.
    const QString m_startDirectory;
    /// Wheel movement of a touch pad that is no whole step yet, in eighths of
    /// a degree.
    int m_zoomRest = 0;
};
