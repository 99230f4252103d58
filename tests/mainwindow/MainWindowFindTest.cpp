#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Of "needle"; one that takes its time.
const char *const kPattern = "(n|m)(e|a)(e|a)dle";

} // namespace

/// Finding a text in the two views of the window.
class MainWindowFindTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void theSwitchesOfTheSettingsDecide_data();
    void theSwitchesOfTheSettingsDecide();
    void inThePreviewItGoesAroundBothEnds();
    void thePlaceStaysInTheStatusBar();
    void theHitThatIsFoundFromTheFormIsShown();
    void aWordOfTheFindGivesThePlaceBack();
    void aMessageThatCameMeanwhileStays();
    void noPlaceIsToldOfALineThatIsNone();

    void aLongTextIsSearchedWhileTheWindowAnswers_data();
    void aLongTextIsSearchedWhileTheWindowAnswers();
    void escapeEndsTheSearchAndNothingElse();
    void aMovedCursorEndsTheSearch();
    void theOtherViewEndsTheSearch();
    void anEmptiedViewEndsTheSearch();
    void theSameKeyAgainDisturbsNothing();
    void theOtherDirectionBeginsAnew();
    void anotherResultEndsTheSearch();
    void aTextThatStillComesIsNotSearched_data();
    void aTextThatStillComesIsNotSearched();

private:
    /// Through the dialog.
    void find(const QString &wanted);
    bool search() const
    {
        return m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple"));
    }
    /// Goes to the line of the result view that holds part.
    void select(const QString &part) const;
    /// So long that one turn does not get through it with kPattern.
    void showLongText() const;
    bool isSearching() const { return m_fixture->statusText().contains(text("検索しています")); }
    QTextCursor cursor() const { return m_fixture->resultView()->textCursor(); }
    QTimer *messageTimer() const
    {
        return m_fixture->window().findChild<QTimer *>(text("findMessageTimer"));
    }
    QString place(const char *name, const char *at) const
    {
        return m_fixture->tree.filePath(text(name)) + text("  ---- ") + text(at);
    }
};

void MainWindowFindTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(text("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(text("b.txt"), "an apple tree\n");
    m_fixture->open();
}

void MainWindowFindTest::find(const QString &wanted)
{
    bool asked = false;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        asked = true;
        dialog->findChild<QComboBox *>(text("le_keyword"))->setEditText(wanted);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    m_fixture->window().findDialogPopup();
    QVERIFY(asked);
}

void MainWindowFindTest::select(const QString &part) const
{
    GrepEditor *view = m_fixture->resultView();
    view->setFocus();
    const QTextCursor found = view->document()->find(part);
    QVERIFY(!found.isNull());
    view->setTextCursor(QTextCursor(found.block()));
}

void MainWindowFindTest::showLongText() const
{
    AppSettings::instance().findregexp = true;
    m_fixture->resultView()->setFocus();
    const QString line = text("nothing to be found in here ").repeated(70) + QLatin1Char('\n');
    m_fixture->resultView()->setPlainText(line.repeated(8000) + text("a needle"));
}

void MainWindowFindTest::theSwitchesOfTheSettingsDecide_data()
{
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<bool>("word");
    QTest::addColumn<bool>("regexp");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<int>("position");
    QTest::newRow("case ignored") << true << false << false << text("CAT") << 0;
    QTest::newRow("case told") << false << false << false << text("CAT") << 14;
    QTest::newRow("words") << true << true << false << text("cat") << 10;
    QTest::newRow("words, case told") << false << true << false << text("CAT") << 14;
    QTest::newRow("pattern") << false << false << true << text("c.t\\.") << 18;
    QTest::newRow("no pattern") << false << false << false << text("c.t") << 23;
}

void MainWindowFindTest::theSwitchesOfTheSettingsDecide()
{
    QFETCH(bool, ignoreCase);
    QFETCH(bool, word);
    QFETCH(bool, regexp);
    QFETCH(QString, wanted);
    AppSettings &settings = AppSettings::instance();
    settings.findcase = ignoreCase;
    settings.findword = word;
    settings.findregexp = regexp;
    m_fixture->resultView()->setPlainText(text("catalogue cat CAT cut. c.t"));
    m_fixture->resultView()->setFocus();
    find(wanted);
    QTEST(cursor().selectionStart(), "position");
}

void MainWindowFindTest::inThePreviewItGoesAroundBothEnds()
{
    QVERIFY(search());
    select(text("three apple"));
    m_fixture->preview()->setFocus();
    const auto line = [this] {
        return m_fixture->preview()->textCursor().blockNumber();
    };
    find(text("apple"));
    QCOMPARE(line(), 2);
    m_fixture->window().findnext();
    QCOMPARE(line(), 0);
    QCOMPARE(m_fixture->preview()->textCursor().selectedText(), text("apple"));
    QCOMPARE(m_fixture->statusText(), text("末尾まで検索したので先頭に戻りました"));
    m_fixture->window().findprev();
    QCOMPARE(line(), 2);
    QCOMPARE(m_fixture->statusText(), text("先頭まで検索したので末尾に戻りました"));
    m_fixture->window().findprev();
    QCOMPARE(line(), 0);
    QCOMPARE(m_fixture->statusText(), place("a.txt", "3:7"));
}

void MainWindowFindTest::thePlaceStaysInTheStatusBar()
{
    QVERIFY(search());
    select(text("one apple"));
    QCOMPARE(m_fixture->statusText(), place("a.txt", "1:5"));
    // In the selected line, and on to another hit.
    find(text("apple"));
    QCOMPARE(cursor().block().text(), text("      1:    5:one apple"));
    QCOMPARE(m_fixture->statusText(), place("a.txt", "1:5"));
    m_fixture->window().findnext();
    QCOMPARE(cursor().block().text(), text("      3:    7:three apple pies"));
    QCOMPARE(m_fixture->statusText(), place("a.txt", "3:7"));
    m_fixture->preview()->setFocus();
    find(text("pears"));
    QCOMPARE(m_fixture->statusText(), text("末尾まで検索したので先頭に戻りました"));
    find(text("pies"));
    QCOMPARE(m_fixture->statusText(), place("a.txt", "3:7"));
}

void MainWindowFindTest::theHitThatIsFoundFromTheFormIsShown()
{
    QVERIFY(search());
    m_fixture->keyword1()->setFocus();
    find(text("an apple"));
    QCOMPARE(m_fixture->preview()->toPlainText(), text("an apple tree\n"));
    QCOMPARE(m_fixture->statusText(), place("b.txt", "1:4"));
    QVERIFY(m_fixture->window().focusWidget() != m_fixture->resultView());
}

void MainWindowFindTest::aWordOfTheFindGivesThePlaceBack()
{
    QVERIFY(search());
    select(text("one apple"));
    find(text("nowhere"));
    QCOMPARE(m_fixture->statusText(), text("「nowhere」は見つかりません"));
    messageTimer()->start(0);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), place("a.txt", "1:5"),
                              kPatienceMilliseconds);
}

void MainWindowFindTest::aMessageThatCameMeanwhileStays()
{
    QVERIFY(search());
    select(text("one apple"));
    find(text("nowhere"));
    m_fixture->window().statusBar()->showMessage(text("another one"));
    messageTimer()->start(0);
    QTRY_VERIFY_WITH_TIMEOUT(!messageTimer()->isActive(), kPatienceMilliseconds);
    QCOMPARE(m_fixture->statusText(), text("another one"));
}

void MainWindowFindTest::noPlaceIsToldOfALineThatIsNone()
{
    QVERIFY(search());
    select(text("one apple"));
    find(text("該当行数"));
    QCOMPARE(m_fixture->statusText(), QString());
    find(text("nowhere"));
    messageTimer()->start(0);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), QString(), kPatienceMilliseconds);
}

void MainWindowFindTest::aLongTextIsSearchedWhileTheWindowAnswers_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("told");
    QTest::newRow("found") << text(kPattern) << QString();
    QTest::newRow("not found") << text("(n|m)(o|u)where")
                               << text("「(n|m)(o|u)where」は見つかりません");
}

void MainWindowFindTest::aLongTextIsSearchedWhileTheWindowAnswers()
{
    QFETCH(QString, wanted);
    QFETCH(QString, told);
    showLongText();
    find(wanted);
    // The dialog is gone, and the search has only begun.
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(m_fixture->statusText(), text("「%1」を検索しています　Esc: 中止").arg(wanted));
    QCOMPARE(cursor().position(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!isSearching(), 60000);
    QCOMPARE(m_fixture->statusText(), told);
    QCOMPARE(cursor().selectedText(), told.isEmpty() ? text("needle") : QString());
}

void MainWindowFindTest::escapeEndsTheSearchAndNothingElse()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    m_fixture->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_fixture->window(), kPatienceMilliseconds));
    QVERIFY(isSearching());
    m_fixture->keyword1()->setFocus();
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Escape);
    QCOMPARE(m_fixture->statusText(), text("検索を中止しました"));
    QTest::qWait(50);
    QCOMPARE(cursor().position(), 0);
    QVERIFY(m_fixture->prompt.messages.isEmpty());
    // Then the key is the form's again.
    m_fixture->prompt.buttons = {QMessageBox::No};
    QTest::keyClick(m_fixture->keyword1(), Qt::Key_Escape);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
}

void MainWindowFindTest::aMovedCursorEndsTheSearch()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    QTest::keyClick(m_fixture->resultView(), Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), QString(), kPatienceMilliseconds);
    QTest::qWait(50);
    QCOMPARE(cursor().blockNumber(), 1);
    QVERIFY(!cursor().hasSelection());
}

void MainWindowFindTest::theOtherViewEndsTheSearch()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    m_fixture->preview()->setFocus();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->statusText(), QString(), kPatienceMilliseconds);
    QTest::qWait(50);
    QCOMPARE(cursor().position(), 0);
}

void MainWindowFindTest::anEmptiedViewEndsTheSearch()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    m_fixture->window().arrowForward();
    QCOMPARE(m_fixture->statusText(), QString());
    QTest::qWait(50);
    QCOMPARE(m_fixture->statusText(), QString());
}

void MainWindowFindTest::theSameKeyAgainDisturbsNothing()
{
    showLongText();
    find(text(kPattern));
    while (isSearching()) {
        m_fixture->window().findnext();
        QCoreApplication::processEvents();
    }
    QCOMPARE(cursor().selectedText(), text("needle"));
}

void MainWindowFindTest::theOtherDirectionBeginsAnew()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    // From the start back around to the last line.
    m_fixture->window().findprev();
    QVERIFY(!isSearching());
    QCOMPARE(cursor().selectedText(), text("needle"));
    QCOMPARE(m_fixture->statusText(), text("先頭まで検索したので末尾に戻りました"));
}

void MainWindowFindTest::anotherResultEndsTheSearch()
{
    showLongText();
    find(text(kPattern));
    QVERIFY(isSearching());
    QVERIFY(search());
    QTest::qWait(50);
    QCOMPARE(m_fixture->lastTold(), text("セーブしました"));
    QVERIFY(!cursor().hasSelection());
}

void MainWindowFindTest::aTextThatStillComesIsNotSearched_data()
{
    QTest::addColumn<bool>("inPreview");
    QTest::newRow("a log") << false;
    QTest::newRow("a file") << true;
}

void MainWindowFindTest::aTextThatStillComesIsNotSearched()
{
    QFETCH(bool, inPreview);
    m_fixture->tree.write(text("a.txt"),
                          "an early apple\n" + QByteArray("nothing here\n").repeated(60000)
                              + "last\n");
    find(text("last"));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("nothing|last|an ")));
    if (inPreview) {
        select(text("an early apple"));
        m_fixture->preview()->setFocus();
    } else {
        m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().first()->trigger();
    }
    m_fixture->window().findnext();
    QCOMPARE(m_fixture->statusText(), text("読み込み中です。終わってから検索してください"));
    const GrepEditor *view = inPreview ? m_fixture->preview() : m_fixture->resultView();
    QVERIFY(!view->textCursor().hasSelection());
    QTRY_VERIFY_WITH_TIMEOUT(view->document()->blockCount() > 60000, kPatienceMilliseconds);
    m_fixture->window().findnext();
    QTRY_COMPARE_WITH_TIMEOUT(view->textCursor().selectedText(), text("last"),
                              kPatienceMilliseconds);
}

QTEST_MAIN(MainWindowFindTest)
#include "MainWindowFindTest.moc"
