#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const char kNoLogs[] = "過去の検索結果はありません";

} // namespace

/// When the list of past searches can be opened.
class MainWindowBackListTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void withoutALogNothingPopsUp_data();
    void withoutALogNothingPopsUp();
    void aListThatHasBecomeEmptyGoesAtOnce();
    void theArrowBesideTheButtonOpensTheList_data();
    void theArrowBesideTheButtonOpensTheList();
    void backWithNothingOlderLeavesEverything();
    void atTheOldestTheKeyOpensTheList();

private:
    bool search() { return m_fixture->search(m_tree, text("*.txt"), text("one")); }
    bool opensByTheArrow();
    QToolButton *back() const { return m_fixture->child<QToolButton>("arrowBackBtn"); }

    QString m_tree;
};

void MainWindowBackListTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one\ntwo\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->open();
}

/// Presses the mouse there and closes what opens.
bool MainWindowBackListTest::opensByTheArrow()
{
    bool opened = false;
    QTimer::singleShot(0, back(), [&] {
        opened = back()->menu()->isVisible();
        back()->menu()->close();
    });
    QTest::mouseClick(back(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(back()->width() - 3, back()->height() / 2));
    QCoreApplication::processEvents();
    return opened;
}

void MainWindowBackListTest::withoutALogNothingPopsUp_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the key") << true;
    QTest::newRow("by the slot") << false;
}

void MainWindowBackListTest::withoutALogNothingPopsUp()
{
    QFETCH(bool, byKey);
    m_fixture->keyword1()->setFocus();
    if (byKey)
        QTest::keyClick(&m_fixture->window(), Qt::Key_H, Qt::ControlModifier);
    else
        m_fixture->window().historyBackMenuPopup();
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!back()->menu()->isVisible());
    QCOMPARE(m_fixture->statusText(), text(kNoLogs));
    QTest::keyClicks(m_fixture->window().focusWidget(), text("typed"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("typed"));
}

void MainWindowBackListTest::aListThatHasBecomeEmptyGoesAtOnce()
{
    QVERIFY(search());
    QVERIFY(back()->isEnabled());
    // Another window has deleted them.
    QVERIFY(WindowFixture::logDirectory().removeRecursively());
    QMenu *menu = back()->menu();
    menu->popup(m_fixture->window().pos());
    QCOMPARE(m_fixture->statusText(), text(kNoLogs));
    QTRY_VERIFY_WITH_TIMEOUT(!menu->isVisible(), kPatienceMilliseconds);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!back()->isEnabled());
}

void MainWindowBackListTest::theArrowBesideTheButtonOpensTheList_data()
{
    QTest::addColumn<QString>("moment");
    QTest::newRow("after the first search") << text("search");
    QTest::newRow("after a line count") << text("count");
    QTest::newRow("at the start of the program") << text("start");
    QTest::newRow("after paging and another search") << text("page");
}

void MainWindowBackListTest::theArrowBesideTheButtonOpensTheList()
{
    QFETCH(QString, moment);
    QVERIFY(!back()->isEnabled());
    QVERIFY(!opensByTheArrow());
    QVERIFY(search());
    if (moment == text("count")) {
        m_fixture->window().lineCountGrep();
        QVERIFY(m_fixture->waitUntilIdle());
    } else if (moment == text("start")) {
        m_fixture->open();
    } else if (moment == text("page")) {
        QVERIFY(search());
        back()->click();
        QVERIFY(!back()->isEnabled());
        QVERIFY(search());
    }
    QVERIFY(back()->isEnabled());
    QVERIFY(opensByTheArrow());
}

void MainWindowBackListTest::backWithNothingOlderLeavesEverything()
{
    QVERIFY(search());
    const QString listed = m_fixture->resultText();
    m_fixture->fill(text("/x/"), text("*.x"), text("x"));
    m_fixture->keyword1()->setFocus();
    const QWidget *focus = m_fixture->window().focusWidget();
    back()->click();
    QCOMPARE(m_fixture->resultText(), listed);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("x"));
    QCOMPARE(m_fixture->mask()->currentText(), text("*.x"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/x/"));
    QCOMPARE(m_fixture->window().focusWidget(), focus);
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowBackListTest::atTheOldestTheKeyOpensTheList()
{
    QVERIFY(search());
    back()->click();
    // Back and forward enable the button as long as there is an older log.
    QVERIFY(!back()->isEnabled());
    QTest::keyClick(&m_fixture->window(), Qt::Key_H, Qt::ControlModifier);
    QVERIFY(back()->menu()->isVisible());
    back()->menu()->close();
    QVERIFY(back()->isEnabled());
}

QTEST_MAIN(MainWindowBackListTest)
#include "MainWindowBackListTest.moc"
