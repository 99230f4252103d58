#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/InputFolderDialog.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCompleter>
#include <QGroupBox>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QImage imageOf(const QIcon &icon)
{
    return icon.pixmap(24, 24).toImage();
}

/// Of a file of the program's images.
QImage imageOf(const QString &name)
{
    const QString file = text(":/icon/%1.png").arg(name);
    if (!QFile::exists(file))
        qFatal("no image %s", qPrintable(name));
    return imageOf(QIcon(file));
}

} // namespace

/// The window's own part: what happens when. A tree of two folders is searched.
class MainWindowTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void theSlotsStandInTheirOrder();
    void theWindowStartsWithTheProgramsTitle();
    void actionsCarryTheirTexts_data();
    void actionsCarryTheirTexts();
    void toolButtonsCarryTheirTexts_data();
    void toolButtonsCarryTheirTexts();
    void theKeyOfTheBackMenuIsToldUnderTheMouse();

    void aHandedOverRequestStandsInTheForm();
    void theMaskOfAllFilesIsNotTakenOver();
    void theNewestMaskStandsThereAtTheStart_data();
    void theNewestMaskStandsThereAtTheStart();
    void downLeadsToTheNewestKeywordAtTheStart();
    void aKeywordThatBeginsWithAQuoteLosesAllQuotes();
    void aQuoteInsideAKeywordStays();
    void aHandedOverListFileEndsTheList();
    void keyword1HasTheFocusAndIsSelected();

    void returnInEveryFieldSearches();
    void escapeInKeyword1AsksToQuit();
    void theTogglesFlipTheSettings();
    void aPathIsAddedThroughTheDialog();
    void aListedPathIsNotAddedAgain();
    void aListFileIsAddedOnceAndSearched();
    void theNotesOfThePathDialogAreShownAndHidden();
    void theExtraConditionsFold();
    void keyword1IsPutBackUnlessItHoldsABackslash_data();
    void keyword1IsPutBackUnlessItHoldsABackslash();
    void returnInTheCompletersPopupSearches_data();
    void returnInTheCompletersPopupSearches();
    void theClearButtonSearchesButNeverAborts();
    void aPickedSecondKeywordIsSeen();
    void theFormsPathsServeBeforeTheFirstSearch();
    void aBroadcastLeavesTypingAlone();
    void aBroadcastBringsAFreshCompleterWithoutSignals();

    void findingGoesAroundTheEnd();
    void theOtherKeysOfFindingFindToo();
    void findingByAKeyNamesItselfInTheToolTip();
    void switchesAndLayoutAreStored();
    void aSmallWindowThatIsMovedIntoTheScreenKeepsItsSize();

private:
    QString m_tree;
};

void MainWindowTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->tree.write(QStringLiteral("sub/c.txt"), "\tapple\n");
    m_fixture->open();
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
    QTest::addColumn<QString>("icon");
    const auto row = [](const char *name, const char *label, const char *shortcut,
                        const char *statusTip, const char *icon) {
        QTest::newRow(name) << text(name) << text(label) << text(shortcut) << text(statusTip)
                            << text(icon);
    };
    row("actionOpenLog", "(&R) 過去の検索ログ読み込み", "", "過去の検索ログファイルを読み込みます",
        "application_put");
    row("actionQuit", "(&X) 終了", "Ctrl+Q", "終了します", "exit");
    row("actionOptions", "(&O) 設定", "", "設定を変更します", "option");
    row("actionLineCount", "(&L) 行数カウント集計", "",
        "パスマスクで該当するファイルの行数だけをカウント集計します", "counter");
    row("actionHelp", "(&H) 操作説明", "", "操作説明を表示します", "question");
    row("actionRegExpHelp", "(&R) 正規表現サンプル", "", "正規表現のサンプルを表示します",
        "regular_expression_delimiter");
    row("actionVersion", "(&V) バージョン", "", "バージョン表示", "sarvik");
    row("actionAboutQt", "(&Q) Ｑｔ について", "", "Ｑｔ ライブラリについて", "qt-icon");
}

void MainWindowTest::actionsCarryTheirTexts()
{
    QFETCH(QString, name);
    const auto *action = m_fixture->window().findChild<QAction *>(name);
    QVERIFY(action);
    QTEST(action->text(), "label");
    QTEST(action->shortcut().toString(), "shortcut");
    QTEST(action->statusTip(), "statusTip");
    QFETCH(QString, icon);
    QCOMPARE(imageOf(action->icon()), imageOf(icon));
}

void MainWindowTest::toolButtonsCarryTheirTexts_data()
{
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QString>("icon");
    QTest::newRow("arrowBackBtn") << text("Alt+Left") << text("arrow-back");
    QTest::newRow("arrowForwardBtn") << text("Alt+Right") << text("arrow-forward");
    QTest::newRow("findBtn") << text("Ctrl+F") << text("edit-find-4");
    QTest::newRow("findNextBtn") << text("Ctrl+Down") << text("go-down-5");
    QTest::newRow("findPrevBtn") << text("Ctrl+Up") << text("go-up-5");
    QTest::newRow("optionBtn") << QString() << text("option");
}

void MainWindowTest::toolButtonsCarryTheirTexts()
{
    const auto *button = m_fixture->child<QToolButton>(QTest::currentDataTag());
    QVERIFY(button);
    QTEST(button->shortcut().toString(), "shortcut");
    QFETCH(QString, icon);
    QCOMPARE(imageOf(button->icon()), imageOf(icon));
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

void MainWindowTest::theNewestMaskStandsThereAtTheStart_data()
{
    QTest::addColumn<QString>("requested");
    QTest::addColumn<QString>("shown");
    QTest::newRow("no request") << QString() << text("*.new");
    QTest::newRow("all files") << text("*.*") << text("*.new");
    QTest::newRow("a mask") << text("*.cpp") << text("*.cpp");
}

void MainWindowTest::theNewestMaskStandsThereAtTheStart()
{
    QFETCH(QString, requested);
    AppSettings::instance().maskhistory = QStringList({text("*.new"), text("*.old")});
    m_fixture->open({}, requested);
    QTEST(m_fixture->mask()->currentText(), "shown");
    QCOMPARE(m_fixture->mask()->count(), 2);
}

void MainWindowTest::downLeadsToTheNewestKeywordAtTheStart()
{
    AppSettings::instance().keywordHistory->add(text("old"), false, false, false);
    AppSettings::instance().keywordHistory->add(text("new"), false, false, false);
    m_fixture->open();
    QCOMPARE(m_fixture->keyword1()->currentText(), QString());
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Down);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("new"));
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
        // What is typed is the path.
        QCOMPARE(field->text(), QString());
        QTest::keyClicks(field, text("/b"));
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

void MainWindowTest::aListFileIsAddedOnceAndSearched()
{
    const QString entry = QLatin1Char('@') + m_fixture->tree.filePath(text("list.ini"));
    m_fixture->tree.write(text("list.ini"), "files=" + m_tree.toUtf8() + "\n");
    m_fixture->fill(QString(), text("*.txt"), text("apple"));
    const auto add = [&] {
        QTimer::singleShot(0, this, [entry] {
            auto *field =
                QApplication::activeModalWidget()->findChild<QLineEdit *>(text("lineEdit"));
            field->setText(entry);
            QTest::keyClick(field, Qt::Key_Return);
        });
        m_fixture->child<QAbstractButton>("btnPlus")->click();
    };
    add();
    const QString line = m_fixture->pathEdit()->toPlainText();
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY2(m_fixture->resultText().contains(text("該当行数 3\n")),
             qPrintable(m_fixture->resultText()));
    // With and without the slash it is the same file.
    add();
    QCOMPARE(m_fixture->statusText(), text("既に登録されています"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), line);
    m_fixture->pathEdit()->setPlainText(entry);
    add();
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), entry);
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

void MainWindowTest::keyword1IsPutBackUnlessItHoldsABackslash_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("cursor");
    QTest::newRow("put back") << text("word") << 4;
    QTest::newRow("a backslash") << text("\\bword") << 0;
}

/// A text that is put back has the cursor at its end.
void MainWindowTest::keyword1IsPutBackUnlessItHoldsABackslash()
{
    QFETCH(QString, keyword);
    m_fixture->keyword1()->setEditText(keyword);
    m_fixture->keyword1()->lineEdit()->setCursorPosition(0);
    m_fixture->child<QAbstractButton>("btnKeyword1")->click();
    QCOMPARE(m_fixture->keyword1()->currentText(), keyword);
    QTEST(m_fixture->keyword1()->lineEdit()->cursorPosition(), "cursor");
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
    QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), kPatienceMilliseconds);
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

void MainWindowTest::aBroadcastBringsAFreshCompleterWithoutSignals()
{
    QComboBox *combo = m_fixture->keyword1();
    const QPointer<QCompleter> former = combo->completer();
    AppSettings::instance().keywordHistory->add(text("new"), false, false, false);
    AppSettings::instance().keywordHistory->save();
    QVector<bool> blocked;
    const auto note = [&] {
        blocked += m_fixture->window().signalsBlocked();
    };
    connect(combo->model(), &QAbstractItemModel::rowsInserted, this, note);
    m_fixture->window().onBoradCastMessage(1, 2);
    QVERIFY(!blocked.isEmpty());
    QVERIFY(!blocked.contains(false));
    QVERIFY(!m_fixture->window().signalsBlocked());
    const QCompleter *fresh = combo->completer();
    QVERIFY(fresh && fresh != former);
    QCOMPARE(fresh->completionMode(), QCompleter::PopupCompletion);
    QCOMPARE(fresh->caseSensitivity(), Qt::CaseInsensitive);
    QCOMPARE(fresh->model()->index(0, 0).data().toString(), text("new"));
    QTRY_VERIFY_WITH_TIMEOUT(former.isNull(), kPatienceMilliseconds);
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
    const QString place = m_tree + text("a.txt  ---- 3:7");
    QCOMPARE(m_fixture->statusText(), place);
    m_fixture->child<QToolButton>("findNextBtn")->click();
    QCOMPARE(m_fixture->resultView()->textCursor().selectionStart(), first.selectionStart());
    QCOMPARE(m_fixture->statusText(), text("末尾まで検索したので先頭に戻りました"));
    m_fixture->child<QToolButton>("findPrevBtn")->click();
    QCOMPARE(m_fixture->resultView()->textCursor().selectionStart(), first.selectionStart());
    QCOMPARE(m_fixture->statusText(), text("先頭まで検索したので末尾に戻りました"));
    // Then it tells the place again.
    auto *timer = m_fixture->window().findChild<QTimer *>(text("findMessageTimer"));
    QCOMPARE(timer->interval(), 5000);
    timer->start(0);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), place, kPatienceMilliseconds);
}

void MainWindowTest::theOtherKeysOfFindingFindToo()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QTimer::singleShot(0, this, [] {
        QWidget *dialog = QApplication::activeModalWidget();
        dialog->findChild<QComboBox *>(text("le_keyword"))->setEditText(text("apple"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    m_fixture->child<QToolButton>("findBtn")->click();
    m_fixture->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_fixture->window(), kPatienceMilliseconds));
    GrepEditor *view = m_fixture->resultView();
    view->moveCursor(QTextCursor::Start);
    QTest::keyClick(view, Qt::Key_F3);
    const int first = view->textCursor().selectionStart();
    QVERIFY(view->textCursor().hasSelection());
    QTest::keyClick(view, Qt::Key_F3);
    const int second = view->textCursor().selectionStart();
    QVERIFY(second > first);
    QTest::keyClick(view, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(view->textCursor().selectionStart(), first);
    // From the form, too: a field has no use for it.
    QTest::keyClick(m_fixture->keyword1()->lineEdit(), Qt::Key_F3);
    QCOMPARE(view->textCursor().selectionStart(), second);
}

void MainWindowTest::findingByAKeyNamesItselfInTheToolTip()
{
    QVERIFY(
        m_fixture->child<QToolButton>("findNextBtn")->toolTip().endsWith(text("(Ctrl+Down, F3)")));
    QVERIFY(m_fixture->child<QToolButton>("findPrevBtn")
                ->toolTip()
                .endsWith(text("(Ctrl+Up, Shift+F3)")));
    QVERIFY(m_fixture->child<QToolButton>("findBtn")->toolTip().endsWith(text("(Ctrl+F)")));
    QVERIFY(!m_fixture->child<QToolButton>("optionBtn")->toolTip().contains(QLatin1Char('(')));
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

void MainWindowTest::aSmallWindowThatIsMovedIntoTheScreenKeepsItsSize()
{
    m_fixture->window().resize(700, 1);
    const QSize small = m_fixture->window().size();
    m_fixture->window().move(-60, 100);
    m_fixture->open();
    QCOMPARE(m_fixture->window().size(), small);
    QVERIFY(m_fixture->window().screen()->availableGeometry().contains(
        m_fixture->window().frameGeometry()));
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
