#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "settings/AppSettings.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
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

/// Everything that a log brings back, apart from the text.
struct Form {
    QString paths;
    QString mask;
    QString keyword1;
    QString keyword2;
    QString keyword3;
    int lineDistance = 0;
    bool ignoreCase = false;
    bool word = false;
    bool regexp = false;
    bool subdir = false;
    bool extraGroup = false;
    bool useKeyword2 = false;
    bool keyword3Group = false;

    /// For a comparison that names what differs.
    QStringList values() const
    {
        const auto flag = [](const char *name, bool value) -> QString {
            return text(name) + text(value ? "=1" : "=0");
        };
        return {paths,
                mask,
                keyword1,
                keyword2,
                keyword3,
                QString::number(lineDistance),
                flag("case", ignoreCase),
                flag("word", word),
                flag("regexp", regexp),
                flag("subdir", subdir),
                flag("group", extraGroup),
                flag("use keyword 2", useKeyword2),
                flag("group 3", keyword3Group)};
    }
};

/// The log of one search in which everything is in use, as a file.
QByteArray logOf(const Form &form, const QString &pathList, const QString &listed)
{
    const auto flag = [](const char *label, bool value) -> QString {
        return text(label) + text(value ? "1\n" : "0\n");
    };
    const auto line = [](const char *label, const QString &value) -> QString {
        return text(label) + value + QLatin1Char('\n');
    };
    QString log = text("version :5.00\n");
    log += line("keyword1:", form.keyword1);
    log += flag("case    :", form.ignoreCase);
    log += flag("word    :", form.word);
    log += flag("regexp  :", form.regexp);
    log += flag("subdir  :", form.subdir);
    log += flag("groupbox:", form.extraGroup);
    log += line("keyword2:", form.keyword2);
    log += line("plusline:", QString::number(form.lineDistance));
    log += line("pathlist:", pathList);
    log += line("mask    :", form.mask);
    log += line("ext     :", text("c"));
    log += flag("exclsive:", form.keyword3Group);
    log += line("keyword3:", form.keyword3);
    log += text("-----------------------\n") + listed;
    return log.toUtf8();
}

Form fullForm()
{
    Form form;
    form.paths = text("/one/\n/二/");
    form.mask = text("*.c *.h");
    form.keyword1 = text("灯台");
    form.keyword2 = text("second, 二");
    form.keyword3 = text("third");
    form.lineDistance = 7;
    form.extraGroup = form.useKeyword2 = form.keyword3Group = true;
    return form;
}

const char *const kPathList = "/one/, /二/";

} // namespace

Q_DECLARE_METATYPE(Form)

/// A log, or what was remembered of the form, brought back into the window.
class MainWindowRestoreTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aLogBringsEverythingBack_data();
    void aLogBringsEverythingBack();
    void theLogOfTheLastSearchBringsAllButThePathsBack();
    void aLoadedTextIsNotModified();
    void forwardFromTheNewestRestoresTheFormToTheLetter();
    void aLogThatCannotBeReadChangesNothing_data();
    void aLogThatCannotBeReadChangesNothing();
    void aCancelledChooserChangesNothing();
    void theChooserClosesWithEscape();
    void theMenuThatOpensListsLogsOfOtherWindows();
    void theFocusStaysWhenALogIsLoaded_data();
    void theFocusStaysWhenALogIsLoaded();
    void pagingWithTheMouseLeavesTheFocus();

private:
    void writeLog(const QString &name, const QByteArray &content, int minutesAgo = 0);
    Form shown() const;
    /// Other values than form's everywhere.
    void fillWithTheOppositeOf(const Form &form);
    QMenu *backMenu() const { return m_fixture->child<QToolButton>("arrowBackBtn")->menu(); }
};

void MainWindowRestoreTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->open();
}

void MainWindowRestoreTest::writeLog(const QString &name, const QByteArray &content, int minutesAgo)
{
    QFile file(WindowFixture::logDirectory().filePath(name));
    if (!WindowFixture::logDirectory().mkpath(text(".")) || !file.open(QIODevice::WriteOnly)
        || file.write(content) != content.size() || !file.flush()
        || !file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutesAgo),
                             QFileDevice::FileModificationTime))
        qFatal("cannot write the log");
}

Form MainWindowRestoreTest::shown() const
{
    const AppSettings &settings = AppSettings::instance();
    Form form;
    form.paths = m_fixture->pathEdit()->toPlainText();
    form.mask = m_fixture->mask()->currentText();
    form.keyword1 = m_fixture->keyword1()->currentText();
    form.keyword2 = m_fixture->keyword2()->currentText();
    form.keyword3 = m_fixture->keyword3()->currentText();
    form.lineDistance = m_fixture->child<QSpinBox>("lineDistance")->value();
    form.ignoreCase = settings.caseinsensitive;
    form.word = settings.word;
    form.regexp = settings.regexp;
    form.subdir = m_fixture->child<QCheckBox>("subdirCheck")->isChecked();
    form.extraGroup = m_fixture->child<QGroupBox>("extraGroup")->isChecked();
    form.useKeyword2 = m_fixture->child<QCheckBox>("useKeyword2")->isChecked();
    form.keyword3Group = m_fixture->child<QGroupBox>("keyword3Group")->isChecked();
    return form;
}

void MainWindowRestoreTest::fillWithTheOppositeOf(const Form &form)
{
    const auto setToggle = [this](const char *button, const bool &setting, bool value) {
        if (setting != value)
            m_fixture->child<QAbstractButton>(button)->click();
    };
    const AppSettings &settings = AppSettings::instance();
    setToggle("btnCase", settings.caseinsensitive, !form.ignoreCase);
    setToggle("btnWord", settings.word, !form.word);
    setToggle("btnRegexp", settings.regexp, !form.regexp);
    m_fixture->fill(text("/before/"), text("*.before"), text("before"));
    m_fixture->keyword2()->setEditText(text("before 2"));
    m_fixture->keyword3()->setEditText(text("before 3"));
    m_fixture->child<QSpinBox>("lineDistance")->setValue(form.lineDistance + 1);
    m_fixture->child<QCheckBox>("subdirCheck")->setChecked(!form.subdir);
    m_fixture->child<QCheckBox>("useKeyword2")->setChecked(!form.useKeyword2);
    m_fixture->child<QGroupBox>("extraGroup")->setChecked(!form.extraGroup);
    m_fixture->child<QGroupBox>("keyword3Group")->setChecked(!form.keyword3Group);
    m_fixture->resultView()->setPlainText(text("listed before"));
}

void MainWindowRestoreTest::aLogBringsEverythingBack_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QString>("pathList");
    QTest::newRow("all conditions, no switch") << fullForm() << text(kPathList);
    Form form = fullForm();
    form.ignoreCase = form.subdir = true;
    QTest::newRow("ignoring case, with subfolders") << form << text(kPathList);
    form = fullForm();
    form.word = true;
    QTest::newRow("words") << form << text(kPathList);
    form = fullForm();
    form.regexp = true;
    form.keyword1 = text("灯|台 ");
    QTest::newRow("a pattern") << form << text(kPathList);
    form = fullForm();
    form.paths = text("/one/\n@/list.ini");
    QTest::newRow("a list file ends the paths") << form << text("/one/, @/list.ini/, /never/");
}

void MainWindowRestoreTest::aLogBringsEverythingBack()
{
    QFETCH(Form, form);
    QFETCH(QString, pathList);
    const QString listed = text("::/one/a.c\n      1:    1:灯台");
    writeLog(text("a.log"), logOf(form, pathList, listed));
    fillWithTheOppositeOf(form);
    QVERIFY(shown().values() != form.values());
    QVERIFY(m_fixture->chooseLog(text("a.log")));
    QCOMPARE(shown().values(), form.values());
    QCOMPARE(m_fixture->resultView()->toPlainText(), listed);
    // The toggles show what they are.
    QCOMPARE(m_fixture->child<QAbstractButton>("btnCase")->isChecked(), form.ignoreCase);
    QCOMPARE(m_fixture->child<QAbstractButton>("btnWord")->isChecked(), form.word);
    QCOMPARE(m_fixture->child<QAbstractButton>("btnRegexp")->isChecked(), form.regexp);
}

void MainWindowRestoreTest::theLogOfTheLastSearchBringsAllButThePathsBack()
{
    Form form = fullForm();
    form.word = form.subdir = true;
    writeLog(text("sarvik.log"), logOf(form, text(kPathList), text("listed")));
    fillWithTheOppositeOf(form);
    QVERIFY(m_fixture->chooseLog(text("sarvik.log")));
    form.paths.clear();
    QCOMPARE(shown().values(), form.values());
    QCOMPARE(m_fixture->resultView()->toPlainText(), text("listed"));
}

void MainWindowRestoreTest::aLoadedTextIsNotModified()
{
    writeLog(text("a.log"), logOf(fullForm(), text(kPathList), text("listed\n").repeated(60000)));
    m_fixture->resultView()->document()->setModified(true);
    QVERIFY(m_fixture->chooseLog(text("a.log")));
    QVERIFY(!m_fixture->resultView()->document()->isModified());
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->resultView()->blockCount(), 60001, kPatienceMilliseconds);
    QVERIFY(!m_fixture->resultView()->document()->isModified());
}

void MainWindowRestoreTest::forwardFromTheNewestRestoresTheFormToTheLetter()
{
    m_fixture->tree.write(text("a.txt"), "one\n");
    const QString paths = m_fixture->tree.path().chopped(1) + text("\n\n/no such folder");
    AppSettings &settings = AppSettings::instance();
    settings.caseinsensitive = false;
    settings.word = true;
    settings.regexp = false;
    QVERIFY(m_fixture->search(paths, text("*.txt  *.c"), text(" one ")));
    fillWithTheOppositeOf(shown());
    QVERIFY(settings.caseinsensitive && !settings.word && settings.regexp);
    m_fixture->window().arrowForward();
    QCOMPARE(m_fixture->pathEdit()->toPlainText(), paths);
    QCOMPARE(m_fixture->mask()->currentText(), text("*.txt  *.c"));
    QCOMPARE(m_fixture->keyword1()->currentText(), text(" one "));
    QVERIFY(!settings.caseinsensitive && settings.word && !settings.regexp);
    QVERIFY(!m_fixture->child<QAbstractButton>("btnCase")->isChecked());
    QVERIFY(m_fixture->child<QAbstractButton>("btnWord")->isChecked());
    QVERIFY(!m_fixture->child<QAbstractButton>("btnRegexp")->isChecked());
    QCOMPARE(m_fixture->resultView()->toPlainText(), QString());
    // Only what a search is paged by; the rest is as the user left it.
    QCOMPARE(m_fixture->keyword2()->currentText(), text("before 2"));
}

void MainWindowRestoreTest::aLogThatCannotBeReadChangesNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"menu", "back", "chooser"})
        QTest::newRow(way) << text(way);
}

void MainWindowRestoreTest::aLogThatCannotBeReadChangesNothing()
{
    QFETCH(QString, way);
    writeLog(text("newer.log"), logOf(fullForm(), text(kPathList), text("newer")), 1);
    writeLog(text("older.log"), logOf(fullForm(), text(kPathList), text("older")), 2);
    m_fixture->window().makeBackMenu();
    fillWithTheOppositeOf(fullForm());
    const QStringList before = shown().values();
    const QString path = WindowFixture::logDirectory().filePath(text("older.log"));
    m_fixture->keyword1()->setFocus();
    if (way == text("chooser"))
        QVERIFY(
            m_fixture->chooseLog(text("older.log"), WindowFixture::LogChoice::AcceptWhatIsGone));
    else
        QVERIFY(QFile::remove(path));
    if (way == text("menu"))
        m_fixture->window().openLogfile(backMenu()->actions().at(1));
    else if (way == text("back"))
        m_fixture->window().arrowBack();
    QCOMPARE(m_fixture->statusText(), text("%1 を開けません").arg(path));
    QCOMPARE(shown().values(), before);
    QCOMPARE(m_fixture->resultView()->toPlainText(), text("listed before"));
    // The window's own: after a dialog it may not be the active one again.
    QCOMPARE(m_fixture->window().focusWidget(), m_fixture->keyword1());
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowRestoreTest::aCancelledChooserChangesNothing()
{
    writeLog(text("a.log"), logOf(fullForm(), text(kPathList), text("listed")));
    fillWithTheOppositeOf(fullForm());
    const QStringList before = shown().values();
    QVERIFY(m_fixture->chooseLog(text("a.log"), WindowFixture::LogChoice::Cancel));
    QCOMPARE(shown().values(), before);
    QCOMPARE(m_fixture->resultView()->toPlainText(), text("listed before"));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowRestoreTest::theChooserClosesWithEscape()
{
    bool closed = false;
    QTimer::singleShot(0, this, [&closed] {
        QWidget *dialog = QApplication::activeModalWidget();
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape);
        closed = !dialog->isVisible();
    });
    m_fixture->window().openFile();
    QVERIFY(closed);
    QVERIFY(m_fixture->window().isVisible());
}

void MainWindowRestoreTest::theMenuThatOpensListsLogsOfOtherWindows()
{
    m_fixture->window().makeBackMenu();
    QCOMPARE(backMenu()->actions().size(), 0);
    QVERIFY(!m_fixture->child<QToolButton>("arrowBackBtn")->isEnabled());
    writeLog(text("a.log"), logOf(fullForm(), text(kPathList), text("listed")), 1);
    writeLog(text("b.log"), logOf(fullForm(), text(kPathList), text("listed")), 2);
    backMenu()->popup(m_fixture->window().pos());
    QCOMPARE(backMenu()->actions().size(), 2);
    QVERIFY(m_fixture->child<QToolButton>("arrowBackBtn")->isEnabled());
    backMenu()->close();
}

void MainWindowRestoreTest::theFocusStaysWhenALogIsLoaded_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"menu", "back", "forward", "chooser"})
        QTest::newRow(way) << text(way);
}

void MainWindowRestoreTest::theFocusStaysWhenALogIsLoaded()
{
    QFETCH(QString, way);
    writeLog(text("newer.log"), logOf(fullForm(), text(kPathList), text("newer")), 1);
    writeLog(text("older.log"), logOf(fullForm(), text(kPathList), text("older")), 2);
    m_fixture->window().makeBackMenu();
    if (way == text("forward"))
        m_fixture->window().arrowBack();
    m_fixture->keyword1()->setFocus();
    if (way == text("menu"))
        backMenu()->actions().at(0)->trigger();
    else if (way == text("back"))
        m_fixture->child<QToolButton>("arrowBackBtn")->click();
    else if (way == text("forward"))
        m_fixture->child<QToolButton>("arrowForwardBtn")->click();
    else
        QVERIFY(m_fixture->chooseLog(text("older.log")));
    QCOMPARE(m_fixture->window().focusWidget(), m_fixture->keyword1());
}

void MainWindowRestoreTest::pagingWithTheMouseLeavesTheFocus()
{
    writeLog(text("newer.log"), logOf(fullForm(), text(kPathList), text("newer")), 1);
    writeLog(text("older.log"), logOf(fullForm(), text(kPathList), text("older")), 2);
    m_fixture->window().makeBackMenu();
    m_fixture->keyword1()->setFocus();
    emit m_fixture->resultView()->BackButton();
    QCOMPARE(m_fixture->resultView()->toPlainText(), text("older"));
    emit m_fixture->resultView()->ForwardButton();
    QCOMPARE(m_fixture->resultView()->toPlainText(), text("newer"));
    QCOMPARE(m_fixture->window().focusWidget(), m_fixture->keyword1());
}

QTEST_MAIN(MainWindowRestoreTest)
#include "MainWindowRestoreTest.moc"
