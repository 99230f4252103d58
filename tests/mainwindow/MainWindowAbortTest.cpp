#include "tests/mainwindow/WindowTest.h"

#include "settings/AppSettings.h"
#include "tests/support/Patience.h"

#include <QCheckBox>
#include <QScrollBar>
#include <QTest>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

constexpr char kBanner[] = "/////////////////////// 中止しました ///////////////////////////";

} // namespace

/// What an aborted search shows at once and in the end.
class MainWindowAbortTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void theButtonIsDisabledAndTheViewToldAtOnce();
    void anAbortThatTakesItsTimeIsTold();
    void theSectionsFollowTheBannerAsTheBoxSays_data();
    void theSectionsFollowTheBannerAsTheBoxSays();
    void theCursorIsBroughtIntoViewUnlessAHitWasSelected_data();
    void theCursorIsBroughtIntoViewUnlessAHitWasSelected();
};

void MainWindowAbortTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\n");
    m_fixture->tree.write(QStringLiteral("skipped.txt"), "an apple\n");
    m_fixture->tree.write(QStringLiteral("binary.txt"), QByteArray(100, '\0'));
    m_fixture->open();
    AppSettings::instance().excusionfile = QStringList(text("skipped.txt"));
}

void MainWindowAbortTest::theButtonIsDisabledAndTheViewToldAtOnce()
{
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->searchButton()->isEnabled());
    QVERIFY(!m_fixture->resultView()->escapePressed());
    m_fixture->searchButton()->click();
    // Unless the engine was so quick that it is all over.
    if (m_fixture->isRunning())
        QVERIFY(!m_fixture->searchButton()->isEnabled());
    QVERIFY(m_fixture->resultView()->escapePressed());
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->searchButton()->isEnabled());
}

void MainWindowAbortTest::anAbortThatTakesItsTimeIsTold()
{
    // Of the square of its length.
    m_fixture->tree.write(QStringLiteral("slow.log"), QByteArray(8000, 'a'));
    // Its hit tells that the engine has begun.
    m_fixture->tree.write(QStringLiteral("other.log"), "hay1\n");
    m_fixture->fill(m_fixture->tree.path(), text("*.log"), text("\\w+(?=\\d)"));
    m_fixture->searchButton()->click();
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->resultText().contains(text("hay1")), kPatienceMilliseconds);
    m_fixture->searchButton()->click();
    if (!m_fixture->isRunning())
        QSKIP("the engine was not yet inside the line");
    QTRY_VERIFY_WITH_TIMEOUT(!m_fixture->isRunning()
                                 || m_fixture->statusText().startsWith(text("中止しています")),
                             kPatienceMilliseconds);
    if (!m_fixture->isRunning())
        QSKIP("the line was over before anything could be told");
    // The window answers, and begins nothing that would have to wait.
    m_fixture->window().lineCountGrep();
    m_fixture->window().on_pushButton_clicked();
    QVERIFY(m_fixture->isRunning());
    QVERIFY(!m_fixture->searchButton()->isEnabled());
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultText().contains(text(kBanner)));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    QVERIFY(m_fixture->resultText().contains(text("one apple")));
}

void MainWindowAbortTest::theSectionsFollowTheBannerAsTheBoxSays_data()
{
    QTest::addColumn<bool>("checkedAtTheStart");
    QTest::addColumn<bool>("checkedAtTheEnd");
    QTest::newRow("checked") << true << true;
    QTest::newRow("not checked") << false << false;
    QTest::newRow("checked meanwhile") << false << true;
    QTest::newRow("unchecked meanwhile") << true << false;
}

void MainWindowAbortTest::theSectionsFollowTheBannerAsTheBoxSays()
{
    QFETCH(bool, checkedAtTheStart);
    QFETCH(bool, checkedAtTheEnd);
    auto *box = m_fixture->child<QCheckBox>("skippedCheck");
    box->setChecked(checkedAtTheStart);
    // The first folder is small; the second keeps the engine busy until the abort.
    m_fixture->fill(m_fixture->tree.path() + text("\n/usr/"), text("*"), text("a"));
    m_fixture->searchButton()->click();
    // Files are read in the order of the folders.
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->resultText().contains(text("::/usr/")),
                             kPatienceMilliseconds);
    box->setChecked(checkedAtTheEnd);
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    const QString listed = m_fixture->resultText();
    const int banner = listed.indexOf(text(kBanner));
    QVERIFY(banner >= 0);
    const int skipped =
        listed.indexOf(text("\n\n---------- Warning skip foler or file ------------\n"));
    QCOMPARE(skipped > banner, checkedAtTheEnd);
    QCOMPARE(listed.contains(text("skipped.txt")), checkedAtTheEnd);
    const int unreadable = listed.indexOf(text("\n---------- Read Error File ------------\n"));
    QVERIFY2(unreadable > banner, qPrintable(listed.right(600)));
    QVERIFY(unreadable > skipped);
    QVERIFY(listed.indexOf(text("binary.txt"), unreadable) > 0);
}

void MainWindowAbortTest::theCursorIsBroughtIntoViewUnlessAHitWasSelected_data()
{
    QTest::addColumn<bool>("selects");
    QTest::newRow("a hit selected") << true;
    QTest::newRow("none selected") << false;
}

void MainWindowAbortTest::theCursorIsBroughtIntoViewUnlessAHitWasSelected()
{
    QFETCH(bool, selects);
    m_fixture->tree.write(QStringLiteral("a.txt"), QByteArray("an apple\n").repeated(2000));
    m_fixture->fill(m_fixture->tree.path() + text("\n/usr/"), text("*"), text("apple"));
    m_fixture->searchButton()->click();
    GrepEditor *view = m_fixture->resultView();
    QTRY_VERIFY_WITH_TIMEOUT(view->document()->blockCount() > 200, kPatienceMilliseconds);
    QVERIFY(m_fixture->isRunning());
    if (selects)
        QTest::keyClick(view, Qt::Key_Down);
    view->verticalScrollBar()->setValue(100);
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(view->verticalScrollBar()->value() >= 100, selects);
}

QTEST_MAIN(MainWindowAbortTest)
#include "MainWindowAbortTest.moc"
