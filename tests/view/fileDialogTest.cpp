#include "view/fileDialog.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/support/FileTime.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SymbolicLink.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// A folder of logs, and the program's own folder.
struct Folders {
    ScratchFolder program;
    ScratchFolder logs;
};

/// The dialog on the screen.
class Shown {
public:
    explicit Shown(const QString &start) : dialog(start)
    {
        dialog.show();
        dialog.activateWindow();
        if (!QTest::qWaitForWindowActive(&dialog, kPatienceMilliseconds))
            qFatal("the dialog is not on the screen");
    }

    QTreeView *tree() const { return dialog.findChild<QTreeView *>(text("treeFolders")); }
    QTreeView *list() const { return dialog.findChild<QTreeView *>(text("listFiles")); }
    QPlainTextEdit *preview() const { return dialog.findChild<QPlainTextEdit *>(); }
    QSplitter *splitter(const char *name) const
    {
        return dialog.findChild<QSplitter *>(QLatin1String(name));
    }
    QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return dialog.findChild<QDialogButtonBox *>()->button(which);
    }
    QFileSystemModel *folderModel() const
    {
        return static_cast<QFileSystemModel *>(tree()->model());
    }
    QFileSystemModel *fileModel() const { return static_cast<QFileSystemModel *>(list()->model()); }

    /// The list's entry of that name, once it is there.
    QModelIndex entry(const QString &name) const
    {
        QModelIndex found;
        const auto isThere = [&] {
            const QModelIndex root = list()->rootIndex();
            for (int row = 0; row < fileModel()->rowCount(root); ++row) {
                found = fileModel()->index(row, 0, root);
                if (fileModel()->fileName(found) == name)
                    return true;
            }
            return false;
        };
        if (!QTest::qWaitFor(isThere, kPatienceMilliseconds))
            qFatal("the list has no %s", qPrintable(name));
        return found;
    }
    void select(const QString &name) const { list()->setCurrentIndex(entry(name)); }
    void doubleClick(const QString &name) const
    {
        const QPoint place = list()->visualRect(entry(name)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    /// The list's files, from the top.
    QStringList logNames() const
    {
        QStringList names;
        const QModelIndex root = list()->rootIndex();
        for (int row = 0; row < fileModel()->rowCount(root); ++row) {
            const QModelIndex index = fileModel()->index(row, 0, root);
            if (!fileModel()->isDir(index))
                names.append(fileModel()->fileName(index));
        }
        return names;
    }
    /// What the widest text of a column of the list takes.
    int contentWidth(int column) const
    {
        // The tree view's own is protected.
        const QAbstractItemView *view = list();
        return view->sizeHintForColumn(column);
    }
    QString shownFolder() const { return fileModel()->filePath(list()->rootIndex()); }
    QString treeFolder() const { return folderModel()->filePath(tree()->currentIndex()); }

    fileDialog dialog;
};

/// Runs the dialog and, in it, what a person does.
bool runWith(const QString &start, QString &path, const std::function<void(fileDialog *)> &act)
{
    QTimer::singleShot(
        0, [&act] { act(static_cast<fileDialog *>(QApplication::activeModalWidget())); });
    return fileDialog::choose(start, path, nullptr);
}

QString withoutSlash(const QString &path)
{
    return path.chopped(1);
}

} // namespace

class fileDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void itHasTitleAndSizeAndNoHelpButton();
    void theFoldersStandBesideTheFilesAndThePreviewBelow();
    void theTreeShowsFoldersOnly();
    void theTreeShowsNamesOnly();
    void theStartFolderIsTheTreesCurrentEntry();
    void theStartFolderStaysInSightAmongManyOthers();
    void aStartFolderThatIsNoneLeavesTheTreeWithoutACurrentEntry_data();
    void aStartFolderThatIsNoneLeavesTheTreeWithoutACurrentEntry();
    void theListShowsFilesAndFoldersOfTheStartFolder();
    void theListHasNoDecoration();
    void theNewestFileComesFirst();
    void theListHasTheFocusAndItsNewestLogIsSelected();
    void theFirstEntryIsSelectedWhenTheListGetsTheFocus();
    void whatWasSelectedStaysSelected();
    void theListIsSortedByWhatItsHeaderIsClickedFor();
    void theDateIsShownWhole();
    void thePreviewHasColoursAndFontOfTheSettings();
    void selectingAFileShowsItsBeginning();
    void aLargeLogShowsOnlyItsFirst1024Characters();
    void selectingAFolderShowsNothing();
    void aFileThatIsGoneIsToldInThePreview();
    void aBinaryLogIsShownSomehow();
    void doubleClickingAFolderNavigates();
    void doubleClickingAFileAccepts();
    void enterOnAFolderNavigatesAndAcceptsNothing();
    void enterOnAFileAccepts();
    void enterInTheTreeShowsTheFolder();
    void clickingAFolderInTheTreeShowsIt();
    void onlyAFileCanBeAccepted();
    void linksThatLoopCanBeFollowed();
    void aFolderThatGoesAwayIsSurvived();
    void choosingGivesThePath();
    void cancellingLeavesThePath();
    void theGeometryIsWrittenAfterEveryRun_data();
    void theGeometryIsWrittenAfterEveryRun();
    void theGeometryIsRestored();
    void aSizeLargerThanTheScreenIsCut();
    void theButtonsAreOnTheScreen();
    void aSplitterStateOfAnyBytesIsSurvived();
    void aSplitterStateTurnsNoSplitter();
    void aParentThatGoesTakesTheDialogWithIt();

private:
    std::unique_ptr<Folders> m_folders;

    QString logs() const { return withoutSlash(m_folders->logs.path()); }
    QString write(const char *name, const QByteArray &bytes) const
    {
        return m_folders->logs.write(text(name), bytes);
    }
    QString iniPath() const { return m_folders->program.filePath(text("fileDialog.ini")); }
};

void fileDialogTest::init()
{
    m_folders = std::make_unique<Folders>();
    AppSettings::instance().load(m_folders->program.path());
    write("one.log", "::C:/a.txt\n      1:    2:text\n");
    write("two.log", "other");
    write("folder/three.log", "third");
}

void fileDialogTest::cleanup()
{
    m_folders.reset();
}

void fileDialogTest::itHasTitleAndSizeAndNoHelpButton()
{
    const fileDialog dialog(logs());
    QCOMPARE(dialog.windowTitle(), text("ログファイルを選択してください"));
    QCOMPARE(dialog.size(), QSize(808, 617));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void fileDialogTest::theFoldersStandBesideTheFilesAndThePreviewBelow()
{
    const Shown shown(logs());
    const QSplitter *outer = shown.splitter("splitterH");
    const QSplitter *inner = shown.splitter("splitterV");
    QCOMPARE(outer->orientation(), Qt::Vertical);
    QCOMPARE(outer->widget(0), inner);
    QCOMPARE(outer->widget(1), shown.preview());
    QCOMPARE(inner->orientation(), Qt::Horizontal);
    QCOMPARE(inner->widget(0), shown.tree());
    QCOMPARE(inner->widget(1), shown.list());
    QVERIFY(shown.preview()->isReadOnly());
}

void fileDialogTest::theTreeShowsFoldersOnly()
{
    const Shown shown(logs());
    QCOMPARE(shown.folderModel()->filter(), QDir::AllDirs | QDir::Drives | QDir::NoDotAndDotDot);
    QCOMPARE(shown.folderModel()->rootPath(), QString());
    QVERIFY(!shown.tree()->rootIndex().isValid());
    const QModelIndex start = shown.tree()->currentIndex();
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(start), 1, kPatienceMilliseconds);
    QCOMPARE(shown.folderModel()->fileName(shown.folderModel()->index(0, 0, start)),
             text("folder"));
}

void fileDialogTest::theTreeShowsNamesOnly()
{
    const fileDialog dialog(logs());
    const auto *tree = dialog.findChild<QTreeView *>(text("treeFolders"));
    QVERIFY(tree->isHeaderHidden());
    QVERIFY(!tree->isColumnHidden(0));
    for (int column = 1; column <= 3; ++column)
        QVERIFY(tree->isColumnHidden(column));
    QCOMPARE(tree->columnWidth(0), 200);
}

void fileDialogTest::theStartFolderIsTheTreesCurrentEntry()
{
    const Shown shown(logs());
    QCOMPARE(shown.treeFolder(), logs());
    QVERIFY(shown.tree()->isExpanded(shown.tree()->currentIndex()));
    const auto isInSight = [&shown] {
        const QRect row = shown.tree()->visualRect(shown.tree()->currentIndex());
        return shown.tree()->viewport()->rect().intersects(row);
    };
    QTRY_VERIFY_WITH_TIMEOUT(isInSight(), kPatienceMilliseconds);
}

void fileDialogTest::theStartFolderStaysInSightAmongManyOthers()
{
    for (int i = 0; i < 300; ++i)
        m_folders->logs.makeFolder(text("many/%1").arg(i));
    const QString start = logs() + text("/many/250");
    const Shown shown(start);
    const QModelIndex parent = shown.tree()->currentIndex().parent();
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(parent), 300, kPatienceMilliseconds);
    const auto isInSight = [&shown] {
        const QRect row = shown.tree()->visualRect(shown.tree()->currentIndex());
        return shown.tree()->viewport()->rect().contains(row.center());
    };
    QTRY_VERIFY_WITH_TIMEOUT(isInSight(), kPatienceMilliseconds);
    QCOMPARE(shown.treeFolder(), start);
    // The tree is the user's from the first touch on.
    QTest::keyClick(shown.tree(), Qt::Key_Up);
    const QPersistentModelIndex above = shown.tree()->currentIndex();
    // The view itself follows the key a moment later.
    QTest::qWait(50);
    shown.tree()->scrollToTop();
    m_folders->logs.makeFolder(text("many/0000"));
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(parent), 301, kPatienceMilliseconds);
    QTest::qWait(50);
    QVERIFY(above == shown.tree()->currentIndex());
    QVERIFY(!isInSight());
}

void fileDialogTest::aStartFolderThatIsNoneLeavesTheTreeWithoutACurrentEntry_data()
{
    QTest::addColumn<QString>("start");
    QTest::newRow("empty") << QString();
    QTest::newRow("missing") << text("/no/such/folder");
}

void fileDialogTest::aStartFolderThatIsNoneLeavesTheTreeWithoutACurrentEntry()
{
    QFETCH(QString, start);
    const Shown shown(start);
    QTest::qWait(50);
    QVERIFY(!shown.tree()->currentIndex().isValid());
    QCOMPARE(shown.dialog.currentPath(), QString());
}

void fileDialogTest::theListShowsFilesAndFoldersOfTheStartFolder()
{
    const Shown shown(logs());
    QCOMPARE(shown.fileModel()->filter(), QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot);
    QCOMPARE(shown.shownFolder(), logs());
    shown.entry(text("one.log"));
    shown.entry(text("folder"));
    QTRY_COMPARE_WITH_TIMEOUT(shown.fileModel()->rowCount(shown.list()->rootIndex()), 3,
                              kPatienceMilliseconds);
}

void fileDialogTest::theListHasNoDecoration()
{
    const Shown shown(logs());
    QVERIFY(!shown.list()->rootIsDecorated());
    QVERIFY(!shown.list()->itemsExpandable());
    QCOMPARE(shown.list()->columnWidth(0), 200);
}

void fileDialogTest::theNewestFileComesFirst()
{
    const auto age = [this](const char *name, int days) {
        FileTime::setDayOfChange(m_folders->logs.filePath(text(name)),
                                 QDate::currentDate().addDays(-days));
    };
    write("three.log", "x");
    age("one.log", 1);
    age("two.log", 3);
    age("three.log", 2);
    const Shown shown(logs());
    const QStringList newestFirst{text("one.log"), text("three.log"), text("two.log")};
    QTRY_COMPARE_WITH_TIMEOUT(shown.logNames(), newestFirst, kPatienceMilliseconds);
    // In every folder that is shown.
    age("folder/three.log", 5);
    m_folders->logs.write(text("folder/zz.log"), "x");
    shown.doubleClick(text("folder"));
    const QStringList inFolder{text("zz.log"), text("three.log")};
    QTRY_COMPARE_WITH_TIMEOUT(shown.logNames(), inFolder, kPatienceMilliseconds);
}

void fileDialogTest::theListHasTheFocusAndItsNewestLogIsSelected()
{
    // The folder is of today.
    const auto makeNewer = [](const QString &path, int days) {
        FileTime::setDayOfChange(path, QDate::currentDate().addDays(days));
    };
    makeNewer(m_folders->logs.filePath(text("one.log")), 1);
    makeNewer(m_folders->logs.filePath(text("two.log")), 2);
    const Shown shown(logs());
    QVERIFY(shown.list()->hasFocus());
    QCOMPARE(shown.treeFolder(), logs());
    QTRY_COMPARE_WITH_TIMEOUT(shown.dialog.currentPath(), m_folders->logs.filePath(text("two.log")),
                              kPatienceMilliseconds);
    QVERIFY(shown.list()->selectionModel()->isSelected(shown.list()->currentIndex()));
    QCOMPARE(shown.preview()->toPlainText(), text("other"));
    // One that comes later is newer.
    const QString newest = write("three.log", "newest");
    makeNewer(newest, 3);
    QTRY_COMPARE_WITH_TIMEOUT(shown.dialog.currentPath(), newest, kPatienceMilliseconds);
    // From here on the choice is the user's.
    QTest::keyClick(shown.list(), Qt::Key_Down);
    QCOMPARE(shown.dialog.currentPath(), m_folders->logs.filePath(text("two.log")));
    QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    QTest::keyClick(shown.list(), Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog.currentPath(), m_folders->logs.filePath(text("two.log")));
}

void fileDialogTest::theFirstEntryIsSelectedWhenTheListGetsTheFocus()
{
    const Shown shown(logs());
    shown.entry(text("folder"));
    const QModelIndex start = shown.tree()->currentIndex();
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(start), 1, kPatienceMilliseconds);
    QTest::keyClick(shown.list(), Qt::Key_Backtab);
    QVERIFY(shown.tree()->hasFocus());
    QTest::keyClick(shown.tree(), Qt::Key_Down);
    QTest::keyClick(shown.tree(), Qt::Key_Return);
    QCOMPARE(shown.shownFolder(), logs() + text("/folder"));
    shown.entry(text("three.log"));
    QVERIFY(!shown.list()->selectionModel()->hasSelection());
    QCOMPARE(shown.dialog.currentPath(), QString());
    QTest::keyClick(shown.tree(), Qt::Key_Tab);
    QVERIFY(shown.list()->hasFocus());
    QCOMPARE(shown.dialog.currentPath(), m_folders->logs.filePath(text("folder/three.log")));
    QVERIFY(shown.button(QDialogButtonBox::Ok)->isEnabled());
}

void fileDialogTest::whatWasSelectedStaysSelected()
{
    const Shown shown(logs());
    shown.entry(text("two.log"));
    QTest::keyClick(shown.list(), Qt::Key_End);
    const QString chosen = shown.dialog.currentPath();
    write("three.log", "newest");
    shown.entry(text("three.log"));
    QTest::qWait(50);
    QTest::keyClick(shown.list(), Qt::Key_Backtab);
    QTest::keyClick(shown.tree(), Qt::Key_Tab);
    QVERIFY(shown.list()->hasFocus());
    QCOMPARE(shown.dialog.currentPath(), chosen);
}

void fileDialogTest::theListIsSortedByWhatItsHeaderIsClickedFor()
{
    write("three.log", "x");
    const Shown shown(logs());
    shown.entry(text("three.log"));
    const QHeaderView *header = shown.list()->header();
    const QPoint name(header->sectionViewportPosition(0) + 20, header->height() / 2);
    const auto click = [&] {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, name);
    };
    QStringList names{text("one.log"), text("three.log"), text("two.log")};
    click();
    if (header->sortIndicatorOrder() == Qt::DescendingOrder)
        click();
    QTRY_COMPARE_WITH_TIMEOUT(shown.logNames(), names, kPatienceMilliseconds);
    click();
    std::reverse(names.begin(), names.end());
    QTRY_COMPARE_WITH_TIMEOUT(shown.logNames(), names, kPatienceMilliseconds);
}

void fileDialogTest::theDateIsShownWhole()
{
    const QString name = text("20241231-235959.log");
    const QString path = m_folders->logs.write(name, "x");
    FileTime::setDayOfChange(path, QDate(2024, 12, 31));
    const Shown shown(logs());
    shown.entry(name);
    // The first size, or what the screen has room for.
    QVERIFY(shown.dialog.width() <= 808);
    const QHeaderView *header = shown.list()->header();
    QTRY_VERIFY_WITH_TIMEOUT(header->sectionSize(3) >= shown.contentWidth(3),
                             kPatienceMilliseconds);
    QVERIFY(header->sectionViewportPosition(3) + header->sectionSize(3)
            <= shown.list()->viewport()->width());
}

void fileDialogTest::thePreviewHasColoursAndFontOfTheSettings()
{
    AppSettings &settings = AppSettings::instance();
    settings.forecolor = QColor(1, 2, 3);
    settings.backcolor = QColor(4, 5, 6);
    settings.hlforecolor = QColor(7, 8, 9);
    settings.hlbackcolor = QColor(10, 11, 12);
    settings.grepFont.setPointSize(17);
    const Shown shown(logs());
    QCOMPARE(shown.preview()->styleSheet(),
             text("QPlainTextEdit { color: #010203 ; background-color: #040506 ; "
                  "selection-color: #070809; selection-background-color: #0a0b0c;}"));
    QCOMPARE(shown.preview()->font().pointSize(), 17);
    QCOMPARE(shown.preview()->font().family(), settings.grepFont.family());
}

void fileDialogTest::selectingAFileShowsItsBeginning()
{
    const Shown shown(logs());
    shown.select(text("one.log"));
    QCOMPARE(shown.preview()->toPlainText(), text("::C:/a.txt\n      1:    2:text\n"));
    shown.select(text("two.log"));
    QCOMPARE(shown.preview()->toPlainText(), text("other"));
}

void fileDialogTest::aLargeLogShowsOnlyItsFirst1024Characters()
{
    const QString path = write("large.log", text("あ").repeated(3000).toUtf8());
    QVERIFY(QFile::resize(path, qint64(200) * 1024 * 1024));
    const Shown shown(logs());
    shown.select(text("large.log"));
    QCOMPARE(shown.preview()->toPlainText(), text("あ").repeated(1024));
}

void fileDialogTest::selectingAFolderShowsNothing()
{
    const Shown shown(logs());
    shown.select(text("one.log"));
    shown.select(text("folder"));
    QCOMPARE(shown.preview()->toPlainText(), QString());
}

void fileDialogTest::aFileThatIsGoneIsToldInThePreview()
{
    const Shown shown(logs());
    const QModelIndex entry = shown.entry(text("two.log"));
    // Not the one that may be selected by itself.
    shown.select(text("one.log"));
    QVERIFY(QFile::remove(m_folders->logs.filePath(text("two.log"))));
    shown.list()->setCurrentIndex(entry);
    QCOMPARE(shown.preview()->toPlainText(),
             m_folders->logs.filePath(text("two.log")) + text(" プレビューできません。"));
}

void fileDialogTest::aBinaryLogIsShownSomehow()
{
    std::mt19937 random(3);
    QByteArray bytes("\xef\xb7\x90\xef\xb7\x91\xe2\x80\xa9\0\r\n", 12);
    while (bytes.size() < 4000)
        bytes += static_cast<char>(random());
    write("binary.log", bytes);
    const Shown shown(logs());
    shown.select(text("binary.log"));
    QVERIFY(!shown.preview()->toPlainText().isEmpty());
    QVERIFY(!shown.preview()->grab().isNull());
}

void fileDialogTest::doubleClickingAFolderNavigates()
{
    const Shown shown(logs());
    shown.doubleClick(text("folder"));
    QCOMPARE(shown.shownFolder(), logs() + text("/folder"));
    QCOMPARE(shown.treeFolder(), logs() + text("/folder"));
    QVERIFY(shown.dialog.isVisible());
    // The folder that is shown now is no longer an entry that could be chosen.
    QCOMPARE(shown.dialog.currentPath(), QString());
    shown.select(text("three.log"));
    QCOMPARE(shown.preview()->toPlainText(), text("third"));
}

void fileDialogTest::doubleClickingAFileAccepts()
{
    const Shown shown(logs());
    QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    shown.doubleClick(text("two.log"));
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog.currentPath(), m_folders->logs.filePath(text("two.log")));
}

void fileDialogTest::enterOnAFolderNavigatesAndAcceptsNothing()
{
    const Shown shown(logs());
    shown.select(text("folder"));
    QTest::keyClick(shown.list(), Qt::Key_Return);
    QVERIFY(shown.dialog.isVisible());
    QCOMPARE(shown.shownFolder(), logs() + text("/folder"));
}

void fileDialogTest::enterOnAFileAccepts()
{
    const Shown shown(logs());
    QSignalSpy accepted(&shown.dialog, &QDialog::accepted);
    shown.select(text("one.log"));
    QTest::keyClick(shown.list(), Qt::Key_Enter);
    QCOMPARE(accepted.count(), 1);
}

void fileDialogTest::enterInTheTreeShowsTheFolder()
{
    const Shown shown(logs());
    shown.select(text("one.log"));
    const QModelIndex start = shown.tree()->currentIndex();
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(start), 1, kPatienceMilliseconds);
    shown.tree()->setCurrentIndex(shown.folderModel()->index(0, 0, start));
    QTest::keyClick(shown.tree(), Qt::Key_Return);
    QVERIFY(shown.dialog.isVisible());
    QCOMPARE(shown.shownFolder(), logs() + text("/folder"));
}

void fileDialogTest::clickingAFolderInTheTreeShowsIt()
{
    const Shown shown(logs());
    shown.select(text("one.log"));
    const QModelIndex start = shown.tree()->currentIndex();
    QTRY_COMPARE_WITH_TIMEOUT(shown.folderModel()->rowCount(start), 1, kPatienceMilliseconds);
    const QModelIndex folder = shown.folderModel()->index(0, 0, start);
    shown.tree()->scrollTo(folder);
    QTest::mouseClick(shown.tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      shown.tree()->visualRect(folder).center());
    QCOMPARE(shown.shownFolder(), logs() + text("/folder"));
    QCOMPARE(shown.preview()->toPlainText(), QString());
}

void fileDialogTest::onlyAFileCanBeAccepted()
{
    const fileDialog unopened(logs());
    QVERIFY(!unopened.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled());
    QCOMPARE(unopened.findChild<QPlainTextEdit *>()->toPlainText(), QString());
    const Shown shown(logs());
    const QPushButton *button = shown.button(QDialogButtonBox::Ok);
    shown.select(text("one.log"));
    QVERIFY(button->isEnabled());
    shown.select(text("folder"));
    QVERIFY(!button->isEnabled());
}

void fileDialogTest::linksThatLoopCanBeFollowed()
{
    if (!makeLink(logs(), m_folders->logs.filePath(text("loop"))))
        QSKIP("no symbolic links here");
    const Shown shown(logs());
    for (int times = 0; times < 10; ++times)
        shown.doubleClick(text("loop"));
    QVERIFY(shown.dialog.isVisible());
    shown.select(text("one.log"));
    QCOMPARE(shown.preview()->toPlainText(), text("::C:/a.txt\n      1:    2:text\n"));
}

void fileDialogTest::aFolderThatGoesAwayIsSurvived()
{
    Shown shown(logs());
    shown.doubleClick(text("folder"));
    shown.select(text("three.log"));
    // The thread that lists it may have it open just now.
    QTRY_VERIFY_WITH_TIMEOUT(QDir(logs() + text("/folder")).removeRecursively(),
                             kPatienceMilliseconds);
    QTest::qWait(100);
    QVERIFY(!shown.dialog.grab().isNull());
    shown.list()->setCurrentIndex(QModelIndex());
    QCOMPARE(shown.preview()->toPlainText(), QString());
}

void fileDialogTest::choosingGivesThePath()
{
    QString path = text("before");
    const bool accepted = runWith(logs(), path, [this](fileDialog *dialog) {
        const auto *list = dialog->findChild<QTreeView *>(text("listFiles"));
        auto *model = static_cast<QFileSystemModel *>(list->model());
        const QModelIndex index = model->index(m_folders->logs.filePath(text("two.log")));
        list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::SelectCurrent);
        dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
    });
    QVERIFY(accepted);
    QCOMPARE(path, m_folders->logs.filePath(text("two.log")));
}

void fileDialogTest::cancellingLeavesThePath()
{
    QString path = text("before");
    const bool accepted = runWith(logs(), path, [](fileDialog *dialog) {
        dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
    });
    QVERIFY(!accepted);
    QCOMPARE(path, text("before"));
}

void fileDialogTest::theGeometryIsWrittenAfterEveryRun_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted") << true;
    QTest::newRow("rejected") << false;
}

void fileDialogTest::theGeometryIsWrittenAfterEveryRun()
{
    QFETCH(bool, accepted);
    QByteArray inner;
    QByteArray outer;
    QPoint position;
    QString path;
    const bool result = runWith(logs(), path, [&](fileDialog *dialog) {
        dialog->resize(700, 500);
        QCoreApplication::processEvents();
        auto *splitterV = dialog->findChild<QSplitter *>(text("splitterV"));
        auto *splitterH = dialog->findChild<QSplitter *>(text("splitterH"));
        splitterV->setSizes({150, 500});
        splitterH->setSizes({100, 300});
        inner = splitterV->saveState();
        outer = splitterH->saveState();
        position = dialog->pos();
        dialog->done(accepted ? QDialog::Accepted : QDialog::Rejected);
    });
    QCOMPARE(result, accepted);
    const QSettings settings(iniPath(), QSettings::IniFormat);
    QCOMPARE(settings.value(text("pos")).toPoint(), position);
    QCOMPARE(settings.value(text("size")).toSize(), QSize(700, 500));
    QCOMPARE(settings.value(text("splitterV")).toByteArray(), inner);
    QCOMPARE(settings.value(text("splitterH")).toByteArray(), outer);
}

void fileDialogTest::theGeometryIsRestored()
{
    QList<int> inner;
    QList<int> outer;
    {
        const Shown shown(logs());
        shown.splitter("splitterV")->setSizes({250, 400});
        shown.splitter("splitterH")->setSizes({150, 300});
        inner = shown.splitter("splitterV")->sizes();
        outer = shown.splitter("splitterH")->sizes();
        shown.dialog.saveGeometryFile();
    }
    const Shown shown(logs());
    QCOMPARE(shown.splitter("splitterV")->sizes(), inner);
    QCOMPARE(shown.splitter("splitterH")->sizes(), outer);

    m_folders->program.write(text("fileDialog.ini"), "[General]\nsize=@Size(640 480)\n");
    QCOMPARE(fileDialog(logs()).size(), QSize(640, 480));
}

void fileDialogTest::aSizeLargerThanTheScreenIsCut()
{
    m_folders->program.write(text("fileDialog.ini"), "[General]\nsize=@Size(30000 500)\n");
    const fileDialog dialog(logs());
    QVERIFY(dialog.width() < 30000);
    QCOMPARE(dialog.height(), 500);
}

void fileDialogTest::theButtonsAreOnTheScreen()
{
    const QSize desktop = QGuiApplication::primaryScreen()->availableSize();
    m_folders->program.write(text("fileDialog.ini"),
                             QStringLiteral("[General]\nsize=@Size(%1 %2)\n")
                                 .arg(desktop.width())
                                 .arg(desktop.height())
                                 .toUtf8());
    const Shown shown(logs());
    // The title bar is on it too.
    QVERIFY(shown.dialog.height() < desktop.height());
    QVERIFY(shown.dialog.width() <= desktop.width());
}

void fileDialogTest::aSplitterStateOfAnyBytesIsSurvived()
{
    const QByteArray good = Shown(logs()).splitter("splitterV")->saveState();
    std::mt19937 random(11);
    for (int i = 0; i < 20; ++i) {
        QByteArray state = good;
        for (int changes = 0; changes < 5; ++changes)
            state[static_cast<int>(random() % static_cast<quint32>(state.size()))] =
                static_cast<char>(random());
        if (i % 4 == 0)
            state.truncate(static_cast<int>(random() % static_cast<quint32>(state.size())));
        if (i == 1) {
            // A number of parts that no memory holds.
            state = good;
            state[8] = state[9] = state[10] = state[11] = '\xff';
        }
        {
            QSettings settings(iniPath(), QSettings::IniFormat);
            settings.setValue(text("splitterV"), state);
            settings.setValue(text("splitterH"), state);
        }
        fileDialog dialog(logs());
        QVERIFY(!dialog.grab().isNull());
    }
}

void fileDialogTest::aSplitterStateTurnsNoSplitter()
{
    QByteArray inner;
    {
        const Shown shown(logs());
        inner = shown.splitter("splitterV")->saveState();
    }
    {
        QSettings settings(iniPath(), QSettings::IniFormat);
        settings.setValue(text("splitterH"), inner);
    }
    const Shown shown(logs());
    QCOMPARE(shown.splitter("splitterH")->orientation(), Qt::Vertical);
}

void fileDialogTest::aParentThatGoesTakesTheDialogWithIt()
{
    auto *parent = new QWidget;
    parent->show();
    QTimer::singleShot(0, [parent] { delete parent; });
    QString path = text("before");
    QVERIFY(!fileDialog::choose(logs(), path, parent));
    QCOMPARE(path, text("before"));
}

QTEST_MAIN(fileDialogTest)
#include "fileDialogTest.moc"
