#include "tests/mainwindow/WindowTest.h"

#include "settings/AppSettings.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QMenu>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

void writeLog(const QString &name, const QByteArray &content)
{
    QFile file(WindowFixture::logDirectory().filePath(name));
    if (!WindowFixture::logDirectory().mkpath(text(".")) || !file.open(QIODevice::WriteOnly)
        || file.write(content) != content.size())
        qFatal("cannot write the log");
}

QByteArray headerOf(const QString &keyword1)
{
    return "version :5.00\nkeyword1:" + keyword1.toUtf8()
        + "\ncase    :1\nword    :0\nregexp  :1\nsubdir  :1\ngroupbox:0\nkeyword2:\n"
          "plusline:5\npathlist:/a/\nmask    :*.c\next     :c\nexclsive:0\nkeyword3:\n"
          "-----------------------\n";
}

} // namespace

/// Logs in the window that are not as the program writes them, and logs that it
/// cannot write.
class MainWindowLogsTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void whatALogDoesNotTellStaysInTheForm_data();
    void whatALogDoesNotTellStaysInTheForm();
    void anotherLogStartsThePickingAgain();
    void theWindowIsNamedAfterTheLogThatIsShown();
    void theLogOfTheStartNamesNothing();
    void aBinaryFileIsSurvived();
    void aLongLabelIsCut_data();
    void aLongLabelIsCut();
    void oneLogThatCannotBeWrittenLeavesTheOther_data();
    void oneLogThatCannotBeWrittenLeavesTheOther();

private:
    void fillForm();
};

void MainWindowLogsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(text("a.txt"), "one\n");
    m_fixture->tree.write(text("b.txt"), "two\n");
    m_fixture->open();
}

void MainWindowLogsTest::fillForm()
{
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = true;
    settings.word = true;
    settings.regexp = true;
    m_fixture->fill(text("/before/"), text("*.before"), text("before"));
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(true);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(true);
    m_fixture->keyword2()->setEditText(text("second"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(3);
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(true);
    m_fixture->keyword3()->setEditText(text("third"));
    m_fixture->child<QCheckBox>("subdirCheck")->setChecked(true);
    m_fixture->resultView()->setPlainText(text("listed before"));
}

void MainWindowLogsTest::whatALogDoesNotTellStaysInTheForm_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("keyword1");
    QTest::addColumn<bool>("ignoreCase");
    QTest::addColumn<QString>("listed");
    QTest::newRow("an empty file") << QByteArray() << text("before") << true << QString();
    QTest::newRow("one line") << QByteArray("version :5.00") << text("before") << true << QString();
    QTest::newRow("cut in the keyword")
        << QByteArray("version :5.00\nkeyword1:af") << text("af") << true << QString();
    QTest::newRow("cut in the switches")
        << QByteArray("version :5.00\nkeyword1:after\ncase    :0\n") << text("after") << false
        << QString();
    QTest::newRow("binary, in one line")
        << QByteArray("\0\1\2\377\376", 5).repeated(1000) << text("before") << true << QString();
}

void MainWindowLogsTest::whatALogDoesNotTellStaysInTheForm()
{
    QFETCH(QByteArray, content);
    writeLog(text("broken.log"), content);
    fillForm();
    QVERIFY(m_fixture->chooseLog(text("broken.log")));
    QTEST(m_fixture->keyword1()->currentText(), "keyword1");
    QTEST(AppSettings::instance().caseinsensitive, "ignoreCase");
    QTEST(m_fixture->resultView()->toPlainText(), "listed");
    QVERIFY(AppSettings::instance().word);
    QVERIFY(AppSettings::instance().regexp);
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), text("/before/"));
    QCOMPARE(m_fixture->mask()->currentText(), text("*.before"));
    QVERIFY(m_fixture->child<QGroupBox>("extraGroup")->isChecked());
    QVERIFY(m_fixture->child<QCheckBox>("useKeyword2")->isChecked());
    QCOMPARE(m_fixture->keyword2()->currentText(), text("second"));
    QCOMPARE(m_fixture->child<QSpinBox>("lineDistance")->value(), 3);
    QVERIFY(m_fixture->child<QGroupBox>("keyword3Group")->isChecked());
    QCOMPARE(m_fixture->keyword3()->currentText(), text("third"));
    QVERIFY(m_fixture->child<QCheckBox>("subdirCheck")->isChecked());
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowLogsTest::anotherLogStartsThePickingAgain()
{
    writeLog(text("one.log"), headerOf(text("k")) + "first second third\n");
    writeLog(text("other.log"), headerOf(text("k")) + "fourth fifth sixth\n");
    GrepEditor *view = m_fixture->resultView();
    QVERIFY(m_fixture->chooseLog(text("one.log")));
    QTest::keyClick(view, Qt::Key_F5);
    QTest::keyClick(view, Qt::Key_F5);
    QCOMPARE(view->pickedWord(), text("first second"));
    // The cursor stays at the first character.
    QVERIFY(m_fixture->chooseLog(text("other.log")));
    QTest::keyClick(view, Qt::Key_F5);
    QCOMPARE(view->pickedWord(), text("fourth"));
}

void MainWindowLogsTest::theWindowIsNamedAfterTheLogThatIsShown()
{
    writeLog(text("old.log"), headerOf(text("old")));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("one")));
    const auto title = [this] {
        return m_fixture->window().windowTitle();
    };
    QCOMPARE(title(), text("one -- sarvik"));
    QCOMPARE(m_fixture->lastTold(), text("セーブしました"));
    m_fixture->window().arrowBack();
    QCOMPARE(title(), text("old -- sarvik"));
    // It told of the search that is not shown any more.
    QCOMPARE(m_fixture->statusText(), QString());
    m_fixture->window().arrowForward();
    QCOMPARE(title(), text("one -- sarvik"));
    m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions().at(1)->trigger();
    QCOMPARE(title(), text("old -- sarvik"));
    writeLog(text("chosen.log"), headerOf(text("chosen")));
    QVERIFY(m_fixture->chooseLog(text("chosen.log")));
    QCOMPARE(title(), text("chosen -- sarvik"));
    QVERIFY(m_fixture->chooseLog(text("old.log"), WindowFixture::LogChoice::AcceptWhatIsGone));
    QCOMPARE(title(), text("chosen -- sarvik"));
}

void MainWindowLogsTest::theLogOfTheStartNamesNothing()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("one")));
    m_fixture->close();
    m_fixture->open();
    QCOMPARE(m_fixture->keyword1()->currentText(), text("one"));
    QCOMPARE(m_fixture->window().windowTitle(), text("sarvik64"));
}

void MainWindowLogsTest::aBinaryFileIsSurvived()
{
    QByteArray content;
    for (int i = 0; i < 64 * 1024; ++i)
        content += static_cast<char>(i * 7 + i / 251);
    writeLog(text("binary.log"), content);
    fillForm();
    QVERIFY(m_fixture->chooseLog(text("binary.log")));
    // What it says is nonsense, but the window goes on.
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("one")));
    QVERIFY(!m_fixture->resultText().contains(text("listed before")));
    QVERIFY(m_fixture->resultText().contains(text("該当ファイル数 ")));
}

void MainWindowLogsTest::aLongLabelIsCut_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("label");
    // Behind it come five units of the label and the line distance.
    const QString fitting(114, QLatin1Char('k'));
    QTest::newRow("120 units") << fitting << fitting + text("　---　5");
    const QString tooLong(115, QLatin1Char('k'));
    QTest::newRow("121 units") << tooLong << tooLong + text("　---…");
    const QString page(5000, QLatin1Char('k'));
    QTest::newRow("a page") << page << page.left(119) + text("…");
    // Doubled after the cut, they are one each in the menu.
    const QString marks(200, QLatin1Char('&'));
    QTest::newRow("marks of shortcuts") << marks << QString(238, QLatin1Char('&')) + text("…");
}

void MainWindowLogsTest::aLongLabelIsCut()
{
    QFETCH(QString, keyword);
    writeLog(text("long.log"), headerOf(keyword));
    m_fixture->window().makeBackMenu();
    const QList<QAction *> entries =
        m_fixture->child<QToolButton>("arrowBackBtn")->menu()->actions();
    QCOMPARE(entries.size(), 1);
    QTEST(entries.first()->text(), "label");
}

void MainWindowLogsTest::oneLogThatCannotBeWrittenLeavesTheOther_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<bool>("lastSearch");
    QTest::addColumn<int>("history");
    QTest::newRow("the last search's") << text("sarvik.log/in/the/way") << false << 1;
    QTest::newRow("the history's") << text("sarviklog") << true << 0;
}

void MainWindowLogsTest::oneLogThatCannotBeWrittenLeavesTheOther()
{
    QFETCH(QString, obstacle);
    QFETCH(bool, lastSearch);
    QFETCH(int, history);
    const QString path = WindowFixture::applicationFile(obstacle);
    const bool isFolder = obstacle.contains(QLatin1Char('/'));
    QFile file(path);
    QVERIFY(isFolder ? QDir().mkpath(path) : file.open(QIODevice::WriteOnly));
    file.close();
    const bool searched = m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("one"));
    const QFileInfo last(WindowFixture::applicationFile(text("sarvik.log")));
    const bool isWritten = last.isFile();
    const int written = WindowFixture::logDirectory().entryList(QDir::Files).size();
    const QString told = m_fixture->statusText();
    // Before anything can fail: it would stand in the next test's way.
    QVERIFY(isFolder ? QDir(last.filePath()).removeRecursively() : file.remove());
    QVERIFY(searched);
    QCOMPARE(isWritten, lastSearch);
    QCOMPARE(written, history);
    QCOMPARE(told, QString());
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

QTEST_MAIN(MainWindowLogsTest)
#include "MainWindowLogsTest.moc"
