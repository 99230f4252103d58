#pragma once

#include "settings/dialogs/InputHistoryFile.h"

#include <QDialog>
#include <QPointer>

#include <memory>

QT_BEGIN_NAMESPACE
class QKeyEvent;
class QModelIndex;
namespace Ui {
class InputFolderDialog;
}
QT_END_NAMESPACE

class AssistWindow;
class InputTableModel;

/// Edits one text with the help of earlier ones: a field, and below it the
/// history of its purpose, filtered by the text left of the cursor. The history
/// is kept in "input" + purpose + ".ini".
class InputFolderDialog : public QDialog {
    Q_OBJECT

public slots:
    void onAssistClose();
    void onCurrentChanged(const QModelIndex &current, const QModelIndex &previous);
    void on_okButton_accepted();
    void on_tableView_doubleClicked(const QModelIndex &index);
    /// Chooses a folder, in spite of its name.
    void on_btnClear_clicked();
    void on_btnDel_clicked();
    void on_chkInstr_clicked();
    void on_chkCase_clicked();
    void on_btnUp_clicked();
    void on_btnDown_clicked();
    void on_lineEdit_textChanged(const QString &arg1);
    void on_btnHelp_clicked();

public:
    /// The purpose whose history is the keyword history of AppSettings.
    static const QString kKeywordPurpose;

    /// Runs the dialog with text in its field. True when it was accepted: text is
    /// then what was entered, with "/" for every "\", and the history file is
    /// saved; nobody is told when that fails. Otherwise neither text nor the file
    /// changes. directory ends in "/".
    static bool edit(QWidget *parent, QString &text, const QString &title, const QString &purpose,
                     const QString &directory);

    /// Reads the history file; text is what the field begins with.
    InputFolderDialog(const QString &text, const QString &title, const QString &purpose,
                      const QString &directory, QWidget *parent = nullptr);
    ~InputFolderDialog() override;

    /// What an accepted dialog leaves: learns the text, unless it was accepted
    /// with Shift+Enter, saves the history file and returns the text.
    QString finish();

    void setVisible(bool visible) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void loadHistory();
    void setUpTable();
    void applyFont();
    void applySize();
    void startWith(const QString &text);
    bool handleFieldKey(QKeyEvent &event);
    void navigate(QKeyEvent &event);
    void filterRows();
    void resetCurrentRow();
    void showAllRows();
    void makeRowCurrent(int row);
    void showRowInField(int row);
    void sendToField(int key);
    /// Index in the history of the current row's text, or -1.
    int currentEntry() const;
    void learn(const QString &text);

    std::unique_ptr<Ui::InputFolderDialog> m_ui;
    QString m_directory;
    QString m_helpName;
    InputHistoryFile m_file;
    InputHistoryFile::Content m_content;
    /// The history is that of the keywords, see kKeywordPurpose.
    const bool m_keywordMode;
    bool m_cursorPlaced = false;
    bool m_navigationStarted = false;
    bool m_keepOutOfHistory = false;
    /// The dialog itself changes the field or the rows: no filtering meanwhile.
    bool m_programmaticChange = false;
    // Shows m_content.history, so it goes first.
    std::unique_ptr<InputTableModel> m_model;
    QPointer<AssistWindow> m_help;
};
