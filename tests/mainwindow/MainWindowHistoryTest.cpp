#include "tests/mainwindow/WindowTest.h"
#include "tests/support/NativeLines.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QGroupBox>
#include <QMenu>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList logNames()
{
    return WindowFixture::logDirectory().entryList(QDir::Files, QDir::Name);
}

void setAge(const QString &name, int minutes)
{
    QFile file(WindowFixture::logDirectory().filePath(name));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutes),
                             QFileDevice::FileModificationTime));
}

} // namespace

/// What the window keeps of its searches, and how it brings them back.
class MainWindowHistoryTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aSearchIsSavedTwice();
    void theHeaderRecordsTheRequestToTheLetter();
    void twoSearchesInOneSecondAreBothKept();
    void aLineCountIsNotSaved();
    void theLogOfTheLastSearchIsShownAtTheStart();
    void backBringsTheOlderSearchBack();
    void forwardBringsTheNewerSearchBack();
    void forwardFromTheNewestRestoresTheForm();
    void theMouseButtonsPage();
    void theBackMenuListsTheLogs();
    void theMenuStandsInTheMiddleOfTheWindow();
    void aMenuEntryLoadsItsLog();
    void aChosenLogIsLoaded();
    void logsBeyondTheLimitAreDeleted();
    void theLogOfTheLastSearchLeavesThePathsEmpty();
    void aGroupThatWasOffStaysAsItIs();
    void aRunIsNotDisturbedByPaging();
    void aSearchWhoseLogCannotBeWrittenIsWhole();
    void aWindowClosedWhileHitsAreListedKeepsTheWholeLog();
    void aTextOfManyPiecesIsShownLetterByLetter();
    void aSearchDropsTheRestOfALog();
    void forwardAtTheStartLeavesTheForm();

private:
    bool search(const QString &keyword);
    QString writeLargeLog(const QString &name);
    QAbstractButton *back() const { return m_fixture->child<QToolButton>("arrowBackBtn"); }
    QAbstractButton *forward() const { return m_fixture->child<QToolButton>("arrowForwardBtn"); }

    QString m_tree;
};

void MainWindowHistoryTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_tree = m_fixture->tree.path();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one\ntwo\nthree\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "nothing\n");
    m_fixture->open();
}

/// Each log gets a time of its own, a minute before the next one.
bool MainWindowHistoryTest::search(const QString &keyword)
{
    const QStringList names = logNames();
    for (const QString &name : names) {
        QFile file(WindowFixture::logDirectory().filePath(name));
        if (!file.open(QIODevice::ReadWrite))
            return false;
        const QDateTime changed = file.fileTime(QFileDevice::FileModificationTime);
        if (!file.setFileTime(changed.addSecs(-60), QFileDevice::FileModificationTime))
            return false;
    }
    return m_fixture->search(m_tree, text("*.txt"), keyword);
}

void MainWindowHistoryTest::aSearchIsSavedTwice()
{
    QVERIFY(search(text("one")));
    QCOMPARE(logNames().size(), 1);
    QVERIFY(QRegularExpression(text("^\\d{8}-\\d{6}\\.log$")).match(logNames().first()).hasMatch());
    const QByteArray last = WindowFixture::readApplicationFile(text("sarvik.log"));
    QCOMPARE(WindowFixture::readApplicationFile(text("sarviklog/") + logNames().first()), last);
    QVERIFY(last.endsWith(nativeLines(m_fixture->resultView()->toPlainText().toUtf8())));
    QCOMPARE(m_fixture->lastTold(), text("セーブしました"));
    QVERIFY(!m_fixture->resultView()->document()->isModified());
}

void MainWindowHistoryTest::theHeaderRecordsTheRequestToTheLetter()
{
    AppSettings::instance().caseinsensitive = false;
    AppSettings::instance().word = true;
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("二"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(3);
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    m_fixture->keyword3()->setEditText(text("三"));
    QVERIFY(m_fixture->search(m_tree + text("\n/no such folder"), text("*.txt *.c"), text("灯台")));
    const QString expected = text("version :5.00\nkeyword1:灯台\ncase    :0\nword    :1\n"
                                  "regexp  :1\nsubdir  :1\ngroupbox:1\nkeyword2:二\nplusline:3\n"
                                  "pathlist:%1, /no such folder/\nmask    :*.txt *.c\n"
                                  "ext     :txt\nexclsive:1\nkeyword3:三\n"
                                  "-----------------------\n")
                                 .arg(m_tree);
    const QByteArray header = nativeLines(expected.toUtf8());
    const QByteArray log = WindowFixture::readApplicationFile(text("sarvik.log"));
    QCOMPARE(log.left(header.size()), header);
    QCOMPARE(log.mid(header.size()), nativeLines(m_fixture->resultView()->toPlainText().toUtf8()));
}

void MainWindowHistoryTest::twoSearchesInOneSecondAreBothKept()
{
    for (int number = 0; number < 4; ++number)
        QVERIFY(search(QString::number(number)));
    QCOMPARE(logNames().size(), 4);
}

void MainWindowHistoryTest::aLineCountIsNotSaved()
{
    m_fixture->fill(m_tree, text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(logNames().isEmpty());
    QVERIFY(!QFile::exists(WindowFixture::applicationFile(text("sarvik.log"))));
}

void MainWindowHistoryTest::theLogOfTheLastSearchIsShownAtTheStart()
{
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    QVERIFY(search(text("one")));
    const QString listed = m_fixture->resultView()->toPlainText();
    AppSettings::instance().maskhistory = QStringList(text("*.newest"));
    m_fixture->open();
    QCOMPARE(m_fixture->resultView()->toPlainText(), listed);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    // That of its history, not that of the log.
    QCOMPARE(m_fixture->mask()->currentText(), text("*.newest"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), QString());
    QVERIFY(!m_fixture->child<QGroupBox>("keyword3Group")->isChecked());
    // A handed-over keyword goes before that of the log.
    m_fixture->open({}, {}, text("handed over"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("handed over"));
}

void MainWindowHistoryTest::backBringsTheOlderSearchBack()
{
    QVERIFY(!back()->isEnabled());
    AppSettings::instance().word = true;
    QVERIFY(search(text("one")));
    const QString older = m_fixture->resultView()->toPlainText();
    // There is nothing older, but a list to open.
    QVERIFY(back()->isEnabled() && !forward()->isEnabled());
    AppSettings::instance().word = false;
    QVERIFY(search(text("two")));
    QVERIFY(back()->isEnabled() && !forward()->isEnabled());
    m_fixture->fill(QString(), QString(), QString());
    back()->click();
    QCOMPARE(m_fixture->resultView()->toPlainText(), older);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_tree);
    QCOMPARE(m_fixture->mask()->currentText(), text("*.txt"));
    QVERIFY(AppSettings::instance().word);
    QVERIFY(m_fixture->child<QAbstractButton>("btnWord")->isChecked());
    QVERIFY(!back()->isEnabled() && forward()->isEnabled());
}

void MainWindowHistoryTest::forwardBringsTheNewerSearchBack()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    const QString newer = m_fixture->resultView()->toPlainText();
    back()->click();
    forward()->click();
    QCOMPARE(m_fixture->resultView()->toPlainText(), newer);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("two"));
    QVERIFY(back()->isEnabled() && !forward()->isEnabled());
}

void MainWindowHistoryTest::forwardFromTheNewestRestoresTheForm()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    back()->click();
    forward()->click();
    m_fixture->fill(text("/x/"), text("*.x"), text("x"));
    AppSettings::instance().regexp = false;
    m_fixture->window().arrowForward();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("two"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_tree);
    QCOMPARE(m_fixture->mask()->currentText(), text("*.txt"));
    QVERIFY(AppSettings::instance().regexp);
    QCOMPARE(m_fixture->resultView()->toPlainText(), QString());
}

void MainWindowHistoryTest::theMouseButtonsPage()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    emit m_fixture->resultView()->BackButton();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    emit m_fixture->resultView()->ForwardButton();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("two"));
}

void MainWindowHistoryTest::theBackMenuListsTheLogs()
{
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("p&q, r"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(7);
    QVERIFY(search(text("one")));
    m_fixture->keyword2()->setEditText(QString());
    QVERIFY(search(text("two")));
    const QMenu *menu = m_fixture->child<QToolButton>("arrowBackBtn")->menu();
    const QList<QAction *> actions = menu->actions();
    QCOMPARE(actions.size(), 2);
    QCOMPARE(actions.at(0)->text(), text("two　---　7"));
    QCOMPARE(actions.at(0)->data().toInt(), 0);
    QCOMPARE(actions.at(1)->text(), text("one　---　p&&q7"));
    QCOMPARE(actions.at(1)->data().toInt(), 1);
}

void MainWindowHistoryTest::theMenuStandsInTheMiddleOfTheWindow()
{
    QVERIFY(search(text("one")));
    m_fixture->window().historyBackMenuPopup();
    QMenu *menu = m_fixture->child<QToolButton>("arrowBackBtn")->menu();
    QVERIFY(menu->isVisible());
    const QSize window = m_fixture->window().size();
    const QPoint expected((window.width() - menu->width()) / 2,
                          (window.height() - menu->height()) / 2);
    QCOMPARE(m_fixture->window().mapFromGlobal(menu->pos()), expected);
    menu->close();
}

void MainWindowHistoryTest::aMenuEntryLoadsItsLog()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    QMenu *menu = m_fixture->child<QToolButton>("arrowBackBtn")->menu();
    menu->actions().at(1)->trigger();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    QAction none;
    none.setData(-1);
    m_fixture->window().openLogfile(&none);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
}

void MainWindowHistoryTest::aChosenLogIsLoaded()
{
    QVERIFY(search(text("one")));
    const QString listed = m_fixture->resultView()->toPlainText();
    QVERIFY(search(text("two")));
    const QString older = logNames().first();
    bool chosen = false;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        auto *list = dialog->findChild<QAbstractItemView *>(text("listFiles"));
        const auto entry = [&] {
            const QModelIndex root = list->rootIndex();
            for (int row = 0; row < list->model()->rowCount(root); ++row) {
                const QModelIndex index = list->model()->index(row, 0, root);
                if (index.data().toString() == older)
                    return index;
            }
            return QModelIndex();
        };
        chosen = QTest::qWaitFor([&] { return entry().isValid(); }, kPatienceMilliseconds);
        list->setCurrentIndex(entry());
        QTest::keyClick(list, chosen ? Qt::Key_Return : Qt::Key_Escape);
    });
    m_fixture->window().openFile();
    QVERIFY(chosen);
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_tree);
    QCOMPARE(m_fixture->resultView()->toPlainText(), listed);
}

void MainWindowHistoryTest::logsBeyondTheLimitAreDeleted()
{
    AppSettings::instance().logmax = 3;
    for (const char *keyword : {"1", "2", "3", "4", "5"})
        QVERIFY(search(text(keyword)));
    QCOMPARE(logNames().size(), 3);
    const QMenu *menu = m_fixture->child<QToolButton>("arrowBackBtn")->menu();
    QCOMPARE(menu->actions().at(0)->text(), text("5　---　0"));
    QCOMPARE(menu->actions().at(2)->text(), text("3　---　0"));
}

void MainWindowHistoryTest::theLogOfTheLastSearchLeavesThePathsEmpty()
{
    QVERIFY(search(text("one")));
    // Whoever chooses that log in the chooser; here it lies in the history.
    QVERIFY(QFile::copy(WindowFixture::applicationFile(text("sarvik.log")),
                        WindowFixture::logDirectory().filePath(text("sarvik.log"))));
    setAge(text("sarvik.log"), -5);
    m_fixture->fill(text("/x/"), text("*.x"), text("x"));
    m_fixture->window().makeBackMenu();
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(0)->trigger();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    QCOMPARE(m_fixture->mask()->currentText(), text("*.txt"));
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), QString());
}

void MainWindowHistoryTest::aGroupThatWasOffStaysAsItIs()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    auto *extra = m_fixture->child<QGroupBox>("extraGroup");
    auto *keyword3 = m_fixture->child<QGroupBox>("keyword3Group");
    extra->setChecked(true);
    keyword3->setChecked(true);
    back()->click();
    QVERIFY(extra->isChecked() && keyword3->isChecked());
}

void MainWindowHistoryTest::aRunIsNotDisturbedByPaging()
{
    QVERIFY(search(text("one")));
    QVERIFY(search(text("two")));
    m_fixture->fill(text("/usr/"), text("*"), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    m_fixture->window().arrowBack();
    m_fixture->window().arrowForward();
    m_fixture->window().openFile();
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(1)->trigger();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("no such text anywhere"));
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
}

void MainWindowHistoryTest::aSearchWhoseLogCannotBeWrittenIsWhole()
{
    // A file stands where the folder should be.
    QFile file(WindowFixture::applicationFile(text("sarviklog")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(search(text("one")));
    QVERIFY(m_fixture->resultText().contains(text("該当行数 1")));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
    QCOMPARE(m_fixture->statusText(), QString());
    QVERIFY(file.remove());
}

/// Lines that take several pieces to show; returns their text.
QString MainWindowHistoryTest::writeLargeLog(const QString &name)
{
    QString listed = text("\n");
    for (int line = 0; line < 60000; ++line)
        listed += text("%1: 灯\u00a0台\n").arg(line);
    QFile file(WindowFixture::logDirectory().filePath(name));
    if (!file.open(QIODevice::ReadWrite))
        qFatal("cannot open the log");
    QByteArray header;
    for (int line = 0; line < 15; ++line)
        header += file.readLine();
    if (!file.resize(0) || !file.seek(0) || file.write(header + listed.toUtf8()) < 0)
        qFatal("cannot write the log");
    return listed;
}

void MainWindowHistoryTest::aWindowClosedWhileHitsAreListedKeepsTheWholeLog()
{
    m_fixture->tree.write(QStringLiteral("many.txt"), QByteArray("a hit\n").repeated(20000));
    m_fixture->fill(m_tree, text("*.txt"), text("hit"));
    QTimer whileDisplaying;
    connect(&whileDisplaying, &QTimer::timeout, this, [this] {
        if (m_fixture->searchButton()->text() == text("表示中..."))
            m_fixture->window().close();
    });
    whileDisplaying.start(0);
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QVERIFY(!m_fixture->window().isVisible());
    QVERIFY(m_fixture->resultView()->blockCount() < 20000);
    const QByteArray log = WindowFixture::readApplicationFile(QStringLiteral("sarvik.log"));
    QCOMPARE(log.count(":a hit"), 20000);
    QVERIFY(log.contains(nativeLines("\n  20000:    3:a hit\n---------------")));
    QVERIFY(log.contains(nativeLines(text("該当行数 20,000\n").toUtf8()))
            || log.contains(nativeLines(text("該当行数 20000\n").toUtf8())));
    QCOMPARE(logNames().size(), 1);
    QCOMPARE(AppSettings::instance().maskhistory.first(), text("*.txt"));
}

void MainWindowHistoryTest::aTextOfManyPiecesIsShownLetterByLetter()
{
    QVERIFY(search(text("one")));
    const QString listed = writeLargeLog(logNames().first());
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(0)->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->resultView()->blockCount(), 60002, kPatienceMilliseconds);
    QString shown = m_fixture->resultView()->document()->toRawText();
    QVERIFY(shown.replace(QChar::ParagraphSeparator, QLatin1Char('\n')) == listed);
    QCOMPARE(m_fixture->resultView()->textCursor().position(), 0);
}

void MainWindowHistoryTest::aSearchDropsTheRestOfALog()
{
    QVERIFY(search(text("one")));
    writeLargeLog(logNames().first());
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(0)->trigger();
    m_fixture->fill(m_tree, text("*.txt"), text("two"));
    m_fixture->searchButton()->click();
    QVERIFY(m_fixture->waitUntilIdle());
    QTest::qWait(50);
    QVERIFY(m_fixture->resultText().startsWith(text("::%1a.txt\n").arg(m_tree)));
    QVERIFY(m_fixture->resultView()->blockCount() < 20);
}

void MainWindowHistoryTest::forwardAtTheStartLeavesTheForm()
{
    m_fixture->open({m_tree}, text("*.c"), text("word"));
    m_fixture->window().arrowForward();
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), m_tree);
    QCOMPARE(m_fixture->mask()->currentText(), text("*.c"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text("word"));
    QVERIFY(AppSettings::instance().regexp);
}

QTEST_MAIN(MainWindowHistoryTest)
#include "MainWindowHistoryTest.moc"
