#include "mainwindow/PathEdit.h"

#include "tests/support/MouseSteps.h"
#include "tests/support/ScratchFolder.h"
#include "view/TextDrag.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <QtTest>

#include <memory>

class PathEditTest : public QObject {
    Q_OBJECT

private slots:
    void theLinesReplaceTheText();
    void theTextIsLetterByLetter();
    void whatIsCopiedIsLetterByLetter();
    void afterSettingLinesTheCursorIsAtTheStart();
    void aLineIsAddedAtTheEnd_data();
    void aLineIsAddedAtTheEnd();
    void afterAddingTheCursorIsBeforeTheLastCharacter();
    void aLineIsAddedBehindAllWhereverTheCursorIs();
    void linesAreNotWrapped();

    void aPastedFolderIsALineOfItsOwn();
    void ofAPastedFileItIsTheFolder();
    void filesOfOneFolderAreOneLine();
    void aFolderThatIsThereIsNotAddedAgain();
    void manyFoldersAreOneChange_data();
    void manyFoldersAreOneChange();
    void pastedTextIsInsertedAtTheCursor();
    void aPastedPathIsTakenOutOfItsWriting_data();
    void aPastedPathIsTakenOutOfItsWriting();
    void whatIsPastedIntoAPathStaysAsItIs();
    void ofAPastedPathOfAFileItIsTheFolder();
    void whatIsTypedStaysAsItIs();
    void anAddressElsewhereIsPastedAsText();
    void aDroppedFolderIsALineOfItsOwn();
    void aNameWithBlanksAndJapaneseIsWhole();

    void shiftOrCtrlAndReturnMakeANewLine_data();
    void shiftOrCtrlAndReturnMakeANewLine();
    void tabLeavesTheEditor();
    void aDraggedPathIsACopy();
};

namespace {

/// Hands data over as a paste does.
void paste(PathEdit &edit, QMimeData *data)
{
    QApplication::clipboard()->setMimeData(data);
    edit.paste();
}

QMimeData *files(const QStringList &paths)
{
    auto *data = new QMimeData;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls += QUrl::fromLocalFile(path);
    data->setUrls(urls);
    return data;
}

} // namespace

void PathEditTest::theLinesReplaceTheText()
{
    PathEdit edit;
    edit.setPlainText(QStringLiteral("old"));
    edit.setLines({QStringLiteral("/a/"), QStringLiteral("/b/")});
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/\n/b/"));
    edit.setLines({});
    QCOMPARE(edit.toPlainText(), QString());
}

void PathEditTest::theTextIsLetterByLetter()
{
    PathEdit edit;
    QCOMPARE(edit.text(), QString());
    const QString lines = QStringLiteral("/a\u00A0b/\n/c d/");
    edit.setLines(lines.split(QLatin1Char('\n')));
    QCOMPARE(edit.text(), lines);
    // A row is a line, however it came to be one.
    edit.insertPlainText(QStringLiteral("/e/\u2028"));
    QCOMPARE(edit.text(), QStringLiteral("/e/\n") + lines);
}

void PathEditTest::whatIsCopiedIsLetterByLetter()
{
    PathEdit edit;
    const QString lines = QStringLiteral("/a\u00A0b/\n/c d/");
    edit.setPlainText(lines);
    edit.selectAll();
    edit.copy();
    QCOMPARE(QApplication::clipboard()->text(), lines);
    edit.cut();
    QCOMPARE(edit.text(), QString());
    edit.paste();
    QCOMPARE(edit.text(), lines);
}

void PathEditTest::afterSettingLinesTheCursorIsAtTheStart()
{
    PathEdit edit;
    edit.setLines({QStringLiteral("/a/"), QStringLiteral("/b/")});
    QCOMPARE(edit.textCursor().position(), 0);
    QVERIFY(!edit.textCursor().hasSelection());
}

void PathEditTest::aLineIsAddedAtTheEnd_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("into an empty editor") << QString() << QStringLiteral("/n/");
    QTest::newRow("behind a line") << QStringLiteral("/a/") << QStringLiteral("/a/\n/n/");
    QTest::newRow("onto an empty last line")
        << QStringLiteral("/a/\n") << QStringLiteral("/a/\n/n/");
}

void PathEditTest::aLineIsAddedAtTheEnd()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    PathEdit edit;
    edit.setPlainText(before);
    edit.addLine(QStringLiteral("/n/"));
    QCOMPARE(edit.toPlainText(), after);
}

void PathEditTest::afterAddingTheCursorIsBeforeTheLastCharacter()
{
    PathEdit edit;
    edit.setPlainText(QStringLiteral("/a/"));
    edit.addLine(QStringLiteral("/name/"));
    QCOMPARE(edit.textCursor().position(), edit.toPlainText().size() - 1);
    QVERIFY(!edit.textCursor().hasSelection());
}

void PathEditTest::aLineIsAddedBehindAllWhereverTheCursorIs()
{
    PathEdit edit;
    edit.setLines({QStringLiteral("/a/"), QStringLiteral("/b/")});
    edit.selectAll();
    edit.addLine(QStringLiteral("/n/"));
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/\n/b/\n/n/"));
}

void PathEditTest::linesAreNotWrapped()
{
    QCOMPARE(PathEdit().lineWrapMode(), QPlainTextEdit::NoWrap);
}

void PathEditTest::aPastedFolderIsALineOfItsOwn()
{
    const ScratchFolder scratch;
    const QString folder = scratch.makeFolder(QStringLiteral("inner"));
    PathEdit edit;
    edit.setLines({QStringLiteral("/a/")});
    paste(edit, files({folder}));
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/\n") + folder);
    // However it is written.
    edit.clear();
    paste(edit, files({folder.chopped(1)}));
    QCOMPARE(edit.toPlainText(), folder);
}

void PathEditTest::ofAPastedFileItIsTheFolder()
{
    const ScratchFolder scratch;
    PathEdit edit;
    paste(edit, files({scratch.write(QStringLiteral("inner/a.txt"), "a")}));
    QCOMPARE(edit.toPlainText(), scratch.path() + QStringLiteral("inner/"));
}

void PathEditTest::filesOfOneFolderAreOneLine()
{
    const ScratchFolder scratch;
    const QStringList paths{scratch.write(QStringLiteral("b/a.txt"), "a"),
                            scratch.write(QStringLiteral("b/b.txt"), "b"),
                            scratch.write(QStringLiteral("a/a.txt"), "a")};
    PathEdit edit;
    paste(edit, files(paths));
    QCOMPARE(edit.toPlainText(),
             scratch.path() + QStringLiteral("b/\n") + scratch.path() + QStringLiteral("a/"));
}

void PathEditTest::aFolderThatIsThereIsNotAddedAgain()
{
    const ScratchFolder scratch;
    PathEdit edit;
    // Also when it was typed without its slash.
    edit.setPlainText(scratch.path().chopped(1));
    paste(edit, files({scratch.path()}));
    QCOMPARE(edit.toPlainText(), scratch.path().chopped(1));
}

void PathEditTest::manyFoldersAreOneChange_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("into an empty editor") << QString();
    QTest::newRow("behind a line") << QStringLiteral("/a/");
    QTest::newRow("onto an empty last line") << QStringLiteral("/a/\n");
}

void PathEditTest::manyFoldersAreOneChange()
{
    QFETCH(QString, before);
    const ScratchFolder scratch;
    QStringList folders;
    for (int i = 0; i < 100; ++i)
        folders += scratch.makeFolder(QString::number(i));
    PathEdit edit;
    edit.setPlainText(before);
    int changes = 0;
    connect(edit.document(), &QTextDocument::contentsChanged, this, [&changes] { ++changes; });
    paste(edit, files(folders + folders));
    QCOMPARE(changes, 1);
    QStringList lines = before.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines += folders;
    QCOMPARE(edit.text(), lines.join(QLatin1Char('\n')));
    QCOMPARE(edit.textCursor().position(), edit.text().size() - 1);
    paste(edit, files(folders));
    QCOMPARE(changes, 1);
    edit.undo();
    QCOMPARE(edit.text(), before);
}

void PathEditTest::pastedTextIsInsertedAtTheCursor()
{
    PathEdit edit;
    edit.setLines({QStringLiteral("/b/")});
    auto *data = new QMimeData;
    data->setText(QStringLiteral("/a"));
    paste(edit, data);
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/b/"));
}

void PathEditTest::aPastedPathIsTakenOutOfItsWriting_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("lines");
    const auto row = [](const char *name, const char *pasted, const char *lines) {
        QTest::newRow(name) << QString::fromUtf8(pasted) << QString::fromUtf8(lines);
    };
    row("as it is", "/no such/folder", "/no such/folder");
    row("blanks", " \t/no such/folder \t", "/no such/folder");
    row("a no-break space", "/no such/\u00A0", "/no such/\u00A0");
    row("quotes", "\"/no such/folder\"", "/no such/folder");
    row("blanks and quotes", " \"/no such\" ", "/no such");
    row("one pair only", "\"\"/a\"\"", "\"/a\"");
    row("a single quote", "\"", "\"");
    row("no pair", "\"/a", "\"/a");
    row("an address", "file:///no%20such/%E6%A4%9C", "/no such/検");
    row("an address in other letters", "FILE:///no", "/no");
    row("a mask", "/no such/*.log", "/no such/*.log");
    row("a list file", "@/no such/list.ini", "@/no such/list.ini");
    row("several lines", "\"/a\"\r\n /b \nfile:///c\r\n", "/a\n/b\n/c\n");
}

void PathEditTest::aPastedPathIsTakenOutOfItsWriting()
{
    QFETCH(QString, pasted);
    PathEdit edit;
    auto *data = new QMimeData;
    data->setText(pasted);
    paste(edit, data);
    QTEST(edit.text(), "lines");
    edit.undo();
    QCOMPARE(edit.text(), QString());
}

void PathEditTest::whatIsPastedIntoAPathStaysAsItIs()
{
    const auto pasteInto = [](const QString &before, const QString &pasted) {
        PathEdit edit;
        edit.setPlainText(before);
        edit.moveCursor(QTextCursor::End);
        auto *data = new QMimeData;
        data->setText(pasted);
        paste(edit, data);
        return edit.toPlainText();
    };
    QCOMPARE(pasteInto(QStringLiteral("/home/My"), QStringLiteral(" Documents ")),
             QStringLiteral("/home/My Documents "));
    const ScratchFolder scratch;
    const QString file = scratch.write(QStringLiteral("paths.txt"), "/a\n");
    QCOMPARE(pasteInto(QStringLiteral("@"), file), QStringLiteral("@") + file);
    QCOMPARE(pasteInto(QStringLiteral("/a"), QStringLiteral("b\n \"/c\"")),
             QStringLiteral("/ab\n/c"));
}

void PathEditTest::ofAPastedPathOfAFileItIsTheFolder()
{
    const ScratchFolder scratch;
    const QString file = scratch.write(QStringLiteral("a b/c.txt"), "a");
    const QString folder = scratch.path() + QStringLiteral("a b/");
    const QString lines =
        QStringLiteral("\"%1\"\n%2\n@%1\n%3")
            .arg(file, QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded), scratch.path());
    PathEdit edit;
    auto *data = new QMimeData;
    data->setText(lines);
    paste(edit, data);
    QCOMPARE(edit.text(),
             (QStringList{folder, folder, QLatin1Char('@') + file, scratch.path()}.join(
                 QLatin1Char('\n'))));
}

void PathEditTest::whatIsTypedStaysAsItIs()
{
    PathEdit edit;
    QTest::keyClicks(&edit, QStringLiteral(" \"/a\" "));
    QCOMPARE(edit.text(), QStringLiteral(" \"/a\" "));
}

void PathEditTest::anAddressElsewhereIsPastedAsText()
{
    PathEdit edit;
    auto *data = new QMimeData;
    data->setUrls({QUrl(QStringLiteral("https://example.org/a"))});
    data->setText(QStringLiteral("https://example.org/a"));
    paste(edit, data);
    QCOMPARE(edit.toPlainText(), QStringLiteral("https://example.org/a"));
}

void PathEditTest::aDroppedFolderIsALineOfItsOwn()
{
    const ScratchFolder scratch;
    PathEdit edit;
    edit.setLines({QStringLiteral("/a/")});
    edit.resize(300, 100);
    edit.show();
    const std::unique_ptr<QMimeData> data(files({scratch.path()}));
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit.viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDragMoveEvent move(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit.viewport(), &move);
    QVERIFY(move.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit.viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/\n") + scratch.path());
}

void PathEditTest::aNameWithBlanksAndJapaneseIsWhole()
{
    const ScratchFolder scratch;
    const QString folder = scratch.makeFolder(QStringLiteral("検索 % の#先"));
    PathEdit edit;
    paste(edit, files({folder}));
    QCOMPARE(edit.toPlainText(), folder);
}

void PathEditTest::shiftOrCtrlAndReturnMakeANewLine_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::newRow(name) << key << modifiers;
    };
    row("Return", Qt::Key_Return, Qt::NoModifier);
    row("Shift and Return", Qt::Key_Return, Qt::ShiftModifier);
    row("Ctrl and Return", Qt::Key_Return, Qt::ControlModifier);
    row("Shift and Enter", Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);
    row("Ctrl and Enter", Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
}

void PathEditTest::shiftOrCtrlAndReturnMakeANewLine()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    PathEdit edit;
    edit.setPlainText(QStringLiteral("/a/"));
    edit.moveCursor(QTextCursor::End);
    QTest::keyClick(&edit, key, modifiers);
    QTest::keyClicks(&edit, QStringLiteral("b"));
    QCOMPARE(edit.blockCount(), 2);
    QCOMPARE(edit.toPlainText(), QStringLiteral("/a/\nb"));
}

void PathEditTest::tabLeavesTheEditor()
{
    QWidget window;
    PathEdit edit(&window);
    QLineEdit next(&window);
    window.show();
    QApplication::setActiveWindow(&window);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_Tab);
    QCOMPARE(edit.toPlainText(), QString());
    QVERIFY(next.hasFocus());
    QTest::keyClick(&next, Qt::Key_Backtab);
    QVERIFY(edit.hasFocus());
}

void PathEditTest::aDraggedPathIsACopy()
{
    PathEdit edit;
    edit.setLines({QStringLiteral("/a/folder/")});
    edit.resize(300, 100);
    edit.show();
    QString dragged;
    Qt::DropActions offered;
    edit.findChild<TextDrag *>()->setRunner([&](QDrag *drag, Qt::DropActions actions) {
        const std::unique_ptr<QDrag> ended(drag);
        dragged = drag->mimeData()->text();
        offered = actions;
    });
    edit.selectAll();
    QTest::mousePress(edit.viewport(), Qt::LeftButton, Qt::NoModifier,
                      MouseSteps::placeOf(edit, 0, 3));
    MouseSteps::drag(edit, QPoint(-50, -50));
    QCOMPARE(dragged, QStringLiteral("/a/folder/"));
    QCOMPARE(offered, Qt::DropActions(Qt::CopyAction));
    QCOMPARE(edit.text(), QStringLiteral("/a/folder/"));
}

QTEST_MAIN(PathEditTest)

#include "PathEditTest.moc"
