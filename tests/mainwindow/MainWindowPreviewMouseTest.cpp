#include "tests/mainwindow/WindowTest.h"

#include "tests/support/MouseSteps.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

/// Hits selected by the mouse, and the file that is shown.
class MainWindowPreviewMouseTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aClickShowsTheHit();
    void whileASelectionIsDrawnTheFileStays();
    void aModifiedFileIsAskedForAfterTheSelection();
    void aSelectionThatComesBackAsksNothing();
    void aTripleClickShowsTheHitThatWasClicked();

private:
    GrepEditor &results() const { return *m_fixture->resultView(); }
    GrepEditor &preview() const { return *m_fixture->preview(); }
    QString file(const char *name) const
    {
        return m_fixture->tree.filePath(QString::fromUtf8(name));
    }
    /// In the result view's line that contains line.
    QPoint placeOf(const char *line) const;
    void press(const char *line);
    void dragTo(const char *line) { MouseSteps::drag(results(), placeOf(line)); }
    void release(const char *line);
};

void MainWindowPreviewMouseTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    m_fixture->tree.write(QStringLiteral("a.txt"), "one apple\nthree apple pies\n");
    m_fixture->tree.write(QStringLiteral("b.txt"), "the apple\n");
    m_fixture->open();
    m_fixture->window().resize(1000, 800);
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.txt *.none"),
                              QStringLiteral("apple")));
    results().verticalScrollBar()->setValue(0);
}

QPoint MainWindowPreviewMouseTest::placeOf(const char *line) const
{
    const QTextBlock end = results().document()->end();
    for (QTextBlock block = results().document()->begin(); block != end; block = block.next()) {
        if (block.text().contains(QString::fromUtf8(line)))
            return MouseSteps::placeOf(results(), block.blockNumber(), 3);
    }
    return {};
}

void MainWindowPreviewMouseTest::press(const char *line)
{
    // As a person's press does, which the toolkit's test does not where no window is active.
    results().setFocus();
    QTest::mousePress(results().viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(line));
}

void MainWindowPreviewMouseTest::release(const char *line)
{
    QTest::mouseRelease(results().viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(line));
}

void MainWindowPreviewMouseTest::aClickShowsTheHit()
{
    press("three apple");
    release("three apple");
    QCOMPARE(preview().fileName(), file("a.txt"));
    QCOMPARE(preview().line(), 2);
}

void MainWindowPreviewMouseTest::whileASelectionIsDrawnTheFileStays()
{
    aClickShowsTheHit();
    press("one apple");
    dragTo("the apple");
    QCOMPARE(preview().line(), 2);
    QCOMPARE(preview().fileName(), file("a.txt"));
    release("the apple");
    QCOMPARE(preview().fileName(), file("b.txt"));
    QVERIFY(results().textCursor().hasSelection());
}

void MainWindowPreviewMouseTest::aModifiedFileIsAskedForAfterTheSelection()
{
    aClickShowsTheHit();
    QTest::keyClicks(&preview(), QStringLiteral("new "));
    m_fixture->prompt.buttons = {QMessageBox::No};
    press("one apple");
    dragTo("the apple");
    QCOMPARE(m_fixture->prompt.messages.size(), 0);
    release("the apple");
    QCOMPARE(m_fixture->prompt.messages.size(), 1);
    QCOMPARE(preview().fileName(), file("b.txt"));
}

void MainWindowPreviewMouseTest::aSelectionThatComesBackAsksNothing()
{
    aClickShowsTheHit();
    QTest::keyClicks(&preview(), QStringLiteral("new "));
    press("one apple");
    dragTo("the apple");
    dragTo("three apple");
    release("three apple");
    QCOMPARE(m_fixture->prompt.messages.size(), 0);
    QVERIFY(preview().document()->isModified());
    preview().document()->setModified(false);
}

void MainWindowPreviewMouseTest::aTripleClickShowsTheHitThatWasClicked()
{
    aClickShowsTheHit();
    const QPoint place = placeOf("one apple");
    QTest::mouseDClick(results().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    press("one apple");
    release("one apple");
    QVERIFY(results().textCursor().hasSelection());
    QCOMPARE(preview().line(), 1);
    QCOMPARE(results().line(), 1);
}

QTEST_MAIN(MainWindowPreviewMouseTest)

#include "MainWindowPreviewMouseTest.moc"
