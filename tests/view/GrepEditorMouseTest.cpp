#include "view/GrepEditor.h"

#include "tests/support/MouseSteps.h"
#include "tests/support/RecordingLauncher.h"
#include "view/TextDrag.h"

#include <QDrag>
#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

/// Selecting and dragging by the mouse.
class GrepEditorMouseTest : public QObject {
    Q_OBJECT

private slots:
    void aTripleClickOnAHitKeepsTheCursorInItsLine_data();
    void aTripleClickOnAHitKeepsTheCursorInItsLine();
    void inThePreviewATripleClickTakesTheLineEnd();
    void aSelectionDrawnToALineStartStays();
    void theViewKnowsThatItIsPressed();
    void withoutAReleaseAKeyOrTheFocusEndsThePress();
    void aDoubleClickIsAPress();
    void theReleaseIsToldWhenTheCursorIsThere();
    void aDragOutOfTheViewIsACopy_data();
    void aDragOutOfTheViewIsACopy();

private:
    std::unique_ptr<GrepEditor> show(bool isResultView);
    static void tripleClick(GrepEditor &view, int line);

    RecordingLauncher m_launcher;
};

namespace {

const QString kLines = QStringLiteral("::/a\n      1:    1:one hit\n\n      3:    1:two hits\n");

} // namespace

std::unique_ptr<GrepEditor> GrepEditorMouseTest::show(bool isResultView)
{
    auto view = std::make_unique<GrepEditor>(isResultView);
    view->setLauncher(&m_launcher);
    view->setPlainText(kLines);
    view->resize(600, 300);
    view->show();
    return view;
}

void GrepEditorMouseTest::tripleClick(GrepEditor &view, int line)
{
    const QPoint place = MouseSteps::placeOf(view, line, 0) + QPoint(1, 0);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void GrepEditorMouseTest::aTripleClickOnAHitKeepsTheCursorInItsLine_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("selected");
    QTest::newRow("file line") << 0 << QStringLiteral("::/a");
    QTest::newRow("hit") << 1 << QStringLiteral("      1:    1:one hit");
    QTest::newRow("empty line") << 2 << QString();
}

void GrepEditorMouseTest::aTripleClickOnAHitKeepsTheCursorInItsLine()
{
    QFETCH(int, line);
    const auto view = show(true);
    tripleClick(*view, line);
    QTEST(view->textCursor().selectedText(), "selected");
    QCOMPARE(view->textCursor().blockNumber(), line);
    // No hand is so steady that the mouse does not move.
    MouseSteps::drag(*view, MouseSteps::placeOf(*view, line, 0) + QPoint(2, 0));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                        MouseSteps::placeOf(*view, line, 0));
    QTEST(view->textCursor().selectedText(), "selected");
    QCOMPARE(view->textCursor().blockNumber(), line);
}

void GrepEditorMouseTest::inThePreviewATripleClickTakesTheLineEnd()
{
    const auto view = show(false);
    tripleClick(*view, 0);
    QCOMPARE(view->textCursor().selectedText(), QStringLiteral("::/a\u2029"));
}

void GrepEditorMouseTest::aSelectionDrawnToALineStartStays()
{
    const auto view = show(true);
    const QPoint start = MouseSteps::placeOf(*view, 0, 0) - QPoint(2, 0);
    const QPoint end = MouseSteps::placeOf(*view, 1, 0) - QPoint(4, 0);
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, start);
    MouseSteps::drag(*view, end);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, end);
    QVERIFY(view->textCursor().selectedText().endsWith(QChar::ParagraphSeparator));
    QCOMPARE(view->textCursor().blockNumber(), 1);
}

void GrepEditorMouseTest::theViewKnowsThatItIsPressed()
{
    const auto view = show(true);
    QVERIFY(!view->isMousePressed());
    QTest::mousePress(view->viewport(), Qt::RightButton);
    QVERIFY(!view->isMousePressed());
    QTest::mouseRelease(view->viewport(), Qt::RightButton);
    bool isPressedAtMove = false;
    connect(view.get(), &GrepEditor::cursorPositionChanged,
            [&] { isPressedAtMove = view->isMousePressed(); });
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      MouseSteps::placeOf(*view, 1, 3));
    QVERIFY(isPressedAtMove);
    QVERIFY(view->isMousePressed());
    QTest::mouseRelease(view->viewport(), Qt::LeftButton);
    QVERIFY(!view->isMousePressed());
}

void GrepEditorMouseTest::withoutAReleaseAKeyOrTheFocusEndsThePress()
{
    const auto view = show(true);
    QTest::mousePress(view->viewport(), Qt::LeftButton);
    QTest::keyClick(view.get(), Qt::Key_Down);
    QVERIFY(!view->isMousePressed());
    QTest::mousePress(view->viewport(), Qt::LeftButton);
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(view.get(), &out);
    QVERIFY(!view->isMousePressed());
}

void GrepEditorMouseTest::aDoubleClickIsAPress()
{
    const auto view = show(true);
    const QPoint place = MouseSteps::placeOf(*view, 1, 3);
    QMouseEvent click(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &click);
    QVERIFY(view->isMousePressed());
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QVERIFY(!view->isMousePressed());
}

void GrepEditorMouseTest::theReleaseIsToldWhenTheCursorIsThere()
{
    const auto view = show(true);
    view->selectAll();
    int line = -1;
    connect(view.get(), &GrepEditor::mouseReleased,
            [&] { line = view->isMousePressed() ? -2 : view->textCursor().blockNumber(); });
    // On the selection, so that the cursor moves at the release only.
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      MouseSteps::placeOf(*view, 1, 3));
    QCOMPARE(line, 1);
}

void GrepEditorMouseTest::aDragOutOfTheViewIsACopy_data()
{
    QTest::addColumn<bool>("isResultView");
    QTest::newRow("result view") << true;
    QTest::newRow("preview") << false;
}

void GrepEditorMouseTest::aDragOutOfTheViewIsACopy()
{
    QFETCH(bool, isResultView);
    const auto view = show(isResultView);
    QString dragged;
    Qt::DropActions offered;
    view->findChild<TextDrag *>()->setRunner([&](QDrag *drag, Qt::DropActions actions) {
        const std::unique_ptr<QDrag> ended(drag);
        dragged = drag->mimeData()->text();
        offered = actions;
    });
    view->selectAll();
    QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      MouseSteps::placeOf(*view, 1, 3));
    MouseSteps::drag(*view, QPoint(-50, -50));
    QCOMPARE(dragged, kLines);
    QCOMPARE(offered, Qt::DropActions(Qt::CopyAction));
    QCOMPARE(view->toPlainText(), kLines);
    QVERIFY(!view->isMousePressed());
}

QTEST_MAIN(GrepEditorMouseTest)

#include "GrepEditorMouseTest.moc"
