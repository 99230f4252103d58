#pragma once

#include <QDialog>
#include <QPersistentModelIndex>
#include <QString>
#include <QTimer>

#include <memory>

QT_BEGIN_NAMESPACE
class QFileSystemModel;
class QModelIndex;
class QSplitter;
namespace Ui {
class fileDialog;
}
QT_END_NAMESPACE

/// Chooses a saved result log: folders on the left, the files of the chosen one
/// on the right, the one changed last first, and below them the beginning of the selected file.
///
/// The list has the focus. When there is nothing selected in it then, its first entry
/// is: the log of the last search, as a rule.
///
/// Size and splitters are those of the last run (see LogChooserFile), whether
/// that was accepted or not.
class fileDialog : public QDialog {
    Q_OBJECT

public slots:
    /// Shows what the list's entry has in it. Only a file can be accepted.
    void currentChanged(const QModelIndex &current, const QModelIndex &previous);

public:
    /// Runs the dialog. True when it was accepted: path is then the absolute path
    /// of the file that was chosen. Otherwise path stays.
    static bool choose(const QString &startDirectory, QString &path, QWidget *parent);

    /// A startDirectory that is none leaves the tree without a current entry.
    explicit fileDialog(const QString &startDirectory, QWidget *parent = nullptr);
    ~fileDialog() override;

    /// Absolute path of the list's current entry; empty without one.
    QString currentPath() const;

    void saveGeometryFile() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void setUpFolders();
    void keepStartInSight();
    void setUpFiles();
    void setUpPreview();
    void restoreGeometryFile();
    void showFolder(const QString &path);
    void activateEntry(const QModelIndex &index);
    void activateFolder(const QModelIndex &index);
    void selectFirstEntry();

    /// The program's, with a "/" at its end: "fileDialog.ini" lies there.
    const QString m_directory;
    const QString m_startDirectory;
    std::unique_ptr<Ui::fileDialog> m_ui;
    // Owned by the dialog, as its children.
    QFileSystemModel *m_folderModel = nullptr;
    QFileSystemModel *m_fileModel = nullptr;
    /// Nobody has touched the tree yet.
    bool m_startInSight = false;
    QTimer m_scrollToStart;
    /// Nobody has chosen an entry of the list yet: the first one is selected, also when it
    /// is still to come or another one takes its place.
    bool m_selectsFirst = false;
    QPersistentModelIndex m_firstEntry; // the one that was selected by itself
};
