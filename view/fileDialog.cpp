#include "view/fileDialog.h"

#include "settings/AppSettings.h"
#include "settings/ApplicationDirectory.h"
#include "settings/ShownFont.h"
#include "view/LogChooserFile.h"
#include "view/LogPreview.h"

#include "ui_fileDialog.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShowEvent>
#include <QStyle>

namespace {

constexpr int kNameWidth = 200;
// Of the toolkit's file model.
constexpr int kDateColumn = 3;

QString programDirectory()
{
    const QString &loaded = AppSettings::instance().applicationDirectory();
    return loaded.isEmpty() ? ApplicationDirectory::path() : loaded;
}

/// Only a state of as many parts as there are: the toolkit takes memory for
/// whatever number stands in it. Everything else a state can hold is the form's.
void restoreSplitter(QSplitter &splitter, const QByteArray &state)
{
    // Marker, version and number of parts, each of 32 bits.
    constexpr int kHeaderBytes = 12;
    const QByteArray own = splitter.saveState();
    if (state.size() != own.size() || state.left(kHeaderBytes) != own.left(kHeaderBytes))
        return;
    const Qt::Orientation orientation = splitter.orientation();
    const int handleWidth = splitter.handleWidth();
    splitter.restoreState(state);
    splitter.setOrientation(orientation);
    splitter.setHandleWidth(handleWidth);
    splitter.setChildrenCollapsible(true);
    splitter.setOpaqueResize(true);
}

} // namespace

bool fileDialog::choose(const QString &startDirectory, QString &path, QWidget *parent)
{
    // A parent that goes while the dialog runs takes the dialog with it.
    const QPointer<fileDialog> dialog = new fileDialog(startDirectory, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    if (dialog)
        dialog->saveGeometryFile();
    if (accepted)
        path = dialog->currentPath();
    delete dialog.data();
    return accepted;
}

fileDialog::fileDialog(const QString &startDirectory, QWidget *parent)
    : QDialog(parent)
    , m_directory(programDirectory())
    , m_startDirectory(startDirectory)
    , m_ui(std::make_unique<Ui::fileDialog>())
    , m_folderModel(new QFileSystemModel(this))
    , m_fileModel(new QFileSystemModel(this))
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setUpFolders();
    setUpFiles();
    restoreGeometryFile();
    setUpPreview();
}

fileDialog::~fileDialog() = default;

void fileDialog::setUpFolders()
{
    m_folderModel->setRootPath(QString());
    m_folderModel->setFilter(QDir::AllDirs | QDir::Drives | QDir::NoDotAndDotDot);
    QTreeView *tree = m_ui->treeFolders;
    tree->setModel(m_folderModel);
    tree->setHeaderHidden(true);
    for (int column = 1; column < m_folderModel->columnCount(); ++column)
        tree->hideColumn(column);
    // Wider where there is room: a deep folder's name begins far to the right.
    tree->header()->setMinimumSectionSize(kNameWidth);
    tree->setColumnWidth(0, kNameWidth);
    tree->installEventFilter(this);
    connect(tree, &QTreeView::clicked, this, &fileDialog::activateFolder);
    connect(tree, &QTreeView::activated, this, &fileDialog::activateFolder);

    const QModelIndex start = m_folderModel->index(m_startDirectory);
    if (!start.isValid()) {
        // A view that gets the focus without a current entry takes its first.
        m_ui->buttonBox->button(QDialogButtonBox::Cancel)->setFocus();
        return;
    }
    // What is chosen stands in the list.
    m_ui->listFiles->setFocus();
    tree->setCurrentIndex(start);
    tree->expand(start);
    tree->scrollTo(start);
    keepStartInSight();
}

/// The folders on the way to the start folder are read and sorted one after the
/// other, in a thread of the model's, and each may push the start folder out of
/// sight. Until the user touches the tree it is brought back.
void fileDialog::keepStartInSight()
{
    QTreeView *tree = m_ui->treeFolders;
    m_scrollToStart.setSingleShot(true);
    connect(&m_scrollToStart, &QTimer::timeout, tree,
            [tree] { tree->scrollTo(tree->currentIndex(), QAbstractItemView::PositionAtCenter); });
    const auto onChange = [this] {
        if (m_startInSight)
            m_scrollToStart.start();
    };
    connect(m_folderModel, &QFileSystemModel::layoutChanged, this, onChange);
    connect(m_folderModel, &QFileSystemModel::rowsInserted, this, onChange);
    connect(tree->verticalScrollBar(), &QScrollBar::actionTriggered, this,
            [this] { m_startInSight = false; });
    tree->viewport()->installEventFilter(this);
    m_startInSight = true;
}

void fileDialog::setUpFiles()
{
    m_fileModel->setFilter(QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot);
    QTreeView *list = m_ui->listFiles;
    list->setModel(m_fileModel);
    QModelIndex root = m_fileModel->setRootPath(m_startDirectory);
    if (!root.isValid())
        root = m_fileModel->setRootPath(QString());
    list->setRootIndex(root);
    list->setColumnWidth(0, kNameWidth);
    // The date tells one search from another: it is never cut, nor scrolled away
    // by a size or a type.
    for (int column = 1; column <= kDateColumn; ++column)
        list->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    list->header()->moveSection(kDateColumn, 1);
    list->sortByColumn(kDateColumn, Qt::DescendingOrder);
    list->installEventFilter(this);
    connect(list, &QTreeView::activated, this, &fileDialog::activateEntry);
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &fileDialog::currentChanged);
    currentChanged(QModelIndex(), QModelIndex());
    // The files come, and are sorted, a moment after the folder.
    connect(m_fileModel, &QFileSystemModel::layoutChanged, this, &fileDialog::selectFirstEntry);
    connect(m_fileModel, &QFileSystemModel::rowsInserted, this, &fileDialog::selectFirstEntry);
    connect(m_fileModel, &QFileSystemModel::directoryLoaded, this, &fileDialog::selectFirstEntry);
}

void fileDialog::selectFirstEntry()
{
    QTreeView *list = m_ui->listFiles;
    const QItemSelectionModel *selection = list->selectionModel();
    if (selection->hasSelection() && list->currentIndex() != m_firstEntry)
        m_selectsFirst = false;
    const QModelIndex first = m_fileModel->index(0, 0, list->rootIndex());
    if (!m_selectsFirst || !first.isValid() || selection->isSelected(first))
        return;
    m_firstEntry = first;
    list->setCurrentIndex(first);
}

void fileDialog::setUpPreview()
{
    const AppSettings &settings = AppSettings::instance();
    QPlainTextEdit *preview = m_ui->txtPreview;
    preview->setStyleSheet(
        QStringLiteral("QPlainTextEdit { color: %1 ; background-color: %2 ; selection-color: %3; "
                       "selection-background-color: %4;}")
            .arg(settings.forecolor.name(), settings.backcolor.name(), settings.hlforecolor.name(),
                 settings.hlbackcolor.name()));
    // A log looks as it does in the result view.
    preview->setFont(ShownFont::bounded(settings.grepFont));
}

void fileDialog::restoreGeometryFile()
{
    const LogChooserFile::Geometry geometry = LogChooserFile(m_directory).read();
    if (geometry.size.isValid()) {
        // The file may name a size that no memory holds.
        const QSize most = screen()->virtualSize().expandedTo(size());
        resize(geometry.size.boundedTo(most));
    }
    restoreSplitter(*m_ui->splitterV, geometry.splitterV);
    restoreSplitter(*m_ui->splitterH, geometry.splitterH);
}

/// On a small screen, as one with large pixels, the buttons would be below its edge.
void fileDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        const QSize frame(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
        resize(size().boundedTo(screen()->availableSize() - frame));
    }
    QDialog::showEvent(event);
}

void fileDialog::saveGeometryFile() const
{
    LogChooserFile(m_directory)
        .save({pos(), size(), m_ui->splitterV->saveState(), m_ui->splitterH->saveState()});
}

QString fileDialog::currentPath() const
{
    const QModelIndex index = m_ui->listFiles->currentIndex();
    return index.isValid() ? m_fileModel->fileInfo(index).absoluteFilePath() : QString();
}

void fileDialog::currentChanged(const QModelIndex &current, const QModelIndex &)
{
    const bool isFile = current.isValid() && !m_fileModel->isDir(current);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(isFile);
    m_ui->txtPreview->setPlainText(isFile ? LogPreview::textOf(m_fileModel->filePath(current))
                                          : QString());
}

void fileDialog::showFolder(const QString &path)
{
    QTreeView *list = m_ui->listFiles;
    list->setRootIndex(m_fileModel->setRootPath(path));
    // Otherwise the folder, or a file of the one before, would stay the current
    // entry, unseen.
    list->selectionModel()->clear();
    m_selectsFirst = false;
}

void fileDialog::activateEntry(const QModelIndex &index)
{
    if (!m_fileModel->isDir(index)) {
        accept();
        return;
    }
    const QString path = m_fileModel->filePath(index);
    m_ui->treeFolders->setCurrentIndex(m_folderModel->index(path));
    showFolder(path);
}

void fileDialog::activateFolder(const QModelIndex &index)
{
    showFolder(m_folderModel->filePath(index));
}

bool fileDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel
        || event->type() == QEvent::KeyPress) {
        m_startInSight = false;
        m_selectsFirst = false;
    }
    if (event->type() == QEvent::FocusIn && watched == m_ui->listFiles
        && !m_ui->listFiles->selectionModel()->hasSelection()) {
        m_selectsFirst = true;
        selectFirstEntry();
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *keyEvent = static_cast<QKeyEvent *>(event);
        const bool isEnter = keyEvent->key() == Qt::Key_Return || keyEvent->key() == Qt::Key_Enter;
        auto *view = qobject_cast<QAbstractItemView *>(watched);
        if (isEnter && view) {
            // The views pass the key on after it has opened an entry, and the OK
            // button would take it too.
            if (view->currentIndex().isValid())
                emit view->activated(view->currentIndex());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
