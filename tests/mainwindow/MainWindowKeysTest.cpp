#include "settings/AppSettings.h"
#include "settings/KeywordHistory.h"
#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// Keywords that are typed beside past ones, and where the keys go afterwards.
class MainWindowKeysTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aKeywordThatDiffersInCaseOnlyIsSearchedAsItIs();
    void aPastKeywordThatIsTypedTakesTheNewSwitches();
    void aTypedKeywordStaysWhenTheFocusGoes();
    void aKeywordTypedInFullNeedsNoList();
    void escapePutsBackWhatWasTypedBeforeACompletion();
    void aCompletionBringsItsSwitches_data();
    void aCompletionBringsItsSwitches();
    void ctrlKLeavesTheKeywordWhileItsCompletionsAreShown();
    void aStoppedRunLeavesTheFocusInTheResult();
    void aSwitchTakesNoFocus_data();
    void aSwitchTakesNoFocus();
    void aRefusedStartMovesNoFocus();
    void pagingMovesNoFocus();
    void theTitleShowsAnyKeyword();

private:
    void openWithPast(const QByteArray &entry);
    void setSwitches(bool ignoreCase, bool word, bool regexp);
    QList<bool> switches() const;
    QLineEdit *keywordField() const { return m_fixture->keyword1()->lineEdit(); }
    QAbstractItemView *typeUntilCompleted(const QString &start);

    QString m_path;
};

void MainWindowKeysTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_path = m_fixture->tree.path();
    m_fixture->tree.write(text("a.txt"), "ABC\nabc\nPlain\n");
    m_fixture->tree.write(text("b.txt"), "nothing\n");
}

void MainWindowKeysTest::openWithPast(const QByteArray &entry)
{
    QFile file(WindowFixture::applicationFile(text("keywordhistory.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[keyword]\n001=" + entry + '\n');
    file.close();
    // As a start of the program does.
    AppSettings::instance().load(WindowFixture::applicationFile(QString()));
    m_fixture->open();
}

void MainWindowKeysTest::setSwitches(bool ignoreCase, bool word, bool regexp)
{
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = ignoreCase;
    settings.word = word;
    settings.regexp = regexp;
}

QList<bool> MainWindowKeysTest::switches() const
{
    const AppSettings &settings = AppSettings::instance();
    return {settings.caseinsensitive, settings.word, settings.regexp};
}

void MainWindowKeysTest::aKeywordThatDiffersInCaseOnlyIsSearchedAsItIs()
{
    openWithPast("101abc");
    setSwitches(false, false, false);
    keywordField()->setFocus();
    QVERIFY(m_fixture->search(m_path, text("*.txt"), text("ABC")));
    QVERIFY2(m_fixture->resultText().contains(text("\n      1:    1:ABC\n")),
             qPrintable(m_fixture->resultText()));
    QVERIFY(!m_fixture->resultText().contains(text(":abc\n")));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("ABC"));
    QCOMPARE(switches(), QList<bool>({false, false, false}));
    QCOMPARE(AppSettings::instance().keywordHistory->keywords(),
             QStringList({text("ABC"), text("abc")}));
}

void MainWindowKeysTest::aPastKeywordThatIsTypedTakesTheNewSwitches()
{
    openWithPast("000Plain");
    setSwitches(true, false, true);
    m_fixture->fill(m_path, text("*.txt"), QString());
    QTest::keyClicks(keywordField(), text("plain"));
    QTest::keyClick(keywordField(), Qt::Key_Return);
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(m_fixture->keyword1()->currentText(), text("plain"));
    QCOMPARE(switches(), QList<bool>({true, false, true}));
    const auto &newest = AppSettings::instance().keywordHistory->entries().front();
    QCOMPARE(newest.keyword, text("plain"));
    QCOMPARE(QList<bool>({newest.flagA, newest.flagB, newest.flagC}),
             QList<bool>({true, false, true}));
}

void MainWindowKeysTest::aTypedKeywordStaysWhenTheFocusGoes()
{
    openWithPast("111abc");
    setSwitches(false, false, false);
    keywordField()->setFocus();
    QTest::keyClicks(keywordField(), text("ABC"));
    QTest::keyClick(keywordField(), Qt::Key_Tab);
    QVERIFY(!keywordField()->hasFocus());
    QCOMPARE(keywordField()->text(), text("ABC"));
    QCOMPARE(switches(), QList<bool>({false, false, false}));
}

/// The list that is shown then.
QAbstractItemView *MainWindowKeysTest::typeUntilCompleted(const QString &start)
{
    keywordField()->setFocus();
    keywordField()->clear();
    QTest::keyClicks(keywordField(), start);
    QAbstractItemView *list = m_fixture->keyword1()->completer()->popup();
    return list->isVisible() ? list : nullptr;
}

void MainWindowKeysTest::aKeywordTypedInFullNeedsNoList()
{
    openWithPast("011Plain");
    QAbstractItemView *list = typeUntilCompleted(text("Plai"));
    QVERIFY(list);
    QTest::keyClicks(list, text("n"));
    QTRY_VERIFY_WITH_TIMEOUT(!list->isVisible(), kPatienceMilliseconds);
    QCOMPARE(keywordField()->text(), text("Plain"));
    // One that differs is offered.
    QVERIFY(typeUntilCompleted(text("plain")));
    QCoreApplication::processEvents();
    QVERIFY(list->isVisible());
}

void MainWindowKeysTest::escapePutsBackWhatWasTypedBeforeACompletion()
{
    openWithPast("011Plain");
    setSwitches(true, false, false);
    m_fixture->fill(m_path, text("*.txt"), QString());
    QAbstractItemView *list = typeUntilCompleted(text("Pl"));
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(keywordField()->text(), text("Plain"));
    QTest::keyClick(list, Qt::Key_Escape);
    QVERIFY(!list->isVisible());
    QCOMPARE(keywordField()->text(), text("Pl"));
    QCOMPARE(switches(), QList<bool>({true, false, false}));
    // One goes on from there.
    QTest::keyClicks(keywordField(), text("x"));
    QCOMPARE(keywordField()->text(), text("Plx"));
}

void MainWindowKeysTest::aCompletionBringsItsSwitches_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Tab") << int(Qt::Key_Tab);
}

void MainWindowKeysTest::aCompletionBringsItsSwitches()
{
    QFETCH(int, key);
    openWithPast("011Plain");
    setSwitches(true, false, false);
    m_fixture->fill(m_path, text("*.txt"), QString());
    QAbstractItemView *list = typeUntilCompleted(text("Pl"));
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key(key));
    QVERIFY(m_fixture->waitUntilIdle());
    QCOMPARE(keywordField()->text(), text("Plain"));
    QCOMPARE(switches(), QList<bool>({false, true, true}));
}

void MainWindowKeysTest::ctrlKLeavesTheKeywordWhileItsCompletionsAreShown()
{
    openWithPast("000Plain");
    QAbstractItemView *list = typeUntilCompleted(text("Pla"));
    QVERIFY(list);
    keywordField()->setCursorPosition(1);
    QTest::keyClick(list, Qt::Key_K, Qt::ControlModifier);
    QVERIFY(!list->isVisible());
    QVERIFY(m_fixture->resultView()->hasFocus());
    QCOMPARE(keywordField()->text(), text("Pla"));
}

void MainWindowKeysTest::aStoppedRunLeavesTheFocusInTheResult()
{
    m_fixture->open();
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->isRunning());
    m_fixture->searchButton()->setFocus();
    QTest::keyClick(m_fixture->searchButton(), Qt::Key_Space);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(m_fixture->resultView()->hasFocus());
}

void MainWindowKeysTest::aSwitchTakesNoFocus_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("case") << QByteArray("btnCase");
    QTest::newRow("word") << QByteArray("btnWord");
    QTest::newRow("pattern") << QByteArray("btnRegexp");
}

void MainWindowKeysTest::aSwitchTakesNoFocus()
{
    QFETCH(QByteArray, button);
    m_fixture->open();
    keywordField()->setFocus();
    const QList<bool> before = switches();
    auto *widget = m_fixture->child<QAbstractButton>(button.constData());
    const int key = widget->shortcut()[0];
    QTest::keyClick(keywordField(), Qt::Key(key & ~Qt::KeyboardModifierMask),
                    Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));
    QTRY_VERIFY_WITH_TIMEOUT(switches() != before, kPatienceMilliseconds);
    QVERIFY(keywordField()->hasFocus());
    // By Tab it is reached all the same.
    QVERIFY((widget->focusPolicy() & Qt::TabFocus) != 0);
}

void MainWindowKeysTest::aRefusedStartMovesNoFocus()
{
    m_fixture->open();
    m_fixture->fill(m_path, text("*.txt"), QString());
    m_fixture->pathEdit()->setFocus();
    QTest::keyClick(m_fixture->pathEdit(), Qt::Key_Return);
    QCOMPARE(m_fixture->statusText(), text("キーワード１を指定してください"));
    QVERIFY(m_fixture->pathEdit()->hasFocus());
}

void MainWindowKeysTest::pagingMovesNoFocus()
{
    m_fixture->open();
    QVERIFY(m_fixture->search(m_path, text("*.txt"), text("abc")));
    QVERIFY(m_fixture->search(m_path, text("*.txt"), text("Plain")));
    keywordField()->setFocus();
    m_fixture->window().arrowBack();
    QCOMPARE(keywordField()->text(), text("abc"));
    QVERIFY(keywordField()->hasFocus());
    m_fixture->window().arrowForward();
    QCOMPARE(keywordField()->text(), text("Plain"));
    QVERIFY(keywordField()->hasFocus());
}

void MainWindowKeysTest::theTitleShowsAnyKeyword()
{
    m_fixture->open();
    QVERIFY(m_fixture->search(m_path, text("*.txt"), text("a[*]b|abc")));
    QCOMPARE(m_fixture->window().windowHandle()->title(), text("a[*]b|abc -- sarvik"));
}

QTEST_MAIN(MainWindowKeysTest)
#include "MainWindowKeysTest.moc"
