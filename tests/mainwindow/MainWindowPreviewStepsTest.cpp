#include "tests/mainwindow/WindowTest.h"

#include "settings/SaveSteps.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include <utility>

using SaveSteps::Step;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const QByteArray kContent = "one apple\ntwo pears\nthree apple pies\n";

} // namespace

/// What a move of the result view's cursor does to status bar and preview, step by
/// step, and what is told when an edited file cannot be saved.
class MainWindowPreviewStepsTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyMoveClearsTheStatusBar();
    void aLineThatIsNoResultLeavesTheSelectedHit_data();
    void aLineThatIsNoResultLeavesTheSelectedHit();
    void aHitWithoutNumbersIsShownAsFarAsItGoes_data();
    void aHitWithoutNumbersIsShownAsFarAsItGoes();
    void theHitIsVisibleAndNothingScrollsInVain();
    void aSearchLeavesTheFileThatIsShown();

    void aBackupThatCannotBeMadeIsTold();
    void aFileThatCannotBeWrittenIsTold();
    void aFileThatChangesDuringTheSaveIsAskedFor_data();
    void aFileThatChangesDuringTheSaveIsAskedFor();

private:
    void select(const QString &part) const;
    GrepEditor *results() const { return m_fixture->resultView(); }
    GrepEditor *preview() const { return m_fixture->preview(); }
    int previewLine() const { return preview()->textCursor().blockNumber() + 1; }
    QString file() const { return m_fixture->tree.filePath(text("a.txt")); }
    void editAndSave(Step failing);
    QByteArray content(const char *name) const { return m_fixture->tree.read(text(name)); }
};

void MainWindowPreviewStepsTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(text("a.txt"), kContent);
    m_fixture->tree.write(text("b.txt"), "an apple tree\n");
    m_fixture->open();
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
}

void MainWindowPreviewStepsTest::cleanup()
{
    SaveSteps::setObserver(nullptr);
    m_fixture.reset();
}

void MainWindowPreviewStepsTest::select(const QString &part) const
{
    results()->setFocus();
    for (QTextBlock block = results()->document()->begin(); block.isValid(); block = block.next()) {
        if (block.text().contains(part)) {
            results()->setTextCursor(QTextCursor(block));
            return;
        }
    }
    QFAIL("no such line");
}

void MainWindowPreviewStepsTest::everyMoveClearsTheStatusBar()
{
    select(text("three apple"));
    QCOMPARE(m_fixture->statusText(), file() + text("  ---- 3:7"));
    // Within the line of the hit, which stays the one that is shown.
    QTest::keyClick(results(), Qt::Key_Right);
    QCOMPARE(m_fixture->statusText(), QString());
    QCOMPARE(previewLine(), 3);
    // Onto a line that is none, and along it.
    select(text("three apple"));
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home}) {
        m_fixture->window().statusBar()->showMessage(text("a message"));
        QTest::keyClick(results(), key, Qt::ControlModifier);
        QTest::keyClick(results(), Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(m_fixture->statusText(), QString());
    }
}

void MainWindowPreviewStepsTest::aLineThatIsNoResultLeavesTheSelectedHit_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("empty") << QString();
    QTest::newRow("hyphens") << text("-----------");
    QTest::newRow("a word") << text("該当行数 3");
    QTest::newRow("a number, as of a line count") << text("12 /a.txt");
    QTest::newRow("a full-width blank") << text("　1:    1:text");
}

void MainWindowPreviewStepsTest::aLineThatIsNoResultLeavesTheSelectedHit()
{
    QFETCH(QString, line);
    results()->setPlainText(text("::%1\n      3:    7:three apple pies\n%2").arg(file(), line));
    select(text("three apple"));
    QCOMPARE(previewLine(), 3);
    preview()->moveCursor(QTextCursor::Start);
    QTest::keyClick(results(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(results()->currentLineText(), line);
    QCOMPARE(preview()->toPlainText().toUtf8(), kContent);
    QCOMPARE(m_fixture->statusText(), QString());
    // Back on the hit that was handled last: nothing is done for it again.
    select(text("three apple"));
    QCOMPARE(previewLine(), 1);
    QCOMPARE(m_fixture->statusText(), QString());
}

void MainWindowPreviewStepsTest::aHitWithoutNumbersIsShownAsFarAsItGoes_data()
{
    QTest::addColumn<QString>("hit");
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("line");
    const auto row = [](const char *name, const char *hit, const char *place, int line) {
        QTest::newRow(name) << text(hit) << text(place) << line;
    };
    row("no number of a line", "      x:    2:text", "0:2", 1);
    row("no number of a column", "      2:    y:text", "2:0", 2);
    row("no second colon", "      3:    5", "3:5", 3);
    row("no colon", "      2", "2:0", 2);
    row("nothing but blanks", "      ", "0:0", 1);
    row("a number that is too large", "  99999999999:    1:text", "0:1", 1);
    row("a negative number", "     -2:    1:text", "-2:1", 1);
    row("beyond the end", "     99:    1:text", "99:1", 1);
    row("more colons", "      2:    1:a:b:c", "2:1", 2);
}

void MainWindowPreviewStepsTest::aHitWithoutNumbersIsShownAsFarAsItGoes()
{
    QFETCH(QString, hit);
    QFETCH(QString, place);
    QFETCH(int, line);
    results()->setPlainText(text("::%1\n%2").arg(file(), hit));
    QTest::keyClick(results(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(m_fixture->statusText(), file() + text("  ---- ") + place);
    QCOMPARE(preview()->toPlainText().toUtf8(), kContent);
    QCOMPARE(previewLine(), line);
    QCOMPARE(preview()->textCursor().positionInBlock(), 0);
}

void MainWindowPreviewStepsTest::theHitIsVisibleAndNothingScrollsInVain()
{
    QByteArray lines;
    for (int line = 1; line <= 900; ++line)
        lines += "line " + QByteArray::number(line) + '\n';
    m_fixture->tree.write(text("long.txt"), lines);
    QString listed = text("::") + m_fixture->tree.filePath(text("long.txt"));
    for (const int line : {450, 449, 900, 3, 4})
        listed += text("\n%1:    1:line").arg(line, 7);
    results()->setPlainText(listed);
    select(text("::"));
    const QScrollBar *bar = preview()->verticalScrollBar();
    const int height = preview()->viewport()->height();
    const auto goTo = [&](int row) {
        select(results()->document()->findBlockByNumber(row).text());
        return preview()->cursorRect();
    };
    // From above: the last line that fits.
    QRect cursor = goTo(1);
    QCOMPARE(previewLine(), 450);
    QVERIFY(preview()->viewport()->rect().contains(cursor));
    QVERIFY(cursor.bottom() + 2 * cursor.height() > height);
    // In sight already.
    const int before = bar->value();
    QVERIFY(before > 0);
    goTo(2);
    QCOMPARE(previewLine(), 449);
    QCOMPARE(bar->value(), before);
    cursor = goTo(3);
    QCOMPARE(previewLine(), 900);
    QVERIFY(preview()->viewport()->rect().contains(cursor));
    // From below: the first line.
    cursor = goTo(4);
    QCOMPARE(previewLine(), 3);
    QCOMPARE(bar->value(), 2);
    QVERIFY(preview()->viewport()->rect().contains(cursor));
    goTo(5);
    QCOMPARE(bar->value(), 2);
}

void MainWindowPreviewStepsTest::editAndSave(Step failing)
{
    select(text("one apple"));
    QTest::keyClicks(preview(), text("new "));
    preview()->setFocus();
    SaveSteps::setObserver([failing](Step step) { return step != failing; });
    QTest::keyClick(preview(), Qt::Key_S, Qt::ControlModifier);
}

void MainWindowPreviewStepsTest::aSearchLeavesTheFileThatIsShown()
{
    // Nothing was shown before the first one.
    QCOMPARE(preview()->toPlainText(), QString());
    select(text("three apple"));
    const QString shown = preview()->toPlainText();
    QVERIFY(shown.contains(text("two pears")));
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("tree")));
    QVERIFY(results()->textCursor().block().text().startsWith(text("::")));
    QCOMPARE(preview()->toPlainText(), shown);
    QTest::keyClick(results(), Qt::Key_Down);
    QCOMPARE(preview()->toPlainText(), text("an apple tree\n"));
}

void MainWindowPreviewStepsTest::aBackupThatCannotBeMadeIsTold()
{
    editAndSave(Step::PlaceBackup);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    const UserPrompt::Message told = m_fixture->prompt.messages.first();
    QCOMPARE(told.icon, QMessageBox::Critical);
    QCOMPARE(told.title, text("sarvik"));
    QCOMPARE(told.text,
             text(" %1\n　　　　　　↓　　　　　\n %2\nリネーム失敗しました。")
                 .arg(file(), file() + text(".bak")));
    QVERIFY(told.buttons == QMessageBox::Ok);
    QVERIFY(preview()->document()->isModified());
    QCOMPARE(content("a.txt"), kContent);
    // With the obstacle out of the way, the same key saves.
    SaveSteps::setObserver(nullptr);
    QTest::keyClick(preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(content("a.txt"), "new " + kContent);
    QCOMPARE(content("a.txt.bak"), kContent);
    QVERIFY(!preview()->document()->isModified());
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
}

void MainWindowPreviewStepsTest::aFileThatCannotBeWrittenIsTold()
{
    for (const Step failing : {Step::WriteNew, Step::ReplaceOld}) {
        m_fixture->prompt.messages.clear();
        editAndSave(failing);
        QCOMPARE(m_fixture->statusText(), text("セーブ中にエラーが発生しました"));
        QCOMPARE(m_fixture->prompt.messages.size(), 1);
        const UserPrompt::Message told = m_fixture->prompt.messages.first();
        QCOMPARE(told.icon, QMessageBox::Critical);
        QCOMPARE(told.title, text("sarvik"));
        QCOMPARE(told.text, text("セーブ中にエラーが発生しました"));
        QVERIFY(preview()->document()->isModified());
        QCOMPARE(content("a.txt"), kContent);
        SaveSteps::setObserver(nullptr);
        preview()->undo();
    }
    preview()->document()->setModified(false);
}

void MainWindowPreviewStepsTest::aFileThatChangesDuringTheSaveIsAskedFor_data()
{
    QTest::addColumn<bool>("saved");
    QTest::newRow("and saved") << true;
    QTest::newRow("and left") << false;
}

void MainWindowPreviewStepsTest::aFileThatChangesDuringTheSaveIsAskedFor()
{
    QFETCH(bool, saved);
    select(text("one apple"));
    QTest::keyClicks(preview(), text("new "));
    preview()->setFocus();
    bool done = false;
    SaveSteps::setObserver([&](Step step) {
        if (step == Step::ReplaceOld && !std::exchange(done, true))
            m_fixture->tree.write(text("a.txt"), "another's\n");
        return true;
    });
    m_fixture->prompt.buttons = {saved ? QMessageBox::Yes : QMessageBox::No};
    QTest::keyClick(preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QVERIFY(m_fixture->prompt.messages.first().text.contains(text("他のプログラムで変更")));
    QCOMPARE(content("a.txt"), saved ? "new " + kContent : QByteArray("another's\n"));
    if (saved)
        QCOMPARE(content("a.txt.bak"), QByteArray("another's\n"));
    QCOMPARE(preview()->document()->isModified(), !saved);
    preview()->document()->setModified(false);
}

QTEST_MAIN(MainWindowPreviewStepsTest)
#include "MainWindowPreviewStepsTest.moc"
