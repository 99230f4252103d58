#include "settings/dialogs/InputFolderDialog.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/TableView.h"
#include "tests/settings/dialogs/InputFolderDialogFixture.h"
#include "tests/support/ScratchFolder.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace InputFolderDialogFixture;

/// The history in the input dialog: filtered, gone through and changed.
class InputFolderDialogHistoryTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void theHistoryIsShownWithoutDuplicates();
    void keywordModeShowsTheKeywordHistory();
    void aLongTextIsNotCut();

    void typingFiltersByTheStart();
    void typingWithTheContainBoxFiltersAnywhere();
    void theCaseBoxIgnoresCase();
    void tickingABoxFiltersAgain();
    void onlyTheTextLeftOfTheCursorFilters();
    void withTheCursorAtTheStartEverythingShows();
    void filteringDisablesTheMovingButtons();
    void filteringForgetsTheCurrentRow();
    void filteringAStoredRowTextDoesNotHappenWhileNavigating();

    void downMakesTheFirstRowCurrentAndThenMoves();
    void upMakesTheFirstRowCurrentToo();
    void downOnTheLastRowStays();
    void navigatingWithoutRowsDoesNothing();
    void navigatingMovesAmongTheFilteredRows();
    void navigatingKeepsTheCursorWhenItIsNotToMove();
    void navigatingAtTheStartEnablesTheMovingButtons();
    void navigatingInAFilteredListEnablesOnlyRemoving();
    void theFieldKeepsTheFocusWhileNavigating();

    void clickingARowPutsItsTextInTheField();
    void doubleClickingARowAccepts();

    void removingTakesTheEntryOfTheField_data();
    void removingTakesTheEntryOfTheField();
    void shiftDeleteDoesNotCut();
    void deleteWithOtherModifiersEditsTheText();
    void removingTheLastRowLeavesNoneCurrent();
    void removingInAFilteredListShowsAllRows();
    void removingATextThatIsNotInTheHistoryDoesNothing();
    void anEmptiedHistoryDisablesRemoving();

    void upMovesTheEntryUp();
    void upOnTheFirstDoesNothing();
    void downMovesTheEntryDown();
    void downOnTheLastButOneDoesNothing();
    void movingWithoutACurrentRowDoesNothing();
};

void InputFolderDialogHistoryTest::initTestCase()
{
    AppSettings::instance().inputFont = QFont(QStringLiteral("DejaVu Sans"), 9);
}

void InputFolderDialogHistoryTest::theHistoryIsShownWithoutDuplicates()
{
    const Shown shown("b, a, b, A, c, a");
    QCOMPARE(shown.rows(), list("b|a|A|c"));
}

void InputFolderDialogHistoryTest::keywordModeShowsTheKeywordHistory()
{
    const ScratchFolder folder;
    folder.write(QStringLiteral("inputInsert-Word.ini"), "[history]\nlist=from the file\n");
    auto keywords = std::make_unique<KeywordHistory>(100, folder.path());
    keywords->add(QStringLiteral("older"), true, false, false);
    keywords->add(QStringLiteral("newer"), true, false, false);
    AppSettings::instance().keywordHistory = std::move(keywords);

    const InputFolderDialog dialog(QString(), kTitle, QStringLiteral("Insert-Word"), folder.path());
    const auto *model = dialog.findChild<TableView *>()->model();
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("newer"));
    QCOMPARE(model->index(1, 0).data().toString(), QStringLiteral("older"));
}

void InputFolderDialogHistoryTest::aLongTextIsNotCut()
{
    // More than the toolkit's field takes by itself.
    const QString text = QString(40000, QLatin1Char('x'));
    const Shown shown(QByteArray(), text);
    QCOMPARE(shown.dialog->finish(), text);
}

void InputFolderDialogHistoryTest::typingFiltersByTheStart()
{
    const Shown shown("ab, bab, abc, AB");
    shown.type("ab");
    QCOMPARE(shown.rows(), list("ab|abc"));
    shown.type("c");
    QCOMPARE(shown.rows(), list("abc"));
    shown.press(Qt::Key_Backspace);
    QCOMPARE(shown.rows(), list("ab|abc"));
}

void InputFolderDialogHistoryTest::typingWithTheContainBoxFiltersAnywhere()
{
    const Shown shown("ab, bab, abc, AB");
    shown.click(shown.box("chkInstr"));
    shown.type("ab");
    QCOMPARE(shown.rows(), list("ab|bab|abc"));
}

void InputFolderDialogHistoryTest::theCaseBoxIgnoresCase()
{
    const Shown shown("ab, bAb, aBc, AB");
    shown.click(shown.box("chkCase"));
    shown.type("ab");
    QCOMPARE(shown.rows(), list("ab|aBc|AB"));
    shown.click(shown.box("chkInstr"));
    QCOMPARE(shown.rows(), list("ab|bAb|aBc|AB"));
}

void InputFolderDialogHistoryTest::tickingABoxFiltersAgain()
{
    const Shown shown("ab, bab, AB");
    shown.type("ab");
    QCOMPARE(shown.rows(), list("ab"));
    shown.click(shown.box("chkInstr"));
    QCOMPARE(shown.rows(), list("ab|bab"));
    shown.click(shown.box("chkInstr"));
    QCOMPARE(shown.rows(), list("ab"));
    shown.click(shown.box("chkCase"));
    QCOMPARE(shown.rows(), list("ab|AB"));
    shown.click(shown.box("chkCase"));
    QCOMPARE(shown.rows(), list("ab"));
    QVERIFY(shown.field()->hasFocus());
}

void InputFolderDialogHistoryTest::onlyTheTextLeftOfTheCursorFilters()
{
    const Shown shown("ab, ac, bb, xa");
    shown.type("ab");
    QCOMPARE(shown.rows(), list("ab"));
    shown.press(Qt::Key_Left);
    QCOMPARE(shown.rows(), list("ab|ac"));
    shown.click(shown.box("chkInstr"));
    QCOMPARE(shown.rows(), list("ab|ac|xa"));
    // Behind the cursor, and so without effect on the rows.
    shown.press(Qt::Key_Delete);
    QCOMPARE(shown.field()->text(), QStringLiteral("a"));
    QCOMPARE(shown.rows(), list("ab|ac|xa"));
}

void InputFolderDialogHistoryTest::withTheCursorAtTheStartEverythingShows()
{
    const Shown shown("ab, ac, bb");
    shown.type("ab");
    shown.press(Qt::Key_Home);
    QCOMPARE(shown.rows(), list("ab|ac|bb"));
    shown.click(shown.box("chkInstr"));
    QCOMPARE(shown.rows(), list("ab|ac|bb"));
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
}

void InputFolderDialogHistoryTest::filteringDisablesTheMovingButtons()
{
    const Shown shown("ab, ac, bb");
    shown.press(Qt::Key_Down);
    QVERIFY(shown.button("btnUp")->isEnabled());
    shown.type("x");
    QVERIFY(!shown.button("btnUp")->isEnabled());
    QVERIFY(!shown.button("btnDown")->isEnabled());
    QVERIFY(shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::filteringForgetsTheCurrentRow()
{
    const Shown shown("ab, ac, bb");
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.currentRow(), 0);
    shown.press(Qt::Key_Backspace);
    QCOMPARE(shown.currentRow(), -1);
    QCOMPARE(shown.field()->text(), QStringLiteral("a"));
}

void InputFolderDialogHistoryTest::filteringAStoredRowTextDoesNotHappenWhileNavigating()
{
    const Shown shown("ab, cd, ef");
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("cd"));
    QCOMPARE(shown.rows(), list("ab|cd|ef"));
    shown.clickRow(2);
    QCOMPARE(shown.rows(), list("ab|cd|ef"));
}

void InputFolderDialogHistoryTest::downMakesTheFirstRowCurrentAndThenMoves()
{
    const Shown shown("ab, cd, ef");
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.currentRow(), 0);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
    QCOMPARE(shown.field()->cursorPosition(), 2);
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("cd"));
    shown.press(Qt::Key_Up);
    QCOMPARE(shown.currentRow(), 0);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
}

void InputFolderDialogHistoryTest::upMakesTheFirstRowCurrentToo()
{
    const Shown shown("ab, cd, ef");
    shown.press(Qt::Key_Up);
    QCOMPARE(shown.currentRow(), 0);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
}

void InputFolderDialogHistoryTest::downOnTheLastRowStays()
{
    const Shown shown("ab, cd");
    for (int i = 0; i < 4; ++i)
        shown.press(Qt::Key_Down);
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("cd"));
}

void InputFolderDialogHistoryTest::navigatingWithoutRowsDoesNothing()
{
    const Shown shown(QByteArray(), QStringLiteral("abc"));
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.currentRow(), -1);
    QCOMPARE(shown.field()->text(), QStringLiteral("abc"));
    QVERIFY(!shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::navigatingMovesAmongTheFilteredRows()
{
    const Shown shown("ab, cd, ac");
    shown.type("a");
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("ac"));
    QCOMPARE(shown.rows(), list("ab|ac"));
}

void InputFolderDialogHistoryTest::navigatingKeepsTheCursorWhenItIsNotToMove()
{
    const Shown shown = shownWithStillCursor("abc, abd");
    shown.type("a");
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("abc"));
    QCOMPARE(shown.field()->cursorPosition(), 1);
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("abd"));
    QCOMPARE(shown.field()->cursorPosition(), 1);
}

void InputFolderDialogHistoryTest::navigatingAtTheStartEnablesTheMovingButtons()
{
    const Shown shown("ab, cd");
    shown.press(Qt::Key_Down);
    QVERIFY(shown.button("btnUp")->isEnabled());
    QVERIFY(shown.button("btnDown")->isEnabled());
    QVERIFY(shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::navigatingInAFilteredListEnablesOnlyRemoving()
{
    const Shown shown("ab, ac, cd");
    shown.type("a");
    shown.press(Qt::Key_Down);
    QVERIFY(!shown.button("btnUp")->isEnabled());
    QVERIFY(!shown.button("btnDown")->isEnabled());
    QVERIFY(shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::theFieldKeepsTheFocusWhileNavigating()
{
    const Shown shown("ab, cd, ef");
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    shown.click(shown.button("btnUp"));
    QVERIFY(shown.field()->hasFocus());
}

void InputFolderDialogHistoryTest::clickingARowPutsItsTextInTheField()
{
    const Shown shown("ab, cd, ef");
    shown.clickRow(1);
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("cd"));
    QVERIFY(shown.button("btnUp")->isEnabled());
}

void InputFolderDialogHistoryTest::doubleClickingARowAccepts()
{
    const Shown shown("ab, cd, ef");
    const QSignalSpy accepted(shown.dialog.get(), &QDialog::accepted);
    shown.clickRow(2);
    QTest::mouseDClick(shown.table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                       shown.centreOfRow(2));
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(shown.dialog->finish(), QStringLiteral("ef"));
}

void InputFolderDialogHistoryTest::removingTakesTheEntryOfTheField_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("the button") << false;
    QTest::newRow("Shift+Delete") << true;
}

void InputFolderDialogHistoryTest::removingTakesTheEntryOfTheField()
{
    QFETCH(bool, byKey);
    const Shown shown("ab, cd, ef");
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    if (byKey)
        shown.press(Qt::Key_Delete, Qt::ShiftModifier);
    else
        shown.click(shown.button("btnDel"));
    QCOMPARE(shown.rows(), list("ab|ef"));
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("ef"));
}

void InputFolderDialogHistoryTest::shiftDeleteDoesNotCut()
{
    const Shown shown("ab, cd");
    shown.type("xyz");
    shown.field()->selectAll();
    shown.press(Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(shown.field()->text(), QStringLiteral("xyz"));
}

void InputFolderDialogHistoryTest::deleteWithOtherModifiersEditsTheText()
{
    const Shown shown("ab, cd");
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Home);
    shown.press(Qt::Key_Delete);
    QCOMPARE(shown.field()->text(), QStringLiteral("b"));
    shown.press(Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(shown.rows(), list("ab|cd"));
}

void InputFolderDialogHistoryTest::removingTheLastRowLeavesNoneCurrent()
{
    const Shown shown("ab, cd");
    shown.clickRow(1);
    shown.click(shown.button("btnDel"));
    QCOMPARE(shown.rows(), list("ab"));
    QCOMPARE(shown.currentRow(), -1);
    QVERIFY(shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::removingInAFilteredListShowsAllRows()
{
    const Shown shown("xx, ab, ac, yy");
    shown.type("a");
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    QCOMPARE(shown.field()->text(), QStringLiteral("ac"));
    shown.press(Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(shown.rows(), list("xx|ab|yy"));
    // The second of the filtered rows was current, so now the second of all.
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
}

void InputFolderDialogHistoryTest::removingATextThatIsNotInTheHistoryDoesNothing()
{
    const Shown shown("ab, ac, cd");
    shown.type("a");
    shown.press(Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(shown.rows(), list("ab|ac"));
    QCOMPARE(shown.field()->text(), QStringLiteral("a"));
}

void InputFolderDialogHistoryTest::anEmptiedHistoryDisablesRemoving()
{
    const Shown shown("ab");
    shown.press(Qt::Key_Down);
    QVERIFY(shown.button("btnDel")->isEnabled());
    shown.click(shown.button("btnDel"));
    QCOMPARE(shown.rows(), QStringList());
    QVERIFY(!shown.button("btnDel")->isEnabled());
}

void InputFolderDialogHistoryTest::upMovesTheEntryUp()
{
    const Shown shown("ab, cd, ef");
    shown.clickRow(2);
    shown.click(shown.button("btnUp"));
    QCOMPARE(shown.rows(), list("ab|ef|cd"));
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("ef"));
    shown.click(shown.button("btnUp"));
    QCOMPARE(shown.rows(), list("ef|ab|cd"));
    QCOMPARE(shown.currentRow(), 0);
}

void InputFolderDialogHistoryTest::upOnTheFirstDoesNothing()
{
    const Shown shown("ab, cd");
    shown.clickRow(0);
    shown.click(shown.button("btnUp"));
    QCOMPARE(shown.rows(), list("ab|cd"));
    QCOMPARE(shown.currentRow(), 0);
}

void InputFolderDialogHistoryTest::downMovesTheEntryDown()
{
    const Shown shown("ab, cd, ef");
    shown.clickRow(0);
    shown.click(shown.button("btnDown"));
    QCOMPARE(shown.rows(), list("cd|ab|ef"));
    QCOMPARE(shown.currentRow(), 1);
    QCOMPARE(shown.field()->text(), QStringLiteral("ab"));
}

void InputFolderDialogHistoryTest::downOnTheLastButOneDoesNothing()
{
    const Shown shown("ab, cd, ef");
    shown.clickRow(1);
    shown.click(shown.button("btnDown"));
    QCOMPARE(shown.rows(), list("ab|cd|ef"));
    QCOMPARE(shown.currentRow(), 1);
}

void InputFolderDialogHistoryTest::movingWithoutACurrentRowDoesNothing()
{
    const Shown shown("ab, cd, ef");
    shown.clickRow(2);
    shown.click(shown.button("btnDel"));
    QCOMPARE(shown.currentRow(), -1);
    shown.dialog->on_btnUp_clicked();
    shown.dialog->on_btnDown_clicked();
    QCOMPARE(shown.rows(), list("ab|cd"));
}

QTEST_MAIN(InputFolderDialogHistoryTest)
#include "InputFolderDialogHistoryTest.moc"
