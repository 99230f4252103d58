#include "tests/mainwindow/WindowFixture.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "settings/dialogs/InputFolderDialog.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCompleter>
#include <QDesktopServices>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const char kWholeMaskQuestion[] =
    "マスクが(*.*)で指定されると、テキストファイル以外も対象になります。\nよろしいですか？。";

} // namespace

/// The window's own part: what happens when. A tree of two folders is searched.
class MainWindowTest : public QObject {
    Q_OBJECT

public slots:
    void openUrl(const QUrl &url) { m_url = url; }

private slots:
    void initTestCase();
    void cleanupTestCase() { WindowFixture::waitForFading(); }
    void init();
    void cleanup();

    void theSlotsStandInTheirOrder();
    void theWindowStartsWithTheProgramsTitle();
    void actionsCarryTheirTexts_data();
    void actionsCarryTheirTexts();
    void toolButtonsCarryTheirTexts_data();
    void toolButtonsCarryTheirTexts();
    void theKeyOfTheBackMenuIsToldUnderTheMouse();

    void aHandedOverRequestStandsInTheForm();
    void theMaskOfAllFilesIsNotTakenOver();
    void aKeywordThatBeginsWithAQuoteLosesAllQuotes();
    void aQuoteInsideAKeywordStays();
    void aHandedOverListFileEndsTheList();
    void keyword1HasTheFocusAndIsSelected();

    void aRequestThatCannotRunIsRefused_data();
    void aRequestThatCannotRunIsRefused();
    void aSearchOfAllFilesAsksFirst();

    void hitsAreListedToTheLetter();
    void conditionsAreToldAtTheEnd();
    void keyword2NeedsItsGroupAndItsCheckBox_data();
    void keyword2NeedsItsGroupAndItsCheckBox();
    void keyword3NeedsItsGroupAlone();
    void skippedFilesAreListedOnlyWhenAskedFor();
    void unreadableFilesAreAlwaysListed();
    void filesWithoutHitsAreNamedWhenAskedFor();
    void subfoldersAreLeftOutWhenAskedFor();

    void aSearchRewritesTheParameterFile();
    void aSearchIsTitledAfterItsKeyword();
    void aSearchRemembersKeywordAndSwitches();
    void aSearchRemembersItsMask();
    void theHistoryOfKeyword2HoldsNoMoreThanFifty();
    void aPastKeywordComesBackWithItsSwitches();
    void aFinishedSearchLeavesTheWindowIdle();

    void escapeAbortsARun();
    void escapeAbortsARunWhereverTheFocusIs_data();
    void escapeAbortsARunWhereverTheFocusIs();
    void theButtonAbortsARun();
    void aSecondSearchFollowsAnAbortedOne();
    void aWindowIsDestroyedDuringARun();

    void linesAreCountedToTheLetter();
    void theSlotsOfARunDoNothingWithoutOne();
    void aNameWithALineBreakIsOneLine();
    void aLineCountNeedsNoKeyword();
    void aLineCountIsRefusedWhileARunGoesOn();
    void anAbortedLineCountSaysSo();

    void returnInEveryFieldSearches();
    void escapeInKeyword1AsksToQuit();
    void theTogglesFlipTheSettings();
    void aPathIsAddedThroughTheDialog();
    void aListedPathIsNotAddedAgain();
    void theNotesOfThePathDialogAreShownAndHidden();
    void theExtraConditionsFold();
    void keyword1IsPutBackUnlessItHoldsABackslash();
    void returnInTheCompletersPopupSearches_data();
    void returnInTheCompletersPopupSearches();
    void theClearButtonSearchesButNeverAborts();
    void aPickedSecondKeywordIsSeen();
    void theFormsPathsServeBeforeTheFirstSearch();
    void aBroadcastLeavesTypingAlone();

    void findingGoesAroundTheEnd();
    void documentsAreOpened();
    void switchesAndLayoutAreStored();

private:
    std::unique_ptr<WindowFixture> m_fixture;
    QString m_tree;
    QUrl m_url;
};

void MainWindowTest::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void MainWindowTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->tree.write(QStringLiteral("sub/c.txt"), "\tapple\n");
    m_fixture->open();
}

void MainWindowTest::cleanup()
{
    m_fixture.reset();
}

void MainWindowTest::theSlotsStandInTheirOrder()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QStringList names;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        names += QString::fromLatin1(meta.method(index).methodSignature());
    const QStringList expected = {text("GrepDummy()"),
                                  text("SetCompleter(QComboBox*,QCompleter*)"),
                                  text("onBoradCastMessage(uint,uint)"),
                                  text("onClick_btn_case()"),
                                  text("onClick_btn_word()"),
                                  text("onClick_btn_regexp()"),
                                  text("showLinecntResult(QString,int)"),
                                  text("onTimerProgressReport()"),
                                  text("findnext()"),
                                  text("findprev()"),
                                  text("findDialogPopup()"),
                                  text("linecntFinished(bool)"),
                                  text("searchFinished(bool)"),
                                  text("openFile()"),
                                  text("optionDialogPopup()"),
                                  text("on_pushButton_clicked()"),
                                  text("previewFile()"),
                                  text("about()"),
                                  text("help()"),
                                  text("regexphelp()"),
                                  text("lineCountGrep()"),
                                  text("on_btnKeyword1_clicked()"),
                                  text("makeBackMenu()"),
                                  text("openLogfile(QAction*)"),
                                  text("historyBackMenuPopup()"),
                                  text("arrowBack()"),
                                  text("arrowForward()"),
                                  text("on_btnKeyword2_clicked(bool)"),
                                  text("on_btnPlus_clicked()")};
    QCOMPARE(names, expected);
}

void MainWindowTest::theWindowStartsWithTheProgramsTitle()
{
    QCOMPARE(m_fixture->window().windowTitle(), text("sarvik64"));
    QCOMPARE(MainWindow::versionString(), text("5.00"));
}

void MainWindowTest::actionsCarryTheirTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QString>("statusTip");
    const auto row = [](const char *name, const char *label, const char *shortcut,
                        const char *statusTip) {
        QTest::newRow(name) << text(name) << text(label) << text(shortcut) << text(statusTip);
    };
    row("actionOpenLog", "(&R) 過去の検索ログ読み込み", "", "過去の検索ログファイルを読み込みます");
    row("actionQuit", "(&X) 終了", "Ctrl+Q", "終了します");
    row("actionOptions", "(&O) 設定", "", "設定を変更します");
    row("actionLineCount", "(&L) 行数カウント集計", "",
        "パスマスクで該当するファイルの行数だけをカウント集計します");
    row("actionHelp", "(&H) 操作説明", "", "操作説明を表示します");
    row("actionRegExpHelp", "(&R) 正規表現サンプル", "", "正規表現のサンプルを表示します");
    row("actionVersion", "(&V) バージョン", "", "バージョン表示");
    row("actionAboutQt", "(&Q) Ｑｔ について", "", "Ｑｔ ライブラリについて");
}

void MainWindowTest::actionsCarryTheirTexts()
{
    QFETCH(QString, name);
    const auto *action = m_fixture->window().findChild<QAction *>(name);
    QVERIFY(action);
    QTEST(action->text(), "label");
    QTEST(action->shortcut().toString(), "shortcut");
    QTEST(action->statusTip(), "statusTip");
    QVERIFY(!action->icon().isNull());
}

void MainWindowTest::toolButtonsCarryTheirTexts_data()
{
    QTest::addColumn<QString>("shortcut");
    QTest::newRow("arrowBackBtn") << text("Alt+Left");
    QTest::newRow("arrowForwardBtn") << text("Alt+Right");
    QTest::newRow("findBtn") << text("Ctrl+F");
    QTest::newRow("findNextBtn") << text("Ctrl+Down");
    QTest::newRow("findPrevBtn") << text("Ctrl+Up");
    QTest::newRow("optionBtn") << QString();
}

void MainWindowTest::toolButtonsCarryTheirTexts()
{
    const auto *button = m_fixture->child<QToolButton>(QTest::currentDataTag());
    QVERIFY(button);
    QTEST(button->shortcut().toString(), "shortcut");
    QVERIFY(!button->icon().isNull());
    QVERIFY(!button->accessibleName().isEmpty());
    if (button->objectName() == QLatin1String("arrowBackBtn")) {
        QCOMPARE(button->toolTip(), text("前に検索結果を表示します"));
        QCOMPARE(button->text(), text("前の検索結果"));
        QVERIFY(button->menu());
    }
}

void MainWindowTest::theKeyOfTheBackMenuIsToldUnderTheMouse()
{
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(m_fixture->child<QToolButton>("arrowBackBtn"), &enter);
    QCOMPARE(m_fixture->statusText(), text("Ctrl+H: 過去の検索結果の一覧を表示します"));
}

void MainWindowTest::aHandedOverRequestStandsInTheForm()
{
    m_fixture->open({text("/a/"), QString(), text("/b/")}, text("*.cpp"), text("word"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/a/\n/b/"));
    QCOMPARE(m_fixture->pathEdit()->textCursor().position(), 0);
    QCOMPARE(m_fixture->mask()->currentText(), text("*.cpp"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("word"));
}

void MainWindowTest::theMaskOfAllFilesIsNotTakenOver()
{
    m_fixture->open({text("/a/")}, text("*.*"), text("word"));
    QCOMPARE(m_fixture->mask()->currentText(), QString());
}

void MainWindowTest::aKeywordThatBeginsWithAQuoteLosesAllQuotes()
{
    m_fixture->open({}, {}, text("\"a \"b\" c\""));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("a b c"));
}

void MainWindowTest::aQuoteInsideAKeywordStays()
{
    m_fixture->open({}, {}, text("a \"b\""));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("a \"b\""));
}

void MainWindowTest::aHandedOverListFileEndsTheList()
{
    m_fixture->open({text("/a/"), text("@/list.ini/"), text("/b/")});
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/a/\n@/list.ini"));
}

void MainWindowTest::keyword1HasTheFocusAndIsSelected()
{
    m_fixture->open({}, {}, text("word"));
    QVERIFY(m_fixture->keyword1()->hasFocus());
    QCOMPARE(m_fixture->keyword1()->lineEdit()->selectedText(), text("word"));
}

void MainWindowTest::aRequestThatCannotRunIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QString() << QString() << QString()
                             << text("キーワード１を指定してください");
    QTest::newRow("no keyword") << text("/a/") << text("*.c") << QString()
                                << text("キーワード１を指定してください");
    QTest::newRow("no path") << QString() << QString() << text("k")
                             << text("検索パスを指定してください");
    QTest::newRow("no mask") << text("/a/") << QString() << text("k")
                             << text("マスクを指定してください");
}

void MainWindowTest::aRequestThatCannotRunIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, mask);
    QFETCH(QString, keyword);
    m_fixture->fill(path, mask, keyword);
    m_fixture->searchButton()->click();
    QTEST(m_fixture->statusText(), "message");
    QVERIFY(!m_fixture->isRunning());
    QCOMPARE(m_fixture->window().windowTitle(), text("sarvik64"));
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvikpara.ini"))));
}

void MainWindowTest::aSearchOfAllFilesAsksFirst()
{
    m_fixture->prompt.buttons = {QMessageBox::No, QMessageBox::Yes};
    m_fixture->fill(m_tree, text("*.*"), text("apple"));
    m_fixture->searchButton()->click();
    QVERIFY(!m_fixture->isRunning());
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->isRunning());
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->prompt.messages.size(), 2);
    const UserPrompt::Message question = m_fixture->prompt.messages.first();
    QCOMPARE(question.title, text("sarvik"));
    QCOMPARE(question.text, text(kWholeMaskQuestion));
    QVERIFY(question.buttons == (QMessageBox::Yes | QMessageBox::No));
    QCOMPARE(question.defaultButton, QMessageBox::Yes);
}

void MainWindowTest::hitsAreListedToTheLetter()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    const QString first =
        text("::%1a.txt\n      1:    5:one apple\n      3:    7:three apple pies\n").arg(m_tree);
    const QString second = text("::%1sub/c.txt\n      1:    5:\tapple\n").arg(m_tree);
    const QString end = text("-------------------------------------------------\n"
                             "該当ファイル数 2 / 3\n該当行数 3\n処理時間: T 秒\n");
    // Two files may be through in either order.
    const QString listed = m_fixture->resultText();
    const QString reversed = second + first + end;
    QCOMPARE(listed, listed.startsWith(first) ? QString(first + second + end) : reversed);
}

void MainWindowTest::conditionsAreToldAtTheEnd()
{
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("pears"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(1);
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    m_fixture->keyword3()->setEditText(text("pies"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(m_fixture->resultText(),
             text("::%1a.txt\n      1:    5:one apple\n"
                  "-------------------------------------------------\n"
                  "追加条件：「pears」が 1 行以内にある場合\n"
                  "追加条件：「pies」を含まない行のみ\n"
                  "該当ファイル数 1 / 3\n該当行数 1\n処理時間: T 秒\n")
                 .arg(m_tree));
}

void MainWindowTest::keyword2NeedsItsGroupAndItsCheckBox_data()
{
    QTest::addColumn<bool>("group");
    QTest::addColumn<bool>("checkBox");
    QTest::addColumn<bool>("isUsed");
    QTest::newRow("both") << true << true << true;
    QTest::newRow("the group alone") << true << false << false;
    QTest::newRow("the check box alone") << false << true << false;
    QTest::newRow("neither") << false << false << false;
}

void MainWindowTest::keyword2NeedsItsGroupAndItsCheckBox()
{
    QFETCH(bool, group);
    QFETCH(bool, checkBox);
    QFETCH(bool, isUsed);
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(group);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(checkBox);
    m_fixture->keyword2()->setEditText(text("no such text"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(isUsed ? text("該当行数 0") : text("該当行数 3")));
    const QStringList expected = isUsed ? QStringList(text("no such text")) : QStringList();
    QCOMPARE(AppSettings::instance().history2, expected);
    QCOMPARE(m_fixture->keyword2()->count(), expected.size());
}

void MainWindowTest::keyword3NeedsItsGroupAlone()
{
    m_fixture->keyword3()->setEditText(text("pies|\t"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 3")));
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1")));
}

void MainWindowTest::skippedFilesAreListedOnlyWhenAskedFor()
{
    const QString head = text("---------- Warning skip foler or file ------------");
    AppSettings::instance().excusionfile = QStringList(text("b.txt"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(!m_fixture->resultText().contains(head));
    m_fixture->child<QCheckBox>("skippedCheck")->setChecked(true);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("処理時間: T 秒\n\n") + head + text("\n")));
    QVERIFY(m_fixture->resultText().contains(text("b.txt")));
    // Asked for, but nothing was skipped.
    AppSettings::instance().excusionfile.clear();
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(!m_fixture->resultText().contains(head));
}

void MainWindowTest::unreadableFilesAreAlwaysListed()
{
    m_fixture->tree.write(QStringLiteral("binary.txt"), QByteArray(100, '\0'));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("---------- Read Error File ------------\n")));
    QVERIFY(m_fixture->resultText().contains(text("binary.txt")));
}

void MainWindowTest::filesWithoutHitsAreNamedWhenAskedFor()
{
    m_fixture->child<QCheckBox>("emptyFilesCheck")->setChecked(true);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("::%1b.txt\n").arg(m_tree)));
    QVERIFY(m_fixture->resultText().contains(text("該当ファイル数 3 / 3\n")));
}

void MainWindowTest::subfoldersAreLeftOutWhenAskedFor()
{
    m_fixture->child<QCheckBox>("subdirCheck")->setChecked(false);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当ファイル数 1 / 2\n")));
}

void MainWindowTest::aSearchRewritesTheParameterFile()
{
    QVERIFY(m_fixture->search(m_tree.chopped(1), text("*.txt"), text("灯台")));
    const ParameterFile::Content content =
        ParameterFile(WindowFixture::applicationFile(QString())).read();
    QCOMPARE(content.pathlist, QStringList(m_tree));
    QCOMPARE(content.mask, text("*.txt"));
    QCOMPARE(content.findword, text("灯台"));
}

void MainWindowTest::aSearchIsTitledAfterItsKeyword()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(m_fixture->window().windowTitle(), text("apple -- sarvik"));
}

void MainWindowTest::aSearchRemembersKeywordAndSwitches()
{
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = false;
    settings.word = true;
    settings.regexp = false;
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(settings.keywordHistory->keywords(), QStringList(text("apple")));
    const KeywordHistory::Entry entry = settings.keywordHistory->entries().front();
    QCOMPARE(entry.flagA, false);
    QCOMPARE(entry.flagB, true);
    QCOMPARE(entry.flagC, false);
    QCOMPARE(m_fixture->keyword1()->itemText(0), text("apple"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("apple"));
}

void MainWindowTest::aSearchRemembersItsMask()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->search(m_tree, text("*.c"), text("apple")));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    const QStringList expected = {text("*.txt"), text("*.c")};
    QCOMPARE(AppSettings::instance().maskhistory, expected);
    QCOMPARE(m_fixture->mask()->count(), 2);
}

void MainWindowTest::theHistoryOfKeyword2HoldsNoMoreThanFifty()
{
    QStringList &history = AppSettings::instance().history2;
    for (int number = 0; number < 50; ++number)
        history += QString::number(number);
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("new"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(history.size(), 50);
    QCOMPARE(history.first(), text("new"));
    QCOMPARE(history.last(), text("48"));
}

void MainWindowTest::aPastKeywordComesBackWithItsSwitches()
{
    AppSettings &settings = AppSettings::instance();
    settings.word = true;
    settings.regexp = false;
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    settings.word = false;
    settings.regexp = true;
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("pears")));
    m_fixture->keyword1()->setFocus();
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Down);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("apple"));
    QCOMPARE(settings.word, true);
    QCOMPARE(settings.regexp, false);
    QVERIFY(m_fixture->child<QAbstractButton>("btnWord")->isChecked());
    QVERIFY(!m_fixture->child<QAbstractButton>("btnRegexp")->isChecked());
}

void MainWindowTest::aFinishedSearchLeavesTheWindowIdle()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(m_fixture->searchButton()->text(), text("検索開始"));
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QVERIFY(!m_fixture->child<QWidget>("progressPanel")->isVisible());
    QVERIFY(m_fixture->window().findChild<QAction *>(text("actionOptions"))->isEnabled());
    QVERIFY(m_fixture->resultView()->hasFocus());
}

void MainWindowTest::escapeAbortsARun()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QCOMPARE(m_fixture->searchButton()->text(), text("中止"));
    QVERIFY(m_fixture->child<QWidget>("progressPanel")->isVisible());
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Escape);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultText().startsWith(
        text("/////////////////////// 中止しました ///////////////////////////\n該当ファイル数 ")));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowTest::escapeAbortsARunWhereverTheFocusIs_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"subdirCheck", "btnPlus", "btnCase", "btnKeyword2", "extraGroup", "useKeyword2",
          "lineDistance", "keyword3Group", "pushButton", "preview", "pathEdit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void MainWindowTest::escapeAbortsARunWhereverTheFocusIs()
{
    QFETCH(QString, name);
    m_fixture->child<QAbstractButton>("btnKeyword2")->click();
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    auto *widget = m_fixture->window().findChild<QWidget *>(name);
    widget->setFocus(Qt::TabFocusReason);
    QCOMPARE(QApplication::focusWidget(), widget);
    QTest::keyClick(widget, Qt::Key_Escape);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultText().contains(text("中止しました")));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowTest::theButtonAbortsARun()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QTest::qWait(50);
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QVERIFY(m_fixture->resultText().contains(text("中止しました")));
}

void MainWindowTest::aSecondSearchFollowsAnAbortedOne()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultView()->escapePressed());
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(!m_fixture->resultView()->escapePressed());
    QVERIFY(m_fixture->resultText().contains(text("該当行数 3")));
    QVERIFY(!m_fixture->resultText().contains(text("中止しました")));
}

void MainWindowTest::aWindowIsDestroyedDuringARun()
{
    m_fixture->fill(text("/usr/"), text("*"), text("a"));
    m_fixture->searchButton()->click();
    QTest::qWait(100);
    m_fixture->close();
    // What was asked is remembered all the same.
    QVERIFY(WindowFixture::readApplicationFile(text("keywordhistory.ini")).contains("101a"));
}

void MainWindowTest::linesAreCountedToTheLetter()
{
    m_fixture->fill(m_tree, text("*.txt"), text("apple"));
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->resultText(),
             text("      4 %1a.txt\n      2 %1b.txt\n"
                  "---------------------------------------\n合計 6\n\n"
                  "      2 %1sub/c.txt\n合計 2\n\n"
                  "-------------------------------------------------\n"
                  "合計行数 8  該当ファイル数 3")
                 .arg(m_tree));
}

void MainWindowTest::theSlotsOfARunDoNothingWithoutOne()
{
    MainWindow &window = m_fixture->window();
    window.onTimerProgressReport();
    window.showLinecntResult(text("/a/b"), 3);
    window.searchFinished(false);
    window.linecntFinished(true);
    QCOMPARE(m_fixture->resultView()->toPlainText(), QString());
    QVERIFY(!m_fixture->isRunning());
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvik.log"))));
}

void MainWindowTest::aNameWithALineBreakIsOneLine()
{
#ifndef Q_OS_WIN
    m_fixture->tree.write(QStringLiteral("d\ne.txt"), QByteArray(100, '\0'));
    QVERIFY(m_fixture->search(m_tree, text("d*.txt *.none"), text("apple")));
    m_fixture->tree.write(QStringLiteral("x.none"), "x\n");
    QVERIFY(m_fixture->search(m_tree, text("d*.txt *.none"), text("apple")));
    const QStringList lines = m_fixture->resultText().split(QLatin1Char('\n'));
    QVERIFY(lines.last().endsWith(text("e.txt")));
    QVERIFY(lines.last().contains(m_tree));
    m_fixture->tree.write(QStringLiteral("d\ne.txt"), "one\n");
    m_fixture->fill(m_tree, text("d*.txt *.none"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultText().startsWith(text("      2 %1d").arg(m_tree)));
    QVERIFY(m_fixture->resultText().section(QLatin1Char('\n'), 0, 0).endsWith(text("e.txt")));
#endif
}

void MainWindowTest::aLineCountNeedsNoKeyword()
{
    m_fixture->fill(QString(), text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QCOMPARE(m_fixture->statusText(), text("検索パスを指定してください"));
    m_fixture->fill(m_tree, QString(), QString());
    m_fixture->window().lineCountGrep();
    QCOMPARE(m_fixture->statusText(), text("マスクを指定してください"));
    m_fixture->fill(m_tree, text("*.*"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->prompt.messages.isEmpty());
    QVERIFY(m_fixture->resultText().endsWith(text("合計行数 8  該当ファイル数 3")));
}

void MainWindowTest::aLineCountIsRefusedWhileARunGoesOn()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    m_fixture->window().lineCountGrep();
    QVERIFY(!m_fixture->window().findChild<QAction *>(text("actionLineCount"))->isEnabled());
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultText().contains(text("該当行数")));
    QVERIFY(!m_fixture->resultText().contains(text("合計行数")));
}

void MainWindowTest::anAbortedLineCountSaysSo()
{
    m_fixture->fill(text("/usr/"), text("*"), QString());
    m_fixture->window().lineCountGrep();
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    const QRegularExpression end(
        text("(^|\\n)/{23} 中止しました /{27}\\n合計行数 [\\d,]+  該当ファイル数 \\d+$"));
    QVERIFY2(end.match(m_fixture->resultText()).hasMatch(),
             qPrintable(m_fixture->resultText().right(200)));
}

void MainWindowTest::returnInEveryFieldSearches()
{
    m_fixture->child<QAbstractButton>("btnKeyword2")->click();
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    const QList<QWidget *> fields = {m_fixture->pathEdit(), m_fixture->mask(),
                                     m_fixture->keyword1(), m_fixture->keyword2(),
                                     m_fixture->keyword3()};
    for (QWidget *field : fields) {
        m_fixture->fill(m_tree, text("*.txt"), text("apple"));
        QTest::keyClick(field, field == m_fixture->mask() ? Qt::Key_Enter : Qt::Key_Return);
        QVERIFY2(m_fixture->isRunning(), qPrintable(field->objectName()));
        QVERIFY(m_fixture->waitUntilIdle());
        QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_tree);
    }
}

void MainWindowTest::escapeInKeyword1AsksToQuit()
{
    m_fixture->prompt.buttons = {QMessageBox::No, QMessageBox::Yes};
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Escape);
    QVERIFY(m_fixture->window().isVisible());
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Escape);
    QVERIFY(!m_fixture->window().isVisible());
    const UserPrompt::Message question = m_fixture->prompt.messages.first();
    QCOMPARE(question.title, text("sarvik"));
    QCOMPARE(question.text, text("終了します。よろしいですか？。"));
    QVERIFY(question.buttons == (QMessageBox::Yes | QMessageBox::No));
    QCOMPARE(question.defaultButton, QMessageBox::Yes);
}

void MainWindowTest::theTogglesFlipTheSettings()
{
    AppSettings &settings = AppSettings::instance();
    QVERIFY(settings.caseinsensitive && !settings.word && settings.regexp);
    m_fixture->child<QAbstractButton>("btnCase")->click();
    m_fixture->child<QAbstractButton>("btnWord")->click();
    m_fixture->child<QAbstractButton>("btnRegexp")->click();
    QVERIFY(!settings.caseinsensitive && settings.word && !settings.regexp);
    QVERIFY(!m_fixture->child<QAbstractButton>("btnCase")->isChecked());
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_O, Qt::AltModifier);
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_W, Qt::AltModifier);
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_BracketLeft, Qt::AltModifier);
    QVERIFY(settings.caseinsensitive && !settings.word && settings.regexp);
    QVERIFY(m_fixture->child<QAbstractButton>("btnCase")->isChecked());
}

void MainWindowTest::aPathIsAddedThroughTheDialog()
{
    m_fixture->fill(text("/a/"), QString(), QString());
    QTimer::singleShot(0, this, [this] {
        auto *dialog = qobject_cast<InputFolderDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), text("追加する検索パス"));
        auto *field = dialog->findChild<QLineEdit *>(text("lineEdit"));
        QCOMPARE(field->text(), WindowFixture::applicationFile(QString()));
        field->setText(text("/b"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    m_fixture->child<QAbstractButton>("btnPlus")->click();
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/a/\n/b/"));
    QCOMPARE(m_fixture->pathEdit()->textCursor().position(), 6);
}

void MainWindowTest::aListedPathIsNotAddedAgain()
{
    m_fixture->fill(text("/a\n/b/"), QString(), QString());
    QTimer::singleShot(0, this, [] {
        auto *field = QApplication::activeModalWidget()->findChild<QLineEdit *>(text("lineEdit"));
        field->setText(text("/a"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    m_fixture->child<QAbstractButton>("btnPlus")->click();
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/a\n/b/"));
    QCOMPARE(m_fixture->statusText(), text("既に登録されています"));
}

void MainWindowTest::theNotesOfThePathDialogAreShownAndHidden()
{
    QFile notes(WindowFixture::applicationFile(text("input_追加する検索パス.help")));
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("[a]\nwindow=0, 0, 200, 100\nline1=one\n[b]\nwindow=0, 110, 200, 100\nline1=two\n");
    notes.close();
    QVector<int> counts;
    QTimer::singleShot(0, this, [&counts] {
        QWidget *dialog = QApplication::activeModalWidget();
        auto *field = dialog->findChild<QLineEdit *>(text("lineEdit"));
        for (int press = 0; press < 2; ++press) {
            dialog->findChild<QToolButton *>(text("btnHelp"))->click();
            QTest::qWait(50);
            int visible = 0;
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (const QWidget *window : windows)
                visible += window->inherits("UserAssistWindow") && window->isVisible() ? 1 : 0;
            counts += visible;
        }
        QTest::keyClick(field, Qt::Key_Escape);
    });
    m_fixture->child<QAbstractButton>("btnPlus")->click();
    QCOMPARE(counts, QVector<int>({2, 0}));
    QVERIFY(notes.remove());
}

void MainWindowTest::theExtraConditionsFold()
{
    auto *button = m_fixture->child<QAbstractButton>("btnKeyword2");
    auto *group = m_fixture->child<QGroupBox>("extraGroup");
    auto *keyword3Group = m_fixture->child<QGroupBox>("keyword3Group");
    QVERIFY(!group->isVisible() && !keyword3Group->isVisible());
    button->click();
    QVERIFY(group->isVisible() && keyword3Group->isVisible());
    button->click();
    QVERIFY(group->isHidden() && keyword3Group->isHidden());
}

void MainWindowTest::keyword1IsPutBackUnlessItHoldsABackslash()
{
    for (const QString &keyword : {text("word"), text("\\bword")}) {
        m_fixture->keyword1()->setEditText(keyword);
        m_fixture->child<QAbstractButton>("btnKeyword1")->click();
        QCOMPARE(m_fixture->keyword1()->currentText(), keyword);
    }
}

void MainWindowTest::returnInTheCompletersPopupSearches_data()
{
    QTest::addColumn<bool>("choosesEntry");
    QTest::newRow("as typed") << false;
    QTest::newRow("with an entry chosen") << true;
}

void MainWindowTest::returnInTheCompletersPopupSearches()
{
    QFETCH(bool, choosesEntry);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    m_fixture->keyword1()->setFocus();
    m_fixture->keyword1()->lineEdit()->selectAll();
    QTest::keyClicks(m_fixture->keyword1(), text("app"));
    QWidget *popup = m_fixture->keyword1()->completer()->popup();
    QTRY_VERIFY(popup->isVisible());
    if (choosesEntry)
        QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    QVERIFY(m_fixture->isRunning());
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->window().windowTitle(),
             choosesEntry ? text("apple -- sarvik") : text("app -- sarvik"));
    QVERIFY(!m_fixture->keyword1()->completer()->popup()->isVisible());
}

void MainWindowTest::theClearButtonSearchesButNeverAborts()
{
    m_fixture->fill(m_tree, text("*.txt"), text("apple"));
    auto *clear = m_fixture->keyword1()->lineEdit()->findChild<QToolButton *>();
    clear->click();
    QCOMPARE(m_fixture->statusText(), text("キーワード１を指定してください"));
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    clear->click();
    QVERIFY(m_fixture->isRunning());
    QVERIFY(m_fixture->searchButton()->isEnabled());
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
}

void MainWindowTest::aPickedSecondKeywordIsSeen()
{
    m_fixture->window().setKeyword2(text("picked"));
    QVERIFY(m_fixture->keyword2()->isVisible());
    QCOMPARE(m_fixture->keyword2()->currentText(), text("picked"));
}

void MainWindowTest::theFormsPathsServeBeforeTheFirstSearch()
{
    m_fixture->fill(m_tree, text("*.txt"), text("apple"));
    QCOMPARE(m_fixture->window().searchPaths(), QStringList(m_tree));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    m_fixture->fill(text("/elsewhere/"), text("*.txt"), text("apple"));
    QCOMPARE(m_fixture->window().searchPaths(), QStringList(m_tree));
}

void MainWindowTest::aBroadcastLeavesTypingAlone()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    AppSettings::instance().keywordHistory->save();
    QLineEdit *field = m_fixture->keyword1()->lineEdit();
    field->setText(text("being typed"));
    field->setCursorPosition(3);
    m_fixture->window().onBoradCastMessage(1, 2);
    QCOMPARE(field->text(), text("being typed"));
    QCOMPARE(field->cursorPosition(), 3);
    QCOMPARE(m_fixture->keyword1()->itemText(0), text("apple"));
    QCOMPARE(m_fixture->keyword1()->completer()->model()->rowCount(), 1);
}

void MainWindowTest::findingGoesAroundTheEnd()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QTimer::singleShot(0, this, [] {
        QWidget *dialog = QApplication::activeModalWidget();
        dialog->findChild<QComboBox *>(text("le_keyword"))->setEditText(text("PIES"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    m_fixture->child<QToolButton>("findBtn")->click();
    const QTextCursor first = m_fixture->resultView()->textCursor();
    QCOMPARE(first.selectedText(), text("pies"));
    QCOMPARE(m_fixture->statusText(), QString());
    m_fixture->child<QToolButton>("findNextBtn")->click();
    QCOMPARE(m_fixture->resultView()->textCursor().selectionStart(), first.selectionStart());
    QCOMPARE(m_fixture->statusText(), text("末尾まで検索したので先頭に戻りました"));
    m_fixture->child<QToolButton>("findPrevBtn")->click();
    QCOMPARE(m_fixture->resultView()->textCursor().selectionStart(), first.selectionStart());
    QCOMPARE(m_fixture->statusText(), text("先頭まで検索したので末尾に戻りました"));
}

void MainWindowTest::documentsAreOpened()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    m_fixture->window().help();
    QCOMPARE(m_url,
             QUrl::fromLocalFile(WindowFixture::applicationFile(QString())
                                 + text("/doc/sarvik/index.html")));
    m_fixture->window().regexphelp();
    QCOMPARE(m_url,
             QUrl::fromLocalFile(WindowFixture::applicationFile(QString())
                                 + text("/doc/sarvik/sarvik_regexp.html")));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void MainWindowTest::switchesAndLayoutAreStored()
{
    m_fixture->child<QCheckBox>("subdirCheck")->setChecked(false);
    m_fixture->child<QCheckBox>("emptyFilesCheck")->setChecked(true);
    m_fixture->child<QCheckBox>("skippedCheck")->setChecked(true);
    m_fixture->window().resize(900, 700);
    m_fixture->open();
    const AppSettings &settings = AppSettings::instance();
    QVERIFY(!settings.subdir && settings.fname && settings.warningmsg);
    QVERIFY(!m_fixture->child<QCheckBox>("subdirCheck")->isChecked());
    QVERIFY(m_fixture->child<QCheckBox>("emptyFilesCheck")->isChecked());
    QVERIFY(m_fixture->child<QCheckBox>("skippedCheck")->isChecked());
    QVERIFY(settings.geometry.size() > 1);
    QVERIFY(settings.layouttoolbar.size() > 1);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
