#include "tests/mainwindow/WindowTest.h"
#include "tests/support/Patience.h"

#include "mainwindow/TextFind.h"
#include "settings/AppSettings.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextCodec>

#include <algorithm>

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/// The file of the selected hit, and what is edited there.
class MainWindowPreviewTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aHitShowsItsFileAtItsLine();
    void aHitCannotNameAnotherFile();
    void theStatusBarTellsThePlace();
    void aFileLineShowsLineOne();
    void linesThatAreNoResultsShowNothing();
    void nothingIsShownWithoutTheFocus();
    void aLineCountIsNotPreviewed();
    void aLoadedLogIsPreviewed();
    void theSameFileIsNotReadAgain();
    void aLineBeyondTheFileGoesToTheTop();
    void aFileThatIsGoneIsToldSo();
    void aBinaryFileIsToldSoAndNotEdited();
    void theCodeSetIsDetected_data();
    void theCodeSetIsDetected();
    void bothViewsKnowThePlace();
    void anotherFileStartsThePickingAgain();

    void aModifiedFileIsOfferedForSaving_data();
    void aModifiedFileIsOfferedForSaving();
    void ctrlSSavesWithABackup();
    void savingTwiceKeepsTheFirstBackup();
    void aWideLineIsNotHiddenByItsScrollBar_data();
    void aWideLineIsNotHiddenByItsScrollBar();
    void ctrlTabWritesATab();
    void tabGoesOnToTheNextField();
    void aFileThatIsGoneIsWrittenAgain();
    void lineEndsAndMarksSurviveASave();
    void aFileChangedByOthersIsAskedFor();
    void charactersThatWouldBeLostAreAskedFor();
    void bytesThatNobodyTouchedAreAskedFor();
    void aTextThatCannotBeSavedIsKeptElsewhere();
    void aTextNobodyGaveUpIsNamedInTheStatusBar();
    void aTextThatCanBeKeptNowhereStays_data();
    void aTextThatCanBeKeptNowhereStays();
    void aWindowThatGoesUnclosedKeepsTheText();
    void aTextThatWasGivenUpIsNotKept();
    void aClickedPlaceIsNotLeftWhenTheRestComes();
    void aLargeFileIsNeverModifiedWhileItIsShown();
    void aHitFarDownALargeFileIsGoneTo();
    void loneCarriageReturnsAgreeWithTheSearchAndAreKept_data();
    void loneCarriageReturnsAgreeWithTheSearchAndAreKept();
    void aFileOfOneVeryLongLineIsShownAndSaved();
    void anotherResultReadsAChangedFileAgain();
    void aModificationIsSeen();
    void closingAsksForAModifiedFile();
    void closingIsCancelled();

private:
    /// Searches "apple" and puts the result view's cursor on that line.
    void searchAndSelect(const QString &line);
    void select(const QString &line);
    QString file(const char *name) const { return m_fixture->tree.filePath(text(name)); }
    QString previewText() const { return m_fixture->preview()->toPlainText(); }
    int previewLine() const { return m_fixture->preview()->textCursor().blockNumber() + 1; }
    void edit();
    /// Their paths.
    static QStringList rescuedFiles();
    static QByteArray contentOf(const QString &path);
};

void MainWindowPreviewTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\ntwo pears\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "the apple\n");
    m_fixture->open();
}

void MainWindowPreviewTest::select(const QString &line)
{
    GrepEditor *view = m_fixture->resultView();
    view->setFocus();
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        if (block.text().contains(line)) {
            view->setTextCursor(QTextCursor(block));
            return;
        }
    }
    QFAIL("no such line");
}

void MainWindowPreviewTest::searchAndSelect(const QString &line)
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt *.none"), text("apple")));
    select(line);
}

void MainWindowPreviewTest::edit()
{
    QTest::keyClicks(m_fixture->preview(), text("new "));
    QVERIFY(m_fixture->preview()->document()->isModified());
}

QStringList MainWindowPreviewTest::rescuedFiles()
{
    const QDir folder(WindowFixture::applicationFile(text("sarvikrescue")));
    QStringList paths;
    for (const QString &name : folder.entryList(QDir::Files))
        paths += folder.filePath(name);
    return paths;
}

QByteArray MainWindowPreviewTest::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void MainWindowPreviewTest::aHitShowsItsFileAtItsLine()
{
    searchAndSelect(text("three apple"));
    QCOMPARE(previewText(), text("one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(previewLine(), 3);
    QVERIFY(!m_fixture->preview()->document()->isModified());
    QVERIFY(m_fixture->resultView()->hasFocus());
    select(text("the apple"));
    QCOMPARE(previewText(), text("the apple\n"));
    QCOMPARE(previewLine(), 1);
}

void MainWindowPreviewTest::aHitCannotNameAnotherFile()
{
    m_fixture->tree.write(QStringLiteral("a.txt"),
                          "first apple \xE2\x80\xA9::/etc/passwd\nsecond apple\n");
    searchAndSelect(text("second apple"));
    QCOMPARE(m_fixture->preview()->fileName(), file("a.txt"));
    QCOMPARE(m_fixture->preview()->line(), 2);
    QVERIFY(m_fixture->resultText().contains(text("first apple \u2424::/etc/passwd\n")));
}

void MainWindowPreviewTest::theStatusBarTellsThePlace()
{
    searchAndSelect(text("three apple"));
    QCOMPARE(m_fixture->statusText(), file("a.txt") + text("  ---- 3:7"));
}

void MainWindowPreviewTest::aFileLineShowsLineOne()
{
    searchAndSelect(text("three apple"));
    select(text("::") + file("a.txt"));
    QCOMPARE(previewLine(), 1);
    QCOMPARE(m_fixture->statusText(), file("a.txt") + text("  ---- 1:1"));
}

void MainWindowPreviewTest::linesThatAreNoResultsShowNothing()
{
    searchAndSelect(text("該当行数"));
    QCOMPARE(previewText(), QString());
}

void MainWindowPreviewTest::nothingIsShownWithoutTheFocus()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    m_fixture->keyword1()->setFocus();
    QTextCursor cursor = m_fixture->resultView()->textCursor();
    cursor.movePosition(QTextCursor::NextBlock);
    m_fixture->resultView()->setTextCursor(cursor);
    QCOMPARE(previewText(), QString());
}

void MainWindowPreviewTest::aLineCountIsNotPreviewed()
{
    m_fixture->fill(m_fixture->tree.path(), text("*.txt"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->waitUntilIdle());
    select(text("a.txt"));
    QCOMPARE(previewText(), QString());
}

void MainWindowPreviewTest::anotherFileStartsThePickingAgain()
{
    searchAndSelect(text("one apple"));
    GrepEditor *preview = m_fixture->preview();
    QTest::keyClick(preview, Qt::Key_F5);
    QTest::keyClick(preview, Qt::Key_F5);
    QCOMPARE(preview->pickedWord(), text("one apple"));
    // The cursor stays at the first character.
    select(text("the apple"));
    QCOMPARE(preview->fileName(), file("b.txt"));
    QTest::keyClick(preview, Qt::Key_F5);
    QCOMPARE(preview->pickedWord(), text("the"));
}

void MainWindowPreviewTest::aLoadedLogIsPreviewed()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    m_fixture->open();
    select(text("three apple"));
    QCOMPARE(previewLine(), 3);
}

void MainWindowPreviewTest::theSameFileIsNotReadAgain()
{
    searchAndSelect(text("one apple"));
    m_fixture->tree.write(QStringLiteral("a.txt"), "changed\n");
    select(text("three apple"));
    QCOMPARE(previewText(), text("one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(previewLine(), 3);
    // The same line again does nothing: the cursor stays where the user put it.
    m_fixture->preview()->moveCursor(QTextCursor::Start);
    select(text("three apple"));
    QCOMPARE(previewLine(), 1);
}

void MainWindowPreviewTest::aLineBeyondTheFileGoesToTheTop()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    m_fixture->tree.write(QStringLiteral("a.txt"), "short\n");
    select(text("three apple"));
    QCOMPARE(previewText(), text("short\n"));
    QCOMPARE(previewLine(), 1);
}

void MainWindowPreviewTest::aFileThatIsGoneIsToldSo()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    m_fixture->tree.remove(QStringLiteral("a.txt"));
    select(text("three apple"));
    QCOMPARE(previewText(), file("a.txt") + text("プレビューできません。"));
    QCOMPARE(m_fixture->statusText(), file("a.txt") + text("  ---- 3:7"));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowPreviewTest::aBinaryFileIsToldSoAndNotEdited()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), text("*.txt"), text("apple")));
    m_fixture->tree.write(QStringLiteral("a.txt"), QByteArray(100, '\0'));
    select(text("three apple"));
    QCOMPARE(previewText(), file("a.txt") + text("プレビューできません。"));
    QVERIFY(m_fixture->preview()->isReadOnly());
    select(text("the apple"));
    QVERIFY(!m_fixture->preview()->isReadOnly());
}

void MainWindowPreviewTest::theCodeSetIsDetected_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QString>("label");
    QTest::newRow("Shift-JIS") << QByteArray("Shift-JIS") << text("Shift-JIS");
    QTest::newRow("EUC-JP") << QByteArray("EUC-JP") << text("EUC-JP");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << text("UTF-8");
}

void MainWindowPreviewTest::theCodeSetIsDetected()
{
    QFETCH(QByteArray, codec);
    // More than what is judged by line ends alone.
    const QString content =
        text("港町の灯台守の日記\n朝はやく灯台の灯を消した。apple\n").repeated(60);
    QString lines = content;
    lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    m_fixture->tree.write(QStringLiteral("a.txt"),
                          QTextCodec::codecForName(codec)->fromUnicode(lines));
    searchAndSelect(text("灯を消した"));
    QCOMPARE(previewText(), content);
    QStringList shown;
    const auto labels = m_fixture->window().statusBar()->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        shown += label->text();
    QFETCH(QString, label);
    QCOMPARE(shown, QStringList({label, text("CRLF")}));
}

void MainWindowPreviewTest::bothViewsKnowThePlace()
{
    searchAndSelect(text("three apple"));
    for (const GrepEditor *view : {m_fixture->resultView(), m_fixture->preview()}) {
        QCOMPARE(view->fileName(), file("a.txt"));
        QCOMPARE(view->line(), 3);
        QCOMPARE(view->column(), 7);
    }
}

void MainWindowPreviewTest::aModifiedFileIsOfferedForSaving_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes") << QMessageBox::Yes << true;
    QTest::newRow("no") << QMessageBox::No << false;
    // The other file comes all the same.
    QTest::newRow("cancel") << QMessageBox::Cancel << false;
}

void MainWindowPreviewTest::aModifiedFileIsOfferedForSaving()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(bool, saved);
    m_fixture->prompt.buttons = {answer};
    searchAndSelect(text("one apple"));
    edit();
    select(text("the apple"));
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    const UserPrompt::Message question = m_fixture->prompt.messages.first();
    QCOMPARE(question.title, text("sarvik"));
    QCOMPARE(question.text, file("a.txt") + text(" \nは修正されています。保存しますか？"));
    QVERIFY(question.buttons == (QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel));
    QCOMPARE(question.defaultButton, QMessageBox::Yes);
    QCOMPARE(previewText(), text("the apple\n"));
    const QByteArray content = m_fixture->tree.read(QStringLiteral("a.txt"));
    QCOMPARE(content.startsWith("new one apple\n"), saved);
    // Nobody said that the text may go.
    const QDir rescued(WindowFixture::applicationFile(QStringLiteral("sarvikrescue")));
    QCOMPARE(rescued.entryList(QDir::Files).size(), answer == QMessageBox::Cancel ? 1 : 0);
}

void MainWindowPreviewTest::ctrlSSavesWithABackup()
{
    searchAndSelect(text("one apple"));
    edit();
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")),
             QByteArray("new one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt.bak")),
             QByteArray("one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(m_fixture->statusText(), text("セーブしました"));
    QVERIFY(!m_fixture->preview()->document()->isModified());
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowPreviewTest::savingTwiceKeepsTheFirstBackup()
{
    searchAndSelect(text("one apple"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!QFile::exists(file("a.txt.bak")));
    QCOMPARE(m_fixture->statusText(), text("修正されていません"));
    edit();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->statusText(), text("セーブしました"));
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt.bak")),
             QByteArray("one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")),
             QByteArray("new one apple\ntwo pears\nthree apple pies\n"));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowPreviewTest::aWideLineIsNotHiddenByItsScrollBar_data()
{
    QTest::addColumn<bool>("byFind");
    QTest::newRow("a hit") << false;
    QTest::newRow("a find") << true;
}

/// The bar comes when the line is seen, and then takes room of the view.
void MainWindowPreviewTest::aWideLineIsNotHiddenByItsScrollBar()
{
    QFETCH(bool, byFind);
    m_fixture->tree.write(text("a.txt"),
                          "the first apple\n" + QByteArray("short\n").repeated(60) + "a wide apple "
                              + QByteArray("wide ").repeated(100) + '\n'
                              + QByteArray("short\n").repeated(60));
    searchAndSelect(byFind ? text(":the first apple") : text(":a wide apple"));
    GrepEditor *preview = m_fixture->preview();
    QTRY_VERIFY_WITH_TIMEOUT(!preview->isReadOnly(), kPatienceMilliseconds);
    if (byFind)
        preview->setTextCursor(preview->document()->find(text("a wide apple")));
    preview->ensureCursorVisible();
    QTRY_VERIFY_WITH_TIMEOUT(preview->horizontalScrollBar()->isVisible(), kPatienceMilliseconds);
    QCoreApplication::processEvents();
    QVERIFY(preview->viewport()->rect().contains(preview->cursorRect().bottomLeft()));
}

void MainWindowPreviewTest::ctrlTabWritesATab()
{
    searchAndSelect(text("one apple"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(previewText(), text("\tone apple\ntwo pears\nthree apple pies\n"));
    m_fixture->preview()->document()->setModified(false);
    m_fixture->preview()->setReadOnly(true);
    QTest::keyClick(m_fixture->preview(), Qt::Key_Tab, Qt::ControlModifier);
    QVERIFY(!m_fixture->preview()->document()->isModified());
}

void MainWindowPreviewTest::tabGoesOnToTheNextField()
{
    searchAndSelect(text("one apple"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_Tab);
    QVERIFY(!m_fixture->preview()->document()->isModified());
    QTRY_VERIFY_WITH_TIMEOUT(!m_fixture->preview()->hasFocus(), kPatienceMilliseconds);
}

void MainWindowPreviewTest::aFileThatIsGoneIsWrittenAgain()
{
    searchAndSelect(text("one apple"));
    m_fixture->tree.remove(QStringLiteral("a.txt"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")),
             QByteArray("one apple\ntwo pears\nthree apple pies\n"));
    QCOMPARE(m_fixture->statusText(), text("セーブしました"));
}

void MainWindowPreviewTest::lineEndsAndMarksSurviveASave()
{
    m_fixture->tree.write(QStringLiteral("a.txt"), "\xEF\xBB\xBFone apple\r\ntwo\r\n");
    searchAndSelect(text("one apple"));
    edit();
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")),
             QByteArray("\xEF\xBB\xBFnew one apple\r\ntwo\r\n"));
}

void MainWindowPreviewTest::aFileChangedByOthersIsAskedFor()
{
    m_fixture->prompt.buttons = {QMessageBox::No};
    searchAndSelect(text("one apple"));
    edit();
    m_fixture->tree.write(QStringLiteral("a.txt"), "somebody else's text\n");
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QCOMPARE(m_fixture->prompt.messages.first().defaultButton, QMessageBox::No);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")), QByteArray("somebody else's text\n"));
    QVERIFY(m_fixture->preview()->document()->isModified());
}

void MainWindowPreviewTest::charactersThatWouldBeLostAreAskedFor()
{
    m_fixture->prompt.buttons = {QMessageBox::No};
    const QByteArray bytes =
        QTextCodec::codecForName("Shift-JIS")->fromUnicode(text("港町の灯台守の日記 apple\r\n"));
    m_fixture->tree.write(QStringLiteral("a.txt"), bytes);
    searchAndSelect(text("日記 apple"));
    m_fixture->preview()->insertPlainText(text("한국어"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QVERIFY(m_fixture->prompt.messages.first().text.contains(text("한국어")));
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")), bytes);
}

void MainWindowPreviewTest::bytesThatNobodyTouchedAreAskedFor()
{
    m_fixture->prompt.buttons = {QMessageBox::No};
    const QByteArray mixed = "one apple\r\ntwo\nthree\r\n";
    m_fixture->tree.write(QStringLiteral("a.txt"), mixed);
    searchAndSelect(text("one apple"));
    edit();
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")), mixed);
}

void MainWindowPreviewTest::aTextThatCannotBeSavedIsKeptElsewhere()
{
    // Yes to saving; then the file stands no longer where it could be saved.
    m_fixture->prompt.buttons = {QMessageBox::Yes, QMessageBox::Ok, QMessageBox::Ok};
    m_fixture->tree.write(QStringLiteral("gone/c.txt"), "rare apple\n");
    searchAndSelect(text("rare apple"));
    edit();
    QVERIFY(QDir(file("gone")).removeRecursively());
    select(text("the apple"));
    QCOMPARE(previewText(), text("the apple\n"));
    QDir rescued(WindowFixture::applicationFile(QStringLiteral("sarvikrescue")));
    const QStringList names = rescued.entryList(QDir::Files);
    QCOMPARE(names.size(), 1);
    QFile kept(rescued.filePath(names.first()));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("new rare apple\n"));
    QVERIFY(m_fixture->prompt.messages.last().text.contains(names.first()));
}

void MainWindowPreviewTest::aTextNobodyGaveUpIsNamedInTheStatusBar()
{
    m_fixture->prompt.buttons = {QMessageBox::Cancel, QMessageBox::Cancel};
    searchAndSelect(text("one apple"));
    edit();
    select(text("the apple"));
    QCOMPARE(rescuedFiles().size(), 1);
    const QString first = rescuedFiles().first();
    QCOMPARE(m_fixture->statusText(), text("修正した内容を %1 に残しました").arg(first));
    QCOMPARE(contentOf(first), QByteArray("new one apple\ntwo pears\nthree apple pies\n"));
    // Another one, in the same second or not, takes no other's name.
    select(text("three apple"));
    edit();
    select(text("the apple"));
    QCOMPARE(rescuedFiles().size(), 2);
    QCOMPARE(contentOf(first), QByteArray("new one apple\ntwo pears\nthree apple pies\n"));
}

void MainWindowPreviewTest::aTextThatCanBeKeptNowhereStays_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("the question cancelled") << QMessageBox::Cancel;
    QTest::newRow("the file gone") << QMessageBox::Yes;
}

void MainWindowPreviewTest::aTextThatCanBeKeptNowhereStays()
{
    QFETCH(QMessageBox::StandardButton, answer);
    // Nothing can be written into a folder that is a file.
    QFile noFolder(WindowFixture::applicationFile(text("sarvikrescue")));
    QVERIFY(noFolder.open(QIODevice::WriteOnly));
    m_fixture->prompt.buttons = {answer};
    m_fixture->tree.write(QStringLiteral("gone/c.txt"), "rare apple\n");
    searchAndSelect(text("rare apple"));
    edit();
    QVERIFY(QDir(file("gone")).removeRecursively());
    select(text("the apple"));
    QCOMPARE(previewText(), text("new rare apple\n"));
    QVERIFY(m_fixture->preview()->document()->isModified());
    const UserPrompt::Message told = m_fixture->prompt.messages.last();
    QCOMPARE(told.icon, QMessageBox::Critical);
    QVERIFY(told.text.startsWith(file("gone/c.txt")));
    m_fixture->preview()->document()->setModified(false);
    QVERIFY(noFolder.remove());
}

void MainWindowPreviewTest::aWindowThatGoesUnclosedKeepsTheText()
{
    searchAndSelect(text("one apple"));
    edit();
    m_fixture->close();
    QVERIFY(m_fixture->prompt.messages.isEmpty());
    QCOMPARE(rescuedFiles().size(), 1);
    QCOMPARE(contentOf(rescuedFiles().first()),
             QByteArray("new one apple\ntwo pears\nthree apple pies\n"));
}

void MainWindowPreviewTest::aTextThatWasGivenUpIsNotKept()
{
    m_fixture->prompt.buttons = {QMessageBox::No};
    searchAndSelect(text("one apple"));
    edit();
    QVERIFY(m_fixture->window().close());
    m_fixture->close();
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QVERIFY(rescuedFiles().isEmpty());
}

void MainWindowPreviewTest::aClickedPlaceIsNotLeftWhenTheRestComes()
{
    m_fixture->tree.write(QStringLiteral("a.txt"),
                          "an apple\n" + QByteArray("nothing here\n").repeated(60000));
    searchAndSelect(text("an apple"));
    QVERIFY(m_fixture->preview()->isReadOnly());
    QCOMPARE(previewLine(), 1);
    m_fixture->preview()->setTextCursor(
        QTextCursor(m_fixture->preview()->document()->findBlockByNumber(9)));
    QTRY_VERIFY_WITH_TIMEOUT(!m_fixture->preview()->isReadOnly(), kPatienceMilliseconds);
    QCOMPARE(previewLine(), 10);
}

void MainWindowPreviewTest::aLargeFileIsNeverModifiedWhileItIsShown()
{
    const QByteArray large = QByteArray("an apple a day\n").repeated(60000);
    m_fixture->tree.write(QStringLiteral("a.txt"), large);
    searchAndSelect(text("an apple"));
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QTest::keyClicks(m_fixture->preview(), text("x"));
    select(text("the apple"));
    QVERIFY(m_fixture->prompt.messages.isEmpty());
    QCOMPARE(previewText(), text("the apple\n"));
    QTest::qWait(100);
    QCOMPARE(previewText(), text("the apple\n"));
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")), large);
}

void MainWindowPreviewTest::aHitFarDownALargeFileIsGoneTo()
{
    m_fixture->tree.write(QStringLiteral("a.txt"),
                          QByteArray("nothing here\n").repeated(60000) + "an apple\nand more\n");
    searchAndSelect(file("a.txt"));
    // Before the file is there, as with a key held down.
    select(text("an apple"));
    QTRY_COMPARE_WITH_TIMEOUT(previewLine(), 60001, kPatienceMilliseconds);
    QVERIFY(!m_fixture->preview()->isReadOnly());
    QCOMPARE(m_fixture->preview()->line(), 60001);
}

void MainWindowPreviewTest::loneCarriageReturnsAgreeWithTheSearchAndAreKept_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("hit");
    QTest::addColumn<QByteArray>("saved");
    QTest::newRow("before the hit")
        << QByteArray("a\rb\rc\nan apple\n") << QStringLiteral("      2:    4:an apple")
        << QByteArray("a\rb\rc\nnew an apple\n");
    QTest::newRow("in the hit's line") << QByteArray("a\r\nb\rsome apple\r\nc\rd\r\n")
                                       << QStringLiteral("      2:    7:bsome apple")
                                       << QByteArray("a\r\nb\rnew some apple\r\nc\rd\r\n");
    QTest::newRow("as all line ends")
        << QByteArray("a\rb\ran apple\rc\r") << QStringLiteral("      1:    6:aban applec")
        << QByteArray("a\rb\rnew an apple\rc\r");
}

void MainWindowPreviewTest::loneCarriageReturnsAgreeWithTheSearchAndAreKept()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, hit);
    QFETCH(QByteArray, saved);
    m_fixture->tree.write(QStringLiteral("a.txt"), content);
    searchAndSelect(hit);
    edit();
    m_fixture->preview()->setFocus();
    QTest::keyClick(m_fixture->preview(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_fixture->tree.read(QStringLiteral("a.txt")), saved);
    QVERIFY(m_fixture->prompt.messages.isEmpty());
}

void MainWindowPreviewTest::aFileOfOneVeryLongLineIsShownAndSaved()
{
    const QByteArray content = QByteArray("int \xE5\x9B\xB3\t= apple; ").repeated(10000);
    m_fixture->tree.write(QStringLiteral("a.txt"), content);
    searchAndSelect(QString::fromUtf8(content));
    QVERIFY(m_fixture->resultView()->currentLineText().endsWith(QString::fromUtf8(content)));
    GrepEditor *preview = m_fixture->preview();
    QTRY_VERIFY_WITH_TIMEOUT(!preview->isReadOnly(), kPatienceMilliseconds);
    QVERIFY(previewText() == QString::fromUtf8(content));
    QCOMPARE(previewLine(), 1);

    TextFind find(preview, text("apple"), {}, TextFind::Direction::Backward);
    TextFind::Result result = TextFind::Result::Searching;
    while (result == TextFind::Result::Searching)
        result = find.step(100);
    QCOMPARE(result, TextFind::Result::FoundAfterWrap);
    find.select();
    const int last = QString::fromUtf8(content).lastIndexOf(text("apple"));
    QCOMPARE(preview->textCursor().selectionStart(), last);
    QCOMPARE(preview->textCursor().selectedText(), text("apple"));
    preview->setFocus();
    QTest::keyClicks(preview, text("pear"));
    QTest::keyClick(preview, Qt::Key_S, Qt::ControlModifier);
    QByteArray changed = content;
    changed.replace(content.lastIndexOf("apple"), 5, "pear");
    QVERIFY(m_fixture->tree.read(QStringLiteral("a.txt")) == changed);
    QVERIFY(m_fixture->tree.read(QStringLiteral("a.txt.bak")) == content);
}

void MainWindowPreviewTest::anotherResultReadsAChangedFileAgain()
{
    searchAndSelect(text("three apple"));
    m_fixture->tree.write(QStringLiteral("a.txt"), "first\nsecond apple\n");
    searchAndSelect(text("second apple"));
    QCOMPARE(previewText(), text("first\nsecond apple\n"));
    QCOMPARE(previewLine(), 2);
}

void MainWindowPreviewTest::aModificationIsSeen()
{
    searchAndSelect(text("three apple"));
    const auto isMarked = [this] {
        const auto labels = m_fixture->window().statusBar()->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
            return label->text().contains(text("修正あり"));
        });
    };
    QVERIFY(!isMarked());
    edit();
    QVERIFY(isMarked());
    m_fixture->preview()->undo();
    QVERIFY(!isMarked());
}

void MainWindowPreviewTest::closingAsksForAModifiedFile()
{
    m_fixture->prompt.buttons = {QMessageBox::Yes};
    searchAndSelect(text("one apple"));
    edit();
    QVERIFY(m_fixture->window().close());
    QVERIFY(m_fixture->tree.read(QStringLiteral("a.txt")).startsWith("new one"));
}

void MainWindowPreviewTest::closingIsCancelled()
{
    m_fixture->prompt.buttons = {QMessageBox::Cancel, QMessageBox::No};
    searchAndSelect(text("one apple"));
    edit();
    QVERIFY(!m_fixture->window().close());
    QVERIFY(m_fixture->window().isVisible());
    QVERIFY(m_fixture->window().close());
    QVERIFY(m_fixture->tree.read(QStringLiteral("a.txt")).startsWith("one"));
}

QTEST_MAIN(MainWindowPreviewTest)
#include "MainWindowPreviewTest.moc"
