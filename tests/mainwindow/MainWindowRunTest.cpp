#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "settings/ParameterFile.h"
#include "tests/support/RecordingLauncher.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QSpinBox>
#include <QTest>

#include <functional>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const char kWholeMaskQuestion[] =
    "マスクが(*.*)で指定されると、テキストファイル以外も対象になります。\nよろしいですか？。";

} // namespace

/// Searches and line counts from their start to their end. A tree of two folders is
/// searched.
class MainWindowRunTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aRequestThatCannotRunIsRefused_data();
    void aRequestThatCannotRunIsRefused();
    void aSearchOfAllFilesAsksFirst();

    void hitsAreListedToTheLetter();
    void conditionsAreToldAtTheEnd();
    void whatIsTypedDuringASearchIsNotToldAtItsEnd();
    void theBoxesAtTheEndSayWhatIsTold();
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
    void aLineCountLeavesNoPathInTheStatusBar();
    void aMissingPathIsToldOfALineCount();
    void aMissingPathIsToldOfASearchWhenItIsSaved();
    void aSingleFileThatIsLeftOutIsTold();
    void aSearchThatStartsMeanwhileIsNotTalkedOver();
    void whenEveryPathIsThereNothingIsTold();
    void aLineOfALineCountStartsNoEditor();
    void pastSearchesAreRefusedWhileARunGoesOn();

private:
    QString m_tree;
};

void MainWindowRunTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->tree.write(QStringLiteral("sub/c.txt"), "\tapple\n");
    m_fixture->open();
}

void MainWindowRunTest::aRequestThatCannotRunIsRefused_data()
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

void MainWindowRunTest::aRequestThatCannotRunIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, mask);
    QFETCH(QString, keyword);
    m_fixture->fill(path, mask, keyword);
    m_fixture->searchButton()->setFocus();
    m_fixture->searchButton()->click();
    QTEST(m_fixture->statusText(), "message");
    QCOMPARE(m_fixture->window().focusWidget(), m_fixture->searchButton());
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), path);
    QCOMPARE(m_fixture->mask()->currentText(), mask);
    QCOMPARE(m_fixture->keyword1()->currentText(), keyword);
    QVERIFY(!m_fixture->isRunning());
    QCOMPARE(m_fixture->window().windowTitle(), text("sarvik64"));
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvikpara.ini"))));
}

void MainWindowRunTest::aSearchOfAllFilesAsksFirst()
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

void MainWindowRunTest::hitsAreListedToTheLetter()
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

void MainWindowRunTest::conditionsAreToldAtTheEnd()
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

void MainWindowRunTest::whatIsTypedDuringASearchIsNotToldAtItsEnd()
{
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("pears"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(1);
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    m_fixture->keyword3()->setEditText(text("pies"));
    m_fixture->fill(m_tree, text("*.txt"), text("apple"));
    m_fixture->searchButton()->click();
    m_fixture->keyword2()->setEditText(text("later"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(7);
    m_fixture->keyword3()->setEditText(text("later"));
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY2(m_fixture->resultText().contains(text("追加条件：「pears」が 1 行以内にある場合\n"
                                                   "追加条件：「pies」を含まない行のみ\n"
                                                   "該当ファイル数 1 / 3\n")),
             qPrintable(m_fixture->resultText()));
}

void MainWindowRunTest::theBoxesAtTheEndSayWhatIsTold()
{
    AppSettings::instance().excusionfile = QStringList(text("b.txt"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(1);
    auto *group = m_fixture->child<QGroupBox>("extraGroup");
    auto *box = m_fixture->child<QCheckBox>("useKeyword2");
    auto *group3 = m_fixture->child<QGroupBox>("keyword3Group");
    auto *skipped = m_fixture->child<QCheckBox>("skippedCheck");
    const QString head = text("---------- Warning skip foler or file ------------");
    const auto searchAndChange = [&](bool before, bool after) {
        for (const bool checked : {before, after}) {
            group->setChecked(checked);
            box->setChecked(checked);
            group3->setChecked(checked);
            skipped->setChecked(checked);
            m_fixture->keyword2()->setEditText(text("pears"));
            m_fixture->keyword3()->setEditText(text("pies"));
            m_fixture->fill(m_tree, text("*.txt"), text("apple"));
            if (!m_fixture->isRunning())
                m_fixture->searchButton()->click();
        }
        QVERIFY(m_fixture->waitUntilIdle());
    };
    searchAndChange(true, false);
    QVERIFY(!m_fixture->resultText().contains(text("追加条件")));
    QVERIFY(!m_fixture->resultText().contains(head));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1\n")));
    // Checked too late to take part: there is no keyword to tell.
    searchAndChange(false, true);
    QVERIFY(m_fixture->resultText().contains(text("追加条件：「」が ")));
    QVERIFY(m_fixture->resultText().contains(text("追加条件：「」を含まない行のみ\n")));
    QVERIFY(m_fixture->resultText().contains(head));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 3\n")));
}

void MainWindowRunTest::keyword2NeedsItsGroupAndItsCheckBox_data()
{
    QTest::addColumn<bool>("group");
    QTest::addColumn<bool>("checkBox");
    QTest::addColumn<bool>("isUsed");
    QTest::newRow("both") << true << true << true;
    QTest::newRow("the group alone") << true << false << false;
    QTest::newRow("the check box alone") << false << true << false;
    QTest::newRow("neither") << false << false << false;
}

void MainWindowRunTest::keyword2NeedsItsGroupAndItsCheckBox()
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

void MainWindowRunTest::keyword3NeedsItsGroupAlone()
{
    m_fixture->keyword3()->setEditText(text("pies|\t"));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 3")));
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1")));
}

void MainWindowRunTest::skippedFilesAreListedOnlyWhenAskedFor()
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

void MainWindowRunTest::unreadableFilesAreAlwaysListed()
{
    m_fixture->tree.write(QStringLiteral("binary.txt"), QByteArray(100, '\0'));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("---------- Read Error File ------------\n")));
    QVERIFY(m_fixture->resultText().contains(text("binary.txt")));
}

void MainWindowRunTest::filesWithoutHitsAreNamedWhenAskedFor()
{
    m_fixture->child<QCheckBox>("emptyFilesCheck")->setChecked(true);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("::%1b.txt\n").arg(m_tree)));
    QVERIFY(m_fixture->resultText().contains(text("該当ファイル数 3 / 3\n")));
}

void MainWindowRunTest::subfoldersAreLeftOutWhenAskedFor()
{
    m_fixture->child<QCheckBox>("subdirCheck")->setChecked(false);
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("該当ファイル数 1 / 2\n")));
}

void MainWindowRunTest::aSearchRewritesTheParameterFile()
{
    QVERIFY(m_fixture->search(m_tree.chopped(1), text("*.txt"), text("灯台")));
    const ParameterFile::Content content =
        ParameterFile(WindowFixture::applicationFile(QString())).read();
    QCOMPARE(content.pathlist, QStringList(m_tree));
    QCOMPARE(content.mask, text("*.txt"));
    QCOMPARE(content.findword, text("灯台"));
}

void MainWindowRunTest::aSearchIsTitledAfterItsKeyword()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(m_fixture->window().windowTitle(), text("apple -- sarvik"));
}

void MainWindowRunTest::aSearchRemembersKeywordAndSwitches()
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

void MainWindowRunTest::aSearchRemembersItsMask()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QVERIFY(m_fixture->search(m_tree, text("*.c"), text("apple")));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    const QStringList expected = {text("*.txt"), text("*.c")};
    QCOMPARE(AppSettings::instance().maskhistory, expected);
    QCOMPARE(m_fixture->mask()->count(), 2);
}

void MainWindowRunTest::theHistoryOfKeyword2HoldsNoMoreThanFifty()
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

void MainWindowRunTest::aPastKeywordComesBackWithItsSwitches()
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

void MainWindowRunTest::aFinishedSearchLeavesTheWindowIdle()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QCOMPARE(m_fixture->searchButton()->text(), text("検索開始"));
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QVERIFY(!m_fixture->child<QWidget>("progressPanel")->isVisible());
    QVERIFY(m_fixture->window().findChild<QAction *>(text("actionOptions"))->isEnabled());
    QVERIFY(m_fixture->resultView()->hasFocus());
}

void MainWindowRunTest::escapeAbortsARun()
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

void MainWindowRunTest::escapeAbortsARunWhereverTheFocusIs_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"subdirCheck", "btnPlus", "btnCase", "btnKeyword2", "extraGroup", "useKeyword2",
          "lineDistance", "keyword3Group", "pushButton", "preview", "pathEdit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void MainWindowRunTest::escapeAbortsARunWhereverTheFocusIs()
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

void MainWindowRunTest::theButtonAbortsARun()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QTest::qWait(50);
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QVERIFY(m_fixture->resultText().contains(text("中止しました")));
}

void MainWindowRunTest::aSecondSearchFollowsAnAbortedOne()
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

void MainWindowRunTest::aWindowIsDestroyedDuringARun()
{
    m_fixture->fill(text("/usr/"), text("*"), text("a"));
    m_fixture->searchButton()->click();
    QTest::qWait(100);
    m_fixture->close();
    // What was asked is remembered all the same.
    QVERIFY(WindowFixture::readApplicationFile(text("keywordhistory.ini")).contains("101a"));
}

void MainWindowRunTest::linesAreCountedToTheLetter()
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

void MainWindowRunTest::theSlotsOfARunDoNothingWithoutOne()
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

void MainWindowRunTest::aNameWithALineBreakIsOneLine()
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

void MainWindowRunTest::aLineCountNeedsNoKeyword()
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

void MainWindowRunTest::aLineCountIsRefusedWhileARunGoesOn()
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

void MainWindowRunTest::anAbortedLineCountSaysSo()
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

void MainWindowRunTest::aLineCountLeavesNoPathInTheStatusBar()
{
    m_fixture->fill(m_tree, text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    m_fixture->window().statusBar()->showMessage(m_tree);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statusText(), QString());
}

void MainWindowRunTest::aMissingPathIsToldOfALineCount()
{
    const QString gone = m_tree + text("gone/");
    m_fixture->fill(m_tree + text("\n") + gone, text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->statusText(), text("検索パスがありません: %1").arg(gone));
}

void MainWindowRunTest::aMissingPathIsToldOfASearchWhenItIsSaved()
{
    const QString gone = m_tree + text("gone/");
    QVERIFY(m_fixture->search(gone, text("*.txt"), text("apple")));
    const QString missing = text("検索パスがありません: %1").arg(gone);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), missing, kPatienceMilliseconds);
    const QStringList told = m_fixture->told();
    QCOMPARE(told.mid(told.size() - 2), QStringList({text("セーブしました"), missing}));
    // Said once.
    m_fixture->window().statusBar()->showMessage(m_tree);
    m_fixture->window().statusBar()->clearMessage();
    QCOMPARE(m_fixture->statusText(), QString());
}

void MainWindowRunTest::aSingleFileThatIsLeftOutIsTold()
{
    const QString told = text("対象のファイルが１つだけのため、検索されませんでした");
    QVERIFY(m_fixture->search(m_tree, text("a.txt"), text("apple")));
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), told, kPatienceMilliseconds);
    QVERIFY(m_fixture->search(m_tree, text("a.txt b.txt"), text("apple")));
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), QString(), kPatienceMilliseconds);
}

void MainWindowRunTest::aSearchThatStartsMeanwhileIsNotTalkedOver()
{
    QVERIFY(m_fixture->search(m_tree + text("gone/"), text("*.txt"), text("apple")));
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), QString(), kPatienceMilliseconds);
}

void MainWindowRunTest::whenEveryPathIsThereNothingIsTold()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("no such text")));
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->statusText() != text("セーブしました"),
                             kPatienceMilliseconds);
    QCOMPARE(m_fixture->statusText(), QString());
}

void MainWindowRunTest::aLineOfALineCountStartsNoEditor()
{
    RecordingLauncher launcher;
    AppSettings::instance().editor = text("ed");
    m_fixture->resultView()->setLauncher(&launcher);
    m_fixture->fill(m_tree, text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    m_fixture->resultView()->setFocus();
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Return);
    QVERIFY(launcher.started.isEmpty());
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Return);
    QCOMPARE(launcher.started.size(), 1);
}

void MainWindowRunTest::pastSearchesAreRefusedWhileARunGoesOn()
{
    QVERIFY(m_fixture->search(m_tree, text("*.txt"), text("apple")));
    MainWindow &window = m_fixture->window();
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QAction entry(nullptr);
    entry.setData(0);
    const std::function<void()> refused[] = {[&] { window.arrowBack(); },
                                             [&] { window.arrowForward(); },
                                             [&] { window.openLogfile(&entry); },
                                             [&] {
                                                 window.openFile();
                                             }};
    for (const auto &slot : refused) {
        window.statusBar()->clearMessage();
        slot();
        QCOMPARE(m_fixture->statusText(), text("検索中です。中止してから実行してください"));
        QVERIFY(m_fixture->isRunning());
        QCOMPARE(m_fixture->keyword1()->currentText(), text("no such text anywhere"));
    }
    window.statusBar()->clearMessage();
    entry.setData(-1);
    window.openLogfile(&entry);
    QCOMPARE(m_fixture->statusText(), QString());
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
}

QTEST_MAIN(MainWindowRunTest)
#include "MainWindowRunTest.moc"
