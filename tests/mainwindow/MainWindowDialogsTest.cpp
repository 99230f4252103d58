#include "tests/mainwindow/WindowTest.h"

#include "settings/AppSettings.h"
#include "settings/SaveSteps.h"
#include "settings/dialogs/findDialog.h"
#include "settings/dialogs/optionDialog.h"
#include "settings/dialogs/verupdialog.h"
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

template <typename Dialog> Dialog *openDialog()
{
    return qobject_cast<Dialog *>(QApplication::activeModalWidget());
}

/// Ends a dialog by its button.
void press(const QDialog *dialog, QDialogButtonBox::StandardButton button)
{
    dialog->findChild<QDialogButtonBox *>()->button(button)->click();
}

} // namespace

/// The dialogs that the window opens, and what it does with their answers.
class MainWindowDialogsTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void acceptedOptionsAreShownAndSaved();
    void optionsThatCannotBeSavedHoldAndAreTold();
    void cancelledOptionsChangeNothing();
    void optionsAreRefusedWhileARunGoesOn();

    void theVersionDialogTellsWhatRuns();

    void theViewWithTheFocusIsSearched();
    void whatIsNotFoundIsToldSo();
    void aPatternThatIsNoneIsToldSo();
    void theNextOneOfNothingAsksForAText();
    void aCancelledFindFindsNothing();

private:
    void changeOptions(QDialogButtonBox::StandardButton end);
    /// Answers the find dialog that comes; an empty text cancels it.
    void answerFind(const QString &text);

    int m_findDialogs = 0;
};

void MainWindowDialogsTest::init()
{
    m_findDialogs = 0;
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "apple of the eye\n");
    m_fixture->open();
}

void MainWindowDialogsTest::changeOptions(QDialogButtonBox::StandardButton end)
{
    bool opened = false;
    QTimer::singleShot(0, this, [&opened, end] {
        auto *dialog = openDialog<optionDialog>();
        QVERIFY(dialog);
        opened = true;
        dialog->findChild<QSpinBox *>(text("fontsize1"))->setValue(19);
        dialog->findChild<QSpinBox *>(text("fontsize2"))->setValue(21);
        dialog->findChild<QSpinBox *>(text("fontsize3"))->setValue(23);
        dialog->findChild<QSpinBox *>(text("prvtabpix"))->setValue(7);
        dialog->findChild<QPushButton *>(text("pb_c01"))->click();
        press(dialog, end);
    });
    m_fixture->prompt.colours = {QColor(0x12, 0x34, 0x56)};
    m_fixture->child<QToolButton>("optionBtn")->click();
    QVERIFY(opened);
}

void MainWindowDialogsTest::acceptedOptionsAreShownAndSaved()
{
    changeOptions(QDialogButtonBox::Ok);
    QCOMPARE(m_fixture->pathEdit()->font().pointSize(), 19);
    QCOMPARE(m_fixture->resultView()->font().pointSize(), 21);
    QCOMPARE(m_fixture->preview()->font().pointSize(), 23);
    for (const GrepEditor *view : {m_fixture->resultView(), m_fixture->preview()}) {
        QCOMPARE(view->palette().color(QPalette::Base), QColor(0x12, 0x34, 0x56));
        const qreal blank = QFontMetricsF(view->font()).horizontalAdvance(QLatin1Char(' '));
        QCOMPARE(view->tabStopDistance(), 7 * blank);
    }
    const QByteArray saved = WindowFixture::readApplicationFile(text("sarvik.ini"));
    QVERIFY(saved.contains("backcolor=#123456\r\n"));
    QVERIFY(saved.contains("tabcolm=7\r\n"));
    QVERIFY(saved.contains("=21\r\n"));
    QVERIFY(saved.contains("=23\r\n"));
}

void MainWindowDialogsTest::optionsThatCannotBeSavedHoldAndAreTold()
{
    SaveSteps::setObserver([](SaveSteps::Step step) { return step != SaveSteps::Step::WriteNew; });
    changeOptions(QDialogButtonBox::Ok);
    SaveSteps::setObserver(nullptr);
    QCOMPARE(m_fixture->resultView()->font().pointSize(), 21);
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvik.ini"))));
    QCOMPARE(m_fixture->statusText(), text("設定を保存できませんでした"));
}

void MainWindowDialogsTest::cancelledOptionsChangeNothing()
{
    const QFont font = m_fixture->resultView()->font();
    const qreal tabs = m_fixture->resultView()->tabStopDistance();
    const QColor ground = m_fixture->resultView()->palette().color(QPalette::Base);
    changeOptions(QDialogButtonBox::Cancel);
    QCOMPARE(m_fixture->resultView()->font(), font);
    QCOMPARE(m_fixture->resultView()->tabStopDistance(), tabs);
    QCOMPARE(m_fixture->resultView()->palette().color(QPalette::Base), ground);
    QVERIFY(AppSettings::instance().backcolor != QColor(0x12, 0x34, 0x56));
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvik.ini"))));
}

void MainWindowDialogsTest::optionsAreRefusedWhileARunGoesOn()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QVERIFY(!m_fixture->child<QToolButton>("optionBtn")->isEnabled());
    QVERIFY(!m_fixture->window().findChild<QAction *>(text("actionOptions"))->isEnabled());
    m_fixture->window().optionDialogPopup();
    QCOMPARE(m_fixture->statusText(), text("検索中です。中止してから実行してください"));
    QVERIFY(m_fixture->isRunning());
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
}

void MainWindowDialogsTest::theVersionDialogTellsWhatRuns()
{
    bool opened = false;
    QTimer::singleShot(0, this, [&opened] {
        auto *dialog = openDialog<verupdialog>();
        QVERIFY(dialog);
        opened = true;
        QCOMPARE(dialog->findChild<QLabel *>(text("lbl_version"))->text(),
                 text("sarvik ver 5.00\nQt ") + QLatin1String(qVersion()));
        const auto *icon = dialog->findChild<QLabel *>(text("lbl_icon"));
        const QPixmap shown = icon->pixmap(Qt::ReturnByValue);
        QVERIFY(!shown.isNull());
        QCOMPARE(shown.toImage(), QPixmap(text(":/icon/sarvik.png")).toImage());
        dialog->findChild<QPushButton *>(text("pb_ok"))->click();
    });
    m_fixture->window().findChild<QAction *>(text("actionVersion"))->trigger();
    QVERIFY(opened);
    QVERIFY(!QApplication::activeModalWidget());
}

void MainWindowDialogsTest::answerFind(const QString &answer)
{
    QTimer::singleShot(0, this, [this, answer] {
        auto *dialog = openDialog<findDialog>();
        QVERIFY(dialog);
        ++m_findDialogs;
        dialog->findChild<QComboBox *>(text("le_keyword"))->setEditText(answer);
        QTest::keyClick(dialog, answer.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    });
}

void MainWindowDialogsTest::theViewWithTheFocusIsSearched()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("three")));
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Down);
    QVERIFY(!m_fixture->preview()->toPlainText().isEmpty());
    const int place = m_fixture->resultView()->textCursor().position();
    m_fixture->preview()->setFocus();
    answerFind(text("APPLE"));
    m_fixture->window().findDialogPopup();
    QCOMPARE(m_fixture->preview()->textCursor().selectedText(), text("apple"));
    QCOMPARE(m_fixture->preview()->textCursor().blockNumber(), 2);
    m_fixture->window().findprev();
    QCOMPARE(m_fixture->preview()->textCursor().blockNumber(), 0);
    m_fixture->window().findnext();
    QCOMPARE(m_fixture->preview()->textCursor().blockNumber(), 2);
    QCOMPARE(m_fixture->resultView()->textCursor().position(), place);
    QVERIFY(!m_fixture->resultView()->textCursor().hasSelection());
    m_fixture->resultView()->setFocus();
    m_fixture->window().findnext();
    QCOMPARE(m_fixture->resultView()->textCursor().selectedText(), text("apple"));
    QCOMPARE(m_findDialogs, 1);
}

void MainWindowDialogsTest::whatIsNotFoundIsToldSo()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    answerFind(text("nowhere"));
    m_fixture->window().findDialogPopup();
    QCOMPARE(m_fixture->statusText(), text("「nowhere」は見つかりません"));
    QVERIFY(!m_fixture->resultView()->textCursor().hasSelection());
}

void MainWindowDialogsTest::aPatternThatIsNoneIsToldSo()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    AppSettings::instance().findregexp = true;
    answerFind(text("(apple"));
    m_fixture->window().findDialogPopup();
    QCOMPARE(m_fixture->statusText(), text("「(apple」は正規表現として正しくありません"));
    QVERIFY(!m_fixture->resultView()->textCursor().hasSelection());
}

void MainWindowDialogsTest::theNextOneOfNothingAsksForAText()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    answerFind(text("pies"));
    m_fixture->window().findnext();
    QCOMPARE(m_findDialogs, 1);
    QCOMPARE(m_fixture->resultView()->textCursor().selectedText(), text("pies"));
    m_fixture->window().findnext();
    QCOMPARE(m_findDialogs, 1);
}

void MainWindowDialogsTest::aCancelledFindFindsNothing()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    answerFind(QString());
    m_fixture->window().findprev();
    QCOMPARE(m_findDialogs, 1);
    QVERIFY(!m_fixture->resultView()->textCursor().hasSelection());
    QCOMPARE(m_fixture->lastTold(), text("セーブしました"));
}

QTEST_MAIN(MainWindowDialogsTest)
#include "MainWindowDialogsTest.moc"
