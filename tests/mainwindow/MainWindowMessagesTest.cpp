#include "mainwindow/StatusMessages.h"
#include "settings/SaveSteps.h"
#include "tests/mainwindow/WindowTest.h"
#include "tests/support/OrdinaryUser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

using SaveSteps::Step;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

constexpr bool kBeeps = true;
constexpr bool kIsSilent = false;

} // namespace

/// How long the status bar tells what, and what the user is called to by a beep. How
/// often a run is shown is here, too.
class MainWindowMessagesTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aRefusalBeepsAndStays_data();
    void aRefusalBeepsAndStays();
    void aSavedLogIsToldShortly();
    void aSavedFileIsToldShortly();
    void aFileThatCannotBeSavedBeepsAndStays();
    void aProgramFolderThatCannotBeWrittenIsToldAtTheStart();
    void aRunIsShownAtEveryTick();

private:
    bool search() { return m_fixture->search(m_tree, text("*.txt"), text("one")); }
    void edit();
    QVariantList lastShown() const { return m_shown->isEmpty() ? QVariantList() : m_shown->last(); }

    QString m_tree;
    std::unique_ptr<QSignalSpy> m_shown;
};

void MainWindowMessagesTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one\ntwo\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->open();
    m_shown = std::make_unique<QSignalSpy>(m_fixture->child<StatusMessages>("statusMessages"),
                                           &StatusMessages::shown);
}

void MainWindowMessagesTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
    m_shown.reset();
    m_fixture.reset();
}

void MainWindowMessagesTest::aRefusalBeepsAndStays_data()
{
    QTest::addColumn<QString>("wish");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *wish, const char *message) {
        QTest::newRow(wish) << text(wish) << text(message);
    };
    row("search", "キーワード１を指定してください");
    row("count lines", "検索パスを指定してください");
    row("past searches", "過去の検索結果はありません");
}

void MainWindowMessagesTest::aRefusalBeepsAndStays()
{
    QFETCH(QString, wish);
    QFETCH(QString, message);
    m_fixture->fill(QString(), QString(), QString());
    if (wish == text("search"))
        m_fixture->searchButton()->click();
    else if (wish == text("count lines"))
        m_fixture->window().lineCountGrep();
    else if (wish == text("past searches"))
        m_fixture->window().historyBackMenuPopup();
    QCOMPARE(lastShown(), QVariantList({message, 5000, kBeeps}));
    QCOMPARE(m_fixture->statusText(), message);
}

void MainWindowMessagesTest::aSavedLogIsToldShortly()
{
    QVERIFY(search());
    QCOMPARE(lastShown(), QVariantList({text("セーブしました"), 2000, kIsSilent}));
    QCOMPARE(m_fixture->lastTold(), text("セーブしました"));
}

/// Selects the hit and types into its file.
void MainWindowMessagesTest::edit()
{
    QVERIFY(search());
    m_fixture->resultView()->setFocus();
    m_fixture->resultView()->setTextCursor(
        QTextCursor(m_fixture->resultView()->document()->findBlockByNumber(1)));
    QTest::keyClicks(m_fixture->preview(), text("new "));
    QVERIFY(m_fixture->preview()->document()->isModified());
    m_fixture->preview()->setFocus();
    m_shown->clear();
}

void MainWindowMessagesTest::aSavedFileIsToldShortly()
{
    edit();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(lastShown(), QVariantList({text("セーブしました"), 2000, kIsSilent}));
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(lastShown(), QVariantList({text("修正されていません"), 2000, kIsSilent}));
}

void MainWindowMessagesTest::aFileThatCannotBeSavedBeepsAndStays()
{
    edit();
    SaveSteps::setObserver([](Step step) { return step != Step::WriteNew; });
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    SaveSteps::setObserver(nullptr);
    const QString message = text("セーブ中にエラーが発生しました");
    QCOMPARE(lastShown(), QVariantList({message, 5000, kBeeps}));
    QCOMPARE(m_fixture->statusText(), message);
    m_fixture->preview()->document()->setModified(false);
}

void MainWindowMessagesTest::aProgramFolderThatCannotBeWrittenIsToldAtTheStart()
{
    QCOMPARE(m_fixture->statusText(), QString());
    const QString folder = QCoreApplication::applicationDirPath();
    const QFile::Permissions before = QFile::permissions(folder);
    QVERIFY(QFile::setPermissions(
        folder,
        before & ~(QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther)));
    bool inForce = false;
    {
        const OrdinaryUser user;
        inForce = user.inForce();
        m_fixture->open();
    }
    const QString message = m_fixture->statusText();
    QVERIFY(QFile::setPermissions(folder, before));
    if (!inForce)
        QSKIP("permissions mean nothing here");
    QCOMPARE(message,
             text("プログラムのフォルダに書き込めないため、設定・履歴・検索結果は保存されません"));
}

void MainWindowMessagesTest::aRunIsShownAtEveryTick()
{
    m_fixture->fill(m_tree, text("*.txt"), text("one"));
    m_fixture->searchButton()->click();
    auto *timer = m_fixture->child<QTimer>("tickTimer");
    QVERIFY(timer);
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 150);
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!m_fixture->child<QTimer>("tickTimer"));
}

QTEST_MAIN(MainWindowMessagesTest)
#include "MainWindowMessagesTest.moc"
