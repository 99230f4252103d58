#include "settings/dialogs/InputFolderDialog.h"

#include "icon/Icons.h"
#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/AssistWindow.h"
#include "settings/dialogs/TableView.h"
#include "tests/settings/dialogs/InputFolderDialogFixture.h"
#include "tests/support/AnsweringPrompt.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace InputFolderDialogFixture;

namespace {

class RecordedAssist : public AssistWindow {
public:
    using AssistWindow::AssistWindow;
};

} // namespace

class InputFolderDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void theSlotsAreDeclaredInTheirOrder();
    void everyWidgetHasItsText();
    void theButtonsAreNamedForThoseWhoDoNotSeeTheIcons();
    void theButtonsShowTheirIcons_data();
    void theButtonsShowTheirIcons();
    void theTitleIsTheGivenOne();
    void theWindowHasASizeGripAndNoHelpButton();
    void theTableShowsWholeSingleRows();
    void tabVisitsTheFormFromTopToBottom();

    void theDialogIsNeverSmallerThanItsMinimum();
    void theStoredSizeIsTakenUp();
    void aStoredSizeBeyondTheScreenIsCut();
    void nothingIsCutWithALargeFont();
    void theFontOfTheFileIsUsedEverywhere();
    void withoutAFontInTheFileTheInputFontIsUsed();
    void rowsAreAsHighAsALineAndFour();

    void theGivenTextDoesNotFilter();
    void theMovingButtonsAreDisabledAtFirst();
    void theCursorStartsAtTheEnd();
    void theCursorStartsAtTheStartWhenItIsNotToMove();
    void theFieldHasTheFocus();

    void escapeRejects();
    void returnAccepts_data();
    void returnAccepts();
    void theOkButtonAccepts();
    void returnInTheTableAccepts();
    void theReturnOfAConversionDoesNotAccept();

    void theFolderButtonPutsAFolderInTheField();
    void theFolderChooserStartsAtTheField();
    void theFolderChooserStartsAtTheHistorysFolderForAnEmptyField();
    void aCancelledFolderChooserChangesNothing();
    void aChosenRootGetsNoSecondSlash();

    void helpIsMadeFromTheTitle();
    void f1OpensAndClosesTheHelp();
    void theHelpClosesWhenItAsksTo();
    void theHelpGoesWithTheDialog();
    void withoutHelpNothingOpens();
    void theHelpOfTheSearchPathIsShipped();

    void anAcceptedTextIsReturnedLearnedAndSaved();
    void backslashesBecomeSlashes();
    void shiftReturnKeepsTheTextOutOfTheHistory_data();
    void shiftReturnKeepsTheTextOutOfTheHistory();
    void aBlankTextIsAcceptedButNotLearned();
    void learningSetsTheLearnFlag();
    void theHistoryKeepsItsMostEntries();
    void aRejectedDialogChangesNothing();
    void theSizeAndTheCursorBoxAreSaved();
    void aParentThatGoesTakesTheDialogWithIt();
};

void InputFolderDialogTest::initTestCase()
{
    AppSettings::instance().inputFont = QFont(QStringLiteral("DejaVu Sans"), 9);
}

void InputFolderDialogTest::cleanup()
{
    AssistWindow::setFactory({});
    AppSettings::instance().keywordHistory.reset();
}

void InputFolderDialogTest::theSlotsAreDeclaredInTheirOrder()
{
    const QMetaObject &meta = InputFolderDialog::staticMetaObject;
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(meta.method(i).methodSignature());
    const QList<QByteArray> expected{"onAssistClose()",
                                     "onCurrentChanged(QModelIndex,QModelIndex)",
                                     "on_okButton_accepted()",
                                     "on_tableView_doubleClicked(QModelIndex)",
                                     "on_btnClear_clicked()",
                                     "on_btnDel_clicked()",
                                     "on_chkInstr_clicked()",
                                     "on_chkCase_clicked()",
                                     "on_btnUp_clicked()",
                                     "on_btnDown_clicked()",
                                     "on_lineEdit_textChanged(QString)",
                                     "on_btnHelp_clicked()"};
    QCOMPARE(names, expected);
}

void InputFolderDialogTest::everyWidgetHasItsText()
{
    const Shown shown;
    QCOMPARE(shown.child<QLabel>("label")->text(), QStringLiteral(" ESC:キャンセル Enter：決定"));
    QCOMPARE(shown.box("chkCursorLast")->text(), QStringLiteral("カーソル右端へ"));
    QCOMPARE(shown.button("btnHelp")->shortcut(), QKeySequence(Qt::Key_F1));
    QCOMPARE(shown.button("btnClear")->toolTip(), QStringLiteral("Field clear"));
    QCOMPARE(shown.box("chkCase")->text(), QStringLiteral("大小同一視"));
    QCOMPARE(shown.box("chkCase")->statusTip(), QStringLiteral("大文字／小文字を同一視します"));
    QCOMPARE(shown.box("chkInstr")->text(), QStringLiteral("含むを絞込対象"));
    QCOMPARE(shown.box("chkInstr")->statusTip(),
             QStringLiteral("絞り込み表示時に入力した文字が含むまれる場合も対象となります"));
    QCOMPARE(shown.button("btnUp")->toolTip(), QStringLiteral("up history"));
    QCOMPARE(shown.button("btnDown")->toolTip(), QStringLiteral("down history"));
    QCOMPARE(shown.button("btnDel")->toolTip(), QStringLiteral("remove one history"));
}

void InputFolderDialogTest::theButtonsShowTheirIcons_data()
{
    QTest::addColumn<QString>("icon");
    QTest::newRow("btnHelp") << QStringLiteral(":/icon/question.png");
    QTest::newRow("btnClear") << QStringLiteral(":/icon/folder_explorer.png");
    QTest::newRow("btnUp") << QStringLiteral(":/icon/editup.png");
    QTest::newRow("btnDown") << QStringLiteral(":/icon/editdown.png");
    QTest::newRow("btnDel") << QStringLiteral(":/icon/delete.png");
}

void InputFolderDialogTest::theButtonsShowTheirIcons()
{
    QFETCH(QString, icon);
    Icons::load();
    QVERIFY(QFile::exists(icon));
    const Shown shown;
    QCOMPARE(shown.button(QTest::currentDataTag())->icon().pixmap(24, 24).toImage(),
             QIcon(icon).pixmap(24, 24).toImage());
}

void InputFolderDialogTest::theButtonsAreNamedForThoseWhoDoNotSeeTheIcons()
{
    const Shown shown;
    for (const char *name : {"btnHelp", "btnClear", "btnUp", "btnDown", "btnDel"})
        QVERIFY2(!shown.button(name)->accessibleName().isEmpty(), name);
    QVERIFY(!shown.field()->accessibleName().isEmpty());
    QVERIFY(!shown.table()->accessibleName().isEmpty());
}

void InputFolderDialogTest::theTitleIsTheGivenOne()
{
    const Shown shown;
    QCOMPARE(shown.dialog->windowTitle(), kTitle);
}

void InputFolderDialogTest::theWindowHasASizeGripAndNoHelpButton()
{
    const Shown shown;
    QVERIFY(shown.dialog->isSizeGripEnabled());
    QVERIFY(!shown.dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void InputFolderDialogTest::theTableShowsWholeSingleRows()
{
    const Shown shown;
    const TableView *table = shown.table();
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QVERIFY(!table->isSortingEnabled());
    QCOMPARE(table->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(
        table->styleSheet(),
        QStringLiteral("QTableView::item:selected:active { color:white; background: steelblue; }"));
}

void InputFolderDialogTest::tabVisitsTheFormFromTopToBottom()
{
    const Shown shown("a, b");
    shown.press(Qt::Key_Down); // enables the buttons
    shown.press(Qt::Key_Home);
    shown.press(Qt::Key_Down);
    const char *const order[] = {"btnClear", "chkCase", "chkInstr",  "btnUp",
                                 "btnDown",  "btnDel",  "tableView", "chkCursorLast"};
    for (const char *name : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QLatin1String(name));
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), shown.ok());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("btnHelp"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), shown.field());
}

void InputFolderDialogTest::theDialogIsNeverSmallerThanItsMinimum()
{
    const Shown shown;
    QCOMPARE(shown.dialog->minimumSize(), QSize(440, 400));
    QCOMPARE(shown.dialog->size(), QSize(440, 400));
}

void InputFolderDialogTest::theStoredSizeIsTakenUp()
{
    const Shown shown("a", QString(), "[General]\nsize=@Size(500 450)\n");
    QCOMPARE(shown.dialog->size(), QSize(500, 450));
}

void InputFolderDialogTest::aStoredSizeBeyondTheScreenIsCut()
{
    const Shown shown("a", QString(), "[General]\nsize=@Size(2000000000 2000000000)\n");
    QCOMPARE(shown.dialog->size(), shown.dialog->screen()->availableSize());
}

void InputFolderDialogTest::nothingIsCutWithALargeFont()
{
    const Shown shown("a", QString(), "[font]\nfamily=IPAGothic\npointSize=28\n");
    const auto children = shown.dialog->findChildren<QWidget *>();
    for (const QWidget *widget : children) {
        if (widget->isVisible() && !widget->minimumSizeHint().isEmpty())
            QVERIFY2(widget->width() >= widget->minimumSizeHint().width(),
                     qPrintable(widget->objectName()));
    }
}

void InputFolderDialogTest::theFontOfTheFileIsUsedEverywhere()
{
    const Shown shown("a", QString(), "[font]\nfamily=IPAGothic\npointSize=14\nbold=true\n");
    QFont expected(QStringLiteral("IPAGothic"), 14);
    expected.setBold(true);
    for (const QWidget *widget :
         {static_cast<QWidget *>(shown.dialog.get()), static_cast<QWidget *>(shown.field()),
          static_cast<QWidget *>(shown.table())}) {
        QCOMPARE(widget->font().family(), expected.family());
        QCOMPARE(widget->font().pointSize(), 14);
        QCOMPARE(widget->font().weight(), 75);
    }
}

void InputFolderDialogTest::withoutAFontInTheFileTheInputFontIsUsed()
{
    const Shown shown("a", QString(), "[font]\npointSize=20\n");
    QCOMPARE(shown.dialog->font().family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(shown.field()->font().pointSize(), 9);
    QCOMPARE(shown.table()->font().pointSize(), 9);
}

void InputFolderDialogTest::rowsAreAsHighAsALineAndFour()
{
    const Shown shown("a", QString(), "[font]\nfamily=IPAGothic\npointSize=14\n");
    QCOMPARE(shown.table()->rowHeight(0), QFontMetrics(shown.table()->font()).lineSpacing() + 4);
}

void InputFolderDialogTest::theGivenTextDoesNotFilter()
{
    const Shown shown("a, b, c", QStringLiteral("b"));
    QCOMPARE(shown.field()->text(), QStringLiteral("b"));
    QCOMPARE(shown.rows(), list("a|b|c"));
}

void InputFolderDialogTest::theMovingButtonsAreDisabledAtFirst()
{
    const Shown shown("a, b, c");
    QVERIFY(!shown.button("btnUp")->isEnabled());
    QVERIFY(!shown.button("btnDown")->isEnabled());
    QVERIFY(!shown.button("btnDel")->isEnabled());
}

void InputFolderDialogTest::theCursorStartsAtTheEnd()
{
    const Shown shown("a", QStringLiteral("abc"));
    QVERIFY(shown.box("chkCursorLast")->isChecked());
    QCOMPARE(shown.field()->cursorPosition(), 3);
    QVERIFY(!shown.field()->hasSelectedText());
}

void InputFolderDialogTest::theCursorStartsAtTheStartWhenItIsNotToMove()
{
    const Shown shown("a", QStringLiteral("abc"), "[General]\ncursorLast=false\n");
    QVERIFY(!shown.box("chkCursorLast")->isChecked());
    QCOMPARE(shown.field()->cursorPosition(), 0);
}

void InputFolderDialogTest::theFieldHasTheFocus()
{
    const Shown shown;
    QVERIFY(shown.field()->hasFocus());
}

void InputFolderDialogTest::escapeRejects()
{
    const Shown shown("ab");
    const QSignalSpy rejected(shown.dialog.get(), &QDialog::rejected);
    shown.press(Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!shown.dialog->isVisible());
}

void InputFolderDialogTest::returnAccepts_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier);
    QTest::newRow("Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
    QTest::newRow("Shift+Return") << int(Qt::Key_Return) << int(Qt::ShiftModifier);
}

void InputFolderDialogTest::returnAccepts()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    const Shown shown("ab");
    const QSignalSpy accepted(shown.dialog.get(), &QDialog::accepted);
    shown.press(static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(accepted.count(), 1);
}

void InputFolderDialogTest::theOkButtonAccepts()
{
    const Shown shown("ab");
    const QSignalSpy accepted(shown.dialog.get(), &QDialog::accepted);
    shown.click(shown.ok());
    QCOMPARE(accepted.count(), 1);
}

void InputFolderDialogTest::returnInTheTableAccepts()
{
    const Shown shown("ab, cd");
    const QSignalSpy accepted(shown.dialog.get(), &QDialog::accepted);
    shown.clickRow(1);
    QTest::keyClick(shown.table(), Qt::Key_Return);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog->finish(), QStringLiteral("cd"));
}

void InputFolderDialogTest::theReturnOfAConversionDoesNotAccept()
{
    const Shown shown("\\x691c\\x7d22, x");
    QInputMethodEvent typing(QStringLiteral("けんさく"), {});
    QCoreApplication::sendEvent(shown.field(), &typing);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("検索"));
    QCoreApplication::sendEvent(shown.field(), &commit);
    QVERIFY(shown.dialog->isVisible());
    QCOMPARE(shown.field()->text(), QStringLiteral("検索"));
    QCOMPARE(shown.rows(), list("検索"));
}

void InputFolderDialogTest::theFolderButtonPutsAFolderInTheField()
{
    const Shown shown("ab");
    AnsweringPrompt user;
    user.folders << QStringLiteral("C:/work/src");
    shown.click(shown.button("btnClear"));
    QCOMPARE(user.folderQuestions.size(), 1);
    QCOMPARE(user.folderQuestions.first().title, QStringLiteral("フォルダを選択してください"));
    QCOMPARE(user.folderQuestions.first().parent, shown.dialog.get());
    QCOMPARE(shown.field()->text(), QStringLiteral("C:/work/src/"));
}

void InputFolderDialogTest::theFolderChooserStartsAtTheField()
{
    const Shown shown("ab", QStringLiteral("C:/work/"));
    AnsweringPrompt user;
    shown.click(shown.button("btnClear"));
    QCOMPARE(user.folderQuestions.first().start, QStringLiteral("C:/work/"));
}

void InputFolderDialogTest::theFolderChooserStartsAtTheHistorysFolderForAnEmptyField()
{
    const Shown shown("ab");
    AnsweringPrompt user;
    shown.click(shown.button("btnClear"));
    QCOMPARE(user.folderQuestions.first().start + QLatin1Char('/'), shown.folder.path());
}

void InputFolderDialogTest::aCancelledFolderChooserChangesNothing()
{
    const Shown shown("ab", QStringLiteral("C:/work/"));
    const AnsweringPrompt user;
    shown.click(shown.button("btnClear"));
    QCOMPARE(shown.field()->text(), QStringLiteral("C:/work/"));
    QVERIFY(shown.dialog->isVisible());
}

void InputFolderDialogTest::aChosenRootGetsNoSecondSlash()
{
    const Shown shown("ab");
    AnsweringPrompt user;
    user.folders << QStringLiteral("/");
    shown.click(shown.button("btnClear"));
    QCOMPARE(shown.field()->text(), QStringLiteral("/"));
}

void InputFolderDialogTest::helpIsMadeFromTheTitle()
{
    const ScratchFolder appDir;
    AppSettings::instance().load(appDir.path());
    QString asked;
    const QWidget *beside = nullptr;
    AssistWindow::setFactory([&](const QString &file, QWidget *parent) {
        asked = file;
        beside = parent;
        return new RecordedAssist;
    });
    const Shown shown("ab");
    shown.click(shown.button("btnHelp"));
    QCOMPARE(asked, appDir.filePath(QStringLiteral("input_追加する検索パス.help")));
    QCOMPARE(beside, shown.dialog.get());
}

void InputFolderDialogTest::f1OpensAndClosesTheHelp()
{
    int opened = 0;
    QPointer<AssistWindow> help;
    AssistWindow::setFactory([&](const QString &, QWidget *) {
        ++opened;
        help = new RecordedAssist;
        return help.data();
    });
    const Shown shown("ab");
    // A button that is pressed by its key goes down visibly, and acts then.
    shown.press(Qt::Key_F1);
    QTRY_VERIFY_WITH_TIMEOUT(help, kPatienceMilliseconds);
    shown.press(Qt::Key_F1);
    QTRY_VERIFY_WITH_TIMEOUT(!help, kPatienceMilliseconds);
    QCOMPARE(opened, 1);
    shown.press(Qt::Key_F1);
    QTRY_VERIFY_WITH_TIMEOUT(help, kPatienceMilliseconds);
    QCOMPARE(opened, 2);
}

void InputFolderDialogTest::theHelpClosesWhenItAsksTo()
{
    int opened = 0;
    QPointer<AssistWindow> help;
    AssistWindow::setFactory([&](const QString &, QWidget *) {
        ++opened;
        help = new RecordedAssist;
        return help.data();
    });
    const Shown shown("ab");
    shown.click(shown.button("btnHelp"));
    emit help->closeRequested();
    QTRY_VERIFY_WITH_TIMEOUT(!help, kPatienceMilliseconds);
    shown.click(shown.button("btnHelp"));
    QCOMPARE(opened, 2);
}

void InputFolderDialogTest::theHelpGoesWithTheDialog()
{
    QPointer<AssistWindow> help;
    AssistWindow::setFactory([&](const QString &, QWidget *) {
        help = new RecordedAssist;
        return help.data();
    });
    {
        const Shown shown("ab");
        shown.click(shown.button("btnHelp"));
        QVERIFY(help);
    }
    QVERIFY(!help);
}

void InputFolderDialogTest::withoutHelpNothingOpens()
{
    const Shown shown("ab");
    shown.click(shown.button("btnHelp"));
    shown.click(shown.button("btnHelp"));
    QVERIFY(shown.dialog->isVisible());
}

void InputFolderDialogTest::theHelpOfTheSearchPathIsShipped()
{
    QSettings help(QStringLiteral(PROGRAM_FOLDER "input_追加する検索パス.help"),
                   QSettings::IniFormat);
    help.setIniCodec("UTF-8");
    const QStringList notes = help.childGroups();
    QCOMPARE(notes, list("1_keys|2_path"));
    for (const QString &note : notes) {
        const QStringList window = help.value(note + QStringLiteral("/window")).toStringList();
        QCOMPARE(window.size(), 4);
        for (const QString &number : window) {
            bool isNumber = false;
            number.toInt(&isNumber);
            QVERIFY2(isNumber, qPrintable(number));
        }
        QVERIFY(!help.value(note + QStringLiteral("/line1")).toString().isEmpty());
    }
}

namespace {

/// Runs the dialog as a caller does, with act in the user's place.
class Run {
public:
    template <typename Act>
    Run(const ScratchFolder &folder, const QString &given, const Act &act) : text(given)
    {
        QTimer::singleShot(0, qApp, [&act] {
            auto *dialog = qobject_cast<InputFolderDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                qFatal("no dialog runs");
            act(dialog, dialog->findChild<QLineEdit *>(QStringLiteral("lineEdit")));
        });
        accepted = InputFolderDialog::edit(nullptr, text, kTitle, kPurpose, folder.path());
    }

    QString text;
    bool accepted = false;
};

} // namespace

void InputFolderDialogTest::anAcceptedTextIsReturnedLearnedAndSaved()
{
    const ScratchFolder folder;
    folder.write(kName, "[history]\nlist=ab, cd\n");
    const Run run(folder, QStringLiteral("cd"), [](QDialog *, QLineEdit *field) {
        QTest::keyClicks(field, QStringLiteral("/e"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    QVERIFY(run.accepted);
    QCOMPARE(run.text, QStringLiteral("cd/e"));
    QCOMPARE(InputHistoryFile(folder.path(), kPurpose).read().history, list("cd/e|ab|cd"));
}

void InputFolderDialogTest::backslashesBecomeSlashes()
{
    const ScratchFolder folder;
    const Run run(folder, QString(), [](QDialog *, QLineEdit *field) {
        QTest::keyClicks(field, QStringLiteral("C:\\work\\src"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    QCOMPARE(run.text, QStringLiteral("C:/work/src"));
    QCOMPARE(InputHistoryFile(folder.path(), kPurpose).read().history, list("C:/work/src"));
}

void InputFolderDialogTest::shiftReturnKeepsTheTextOutOfTheHistory_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void InputFolderDialogTest::shiftReturnKeepsTheTextOutOfTheHistory()
{
    QFETCH(int, key);
    const ScratchFolder folder;
    folder.write(kName, "[history]\nlist=ab, cd, ab\n");
    const Run run(folder, QString(), [key](QDialog *, QLineEdit *field) {
        QTest::keyClicks(field, QStringLiteral("xy"));
        QTest::keyClick(field, static_cast<Qt::Key>(key), Qt::ShiftModifier);
    });
    QVERIFY(run.accepted);
    QCOMPARE(run.text, QStringLiteral("xy"));
    // Saved all the same: the duplicate is gone from the file.
    QCOMPARE(InputHistoryFile(folder.path(), kPurpose).read().history, list("ab|cd"));
}

void InputFolderDialogTest::aBlankTextIsAcceptedButNotLearned()
{
    const ScratchFolder folder;
    folder.write(kName, "[history]\nlist=ab\nlearn=false\n");
    const Run run(folder, QStringLiteral("  "),
                  [](QDialog *, QLineEdit *field) { QTest::keyClick(field, Qt::Key_Return); });
    QVERIFY(run.accepted);
    QCOMPARE(run.text, QStringLiteral("  "));
    const auto content = InputHistoryFile(folder.path(), kPurpose).read();
    QCOMPARE(content.history, list("ab"));
    QCOMPARE(content.learn, false);
}

void InputFolderDialogTest::learningSetsTheLearnFlag()
{
    const ScratchFolder folder;
    folder.write(kName, "[history]\nlist=ab\nlearn=false\n");
    const Run run(folder, QStringLiteral("x"),
                  [](QDialog *, QLineEdit *field) { QTest::keyClick(field, Qt::Key_Return); });
    QVERIFY(run.accepted);
    QCOMPARE(InputHistoryFile(folder.path(), kPurpose).read().learn, true);
}

void InputFolderDialogTest::theHistoryKeepsItsMostEntries()
{
    const ScratchFolder folder;
    QByteArray entries;
    for (int i = 1; i <= 50; ++i)
        entries += QByteArray::number(i) + ", ";
    folder.write(kName, "[history]\nlist=" + entries + "51\n");
    const Run run(folder, QStringLiteral("new"),
                  [](QDialog *, QLineEdit *field) { QTest::keyClick(field, Qt::Key_Return); });
    QVERIFY(run.accepted);
    const QStringList history = InputHistoryFile(folder.path(), kPurpose).read().history;
    QCOMPARE(history.size(), 50);
    QCOMPARE(history.first(), QStringLiteral("new"));
    QCOMPARE(history.last(), QStringLiteral("49"));
}

void InputFolderDialogTest::aRejectedDialogChangesNothing()
{
    const ScratchFolder folder;
    const QByteArray bytes = "[history]\nlist=ab, cd, ab\n";
    folder.write(kName, bytes);
    const Run run(folder, QStringLiteral("given"), [](QDialog *dialog, QLineEdit *field) {
        QTest::keyClick(field, Qt::Key_Down);
        QTest::keyClick(field, Qt::Key_Delete, Qt::ShiftModifier);
        dialog->resize(600, 600);
        QTest::keyClick(field, Qt::Key_Escape);
    });
    QVERIFY(!run.accepted);
    QCOMPARE(run.text, QStringLiteral("given"));
    QCOMPARE(folder.read(kName), bytes);
}

void InputFolderDialogTest::theSizeAndTheCursorBoxAreSaved()
{
    const ScratchFolder folder;
    const Run run(folder, QStringLiteral("x"), [](QDialog *dialog, QLineEdit *field) {
        dialog->resize(610, 520);
        QTest::mouseClick(dialog->findChild<QCheckBox *>(QStringLiteral("chkCursorLast")),
                          Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        QTest::keyClick(field, Qt::Key_Return);
    });
    QVERIFY(run.accepted);
    const auto content = InputHistoryFile(folder.path(), kPurpose).read();
    QCOMPARE(content.size, QSize(610, 520));
    QCOMPARE(content.cursorLast, false);
}

void InputFolderDialogTest::aParentThatGoesTakesTheDialogWithIt()
{
    const ScratchFolder folder;
    auto *parent = new QWidget;
    QTimer::singleShot(0, qApp, [parent] { delete parent; });
    QString text = QStringLiteral("given");
    QVERIFY(!InputFolderDialog::edit(parent, text, kTitle, kPurpose, folder.path()));
    QCOMPARE(text, QStringLiteral("given"));
    QVERIFY(!folder.exists(kName));
}

QTEST_MAIN(InputFolderDialogTest)
#include "InputFolderDialogTest.moc"
