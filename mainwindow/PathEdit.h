#pragma once

#include <QPlainTextEdit>

/// The editor of the search paths, one on each line. A folder that is dropped or
/// pasted as a file becomes a line of its own; of a file it is the folder. Return
/// makes a new line with Shift and Ctrl too; Tab leaves the editor.
///
/// Of a text that is pasted, each line loses the blanks at its ends and a pair of double
/// quotes around it; a file's address becomes its path, and the path of a file that is
/// there becomes its folder. A list file, with its "@", stays.
class PathEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit PathEdit(QWidget *parent = nullptr);

    /// The lines, letter by letter: toPlainText() would make a blank of a no-break
    /// space, which names another folder.
    QString text() const;

    /// Replaces the text by lines; the cursor stands at the start.
    void setLines(const QStringList &lines);

    /// Adds path, or several with line feeds between them, behind all lines and puts the cursor
    /// before its last character.
    void addLine(const QString &path);

    /// Whether source are files or folders of this machine.
    static bool holdsFolders(const QMimeData &source);
    /// Adds a line for each folder that has none yet: one change, and one to be undone.
    void addFolders(const QMimeData &source);

protected:
    QMimeData *createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    void keyPressEvent(QKeyEvent *event) override;
};
