#include "view/TextDrag.h"

#include "tests/support/MouseSteps.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QtTest>

#include <memory>

/// Text dragged out of a view by the mouse, and what becomes of the view.
class TextDragTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aSelectionIsOfferedAsACopyOnly_data();
    void aSelectionIsOfferedAsACopyOnly();
    void aShortWayIsNoDrag();
    void noSelectionIsNoDrag();
    void besideTheSelectionAnotherIsDrawn();
    void withShiftTheSelectionIsExtended();
    void aDoubleClickIsNoDrag();
    void aClickOnTheSelectionPutsTheCursorThere();
    void aQuickDragOutOfTheViewIsOneDrag();
    void aReleaseAfterTheDragLeavesTheSelection();
    void afterADragTheMouseSelectsAgain();

    void aDropInsideTheViewMovesTheText_data();
    void aDropInsideTheViewMovesTheText();
    void aMoveIsUndoneInOneStep();
    void withCtrlADropInsideTheViewCopies();
    void ontoItselfTheTextStays();
    void intoATextToReadNothingIsMoved();
    void aDropFromElsewhereIsInserted();

private:
    QPoint at(int line, int column) const { return MouseSteps::placeOf(*m_view, line, column); }
    void press(int line, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void dragTo(const QPoint &place) { MouseSteps::drag(*m_view, place); }
    /// Selects "two" in the second line.
    void selectWord();
    /// Drags the selected word to a place in the view; false when it is not taken.
    bool dragInside(const QPoint &place, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    bool drop(const QPoint &place, const QMimeData &data, Qt::KeyboardModifiers modifiers);
    QString selected() const { return m_view->textCursor().selectedText(); }

    std::unique_ptr<QPlainTextEdit> m_view;
    TextDrag *m_drag = nullptr;
    int m_runs = 0;
    QString m_dragged;
    Qt::DropActions m_offered;
};

namespace {

const QString kText = QStringLiteral("one line\none two three\nlast\n");

} // namespace

void TextDragTest::init()
{
    m_view = std::make_unique<QPlainTextEdit>(kText);
    m_drag = new TextDrag(m_view.get(), [this] {
        auto *data = new QMimeData;
        data->setText(selected());
        return data;
    });
    m_runs = 0;
    m_drag->setRunner([this](QDrag *drag, Qt::DropActions offered) {
        const std::unique_ptr<QDrag> ended(drag);
        ++m_runs;
        m_dragged = drag->mimeData()->text();
        m_offered = offered;
    });
    m_view->resize(400, 200);
    m_view->show();
    selectWord();
}

void TextDragTest::cleanup()
{
    m_view.reset();
}

void TextDragTest::press(int line, int column, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(m_view->viewport(), Qt::LeftButton, modifiers, at(line, column));
}

void TextDragTest::selectWord()
{
    QTextCursor cursor(m_view->document()->findBlockByNumber(1));
    cursor.setPosition(cursor.position() + 4);
    cursor.setPosition(cursor.position() + 3, QTextCursor::KeepAnchor);
    m_view->setTextCursor(cursor);
    QCOMPARE(selected(), QStringLiteral("two"));
}

bool TextDragTest::drop(const QPoint &place, const QMimeData &data, Qt::KeyboardModifiers modifiers)
{
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(m_view->viewport(), &enter);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(m_view->viewport(), &drop);
    // Whoever drags must never think that it was moved.
    return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

bool TextDragTest::dragInside(const QPoint &place, Qt::KeyboardModifiers modifiers)
{
    bool taken = false;
    m_drag->setRunner([&](QDrag *drag, Qt::DropActions) {
        const std::unique_ptr<QDrag> ended(drag);
        taken = this->drop(place, *drag->mimeData(), modifiers);
    });
    press(1, 5);
    dragTo(at(0, 0) + QPoint(200, 0));
    return taken;
}

void TextDragTest::aSelectionIsOfferedAsACopyOnly_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::newRow("of a text to edit") << false;
    QTest::newRow("of a text to read") << true;
}

void TextDragTest::aSelectionIsOfferedAsACopyOnly()
{
    QFETCH(bool, readOnly);
    m_view->setReadOnly(readOnly);
    press(1, 5);
    dragTo(at(0, 0) + QPoint(200, 0));
    QCOMPARE(m_runs, 1);
    QCOMPARE(m_dragged, QStringLiteral("two"));
    QCOMPARE(m_offered, Qt::DropActions(Qt::CopyAction));
    QCOMPARE(m_view->toPlainText(), kText);
    QCOMPARE(selected(), QStringLiteral("two"));
}

void TextDragTest::aShortWayIsNoDrag()
{
    press(1, 5);
    const QPoint way(QApplication::startDragDistance(), 0);
    dragTo(at(1, 5) + way);
    QCOMPARE(m_runs, 0);
    dragTo(at(1, 5) + way + QPoint(1, 0));
    QCOMPARE(m_runs, 1);
}

void TextDragTest::noSelectionIsNoDrag()
{
    m_view->moveCursor(QTextCursor::Start);
    press(0, 0);
    dragTo(at(0, 4));
    QCOMPARE(m_runs, 0);
    QVERIFY(!selected().isEmpty());
}

void TextDragTest::besideTheSelectionAnotherIsDrawn()
{
    press(0, 0);
    dragTo(at(2, 3));
    QCOMPARE(m_runs, 0);
    QVERIFY(selected().contains(QStringLiteral("one two three")));
}

void TextDragTest::withShiftTheSelectionIsExtended()
{
    // The end is where it was, so that the press changes nothing.
    const QPoint end = m_view->cursorRect().center();
    QTest::mousePress(m_view->viewport(), Qt::LeftButton, Qt::ShiftModifier, end);
    QCOMPARE(selected(), QStringLiteral("two"));
    dragTo(at(2, 3));
    QCOMPARE(m_runs, 0);
    QVERIFY(selected().startsWith(QStringLiteral("two three")));
}

void TextDragTest::aDoubleClickIsNoDrag()
{
    press(1, 5);
    QTest::mouseDClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at(1, 5));
    dragTo(at(0, 0) + QPoint(200, 0));
    QCOMPARE(m_runs, 0);
}

void TextDragTest::aClickOnTheSelectionPutsTheCursorThere()
{
    press(1, 5);
    QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at(1, 5));
    QVERIFY(selected().isEmpty());
    QCOMPARE(m_view->textCursor().blockNumber(), 1);
    dragTo(at(0, 0) + QPoint(200, 0));
    QCOMPARE(m_runs, 0);
}

void TextDragTest::aQuickDragOutOfTheViewIsOneDrag()
{
    // Where the view itself takes the mouse to be when it scrolls.
    QCursor::setPos(m_view->viewport()->mapToGlobal(QPoint(-100, -50)));
    press(1, 5);
    dragTo(QPoint(-100, -50));
    QCOMPARE(m_runs, 1);
    // The release went to the target; the view scrolls every 100 ms.
    QTest::qWait(350);
    dragTo(QPoint(-100, -60));
    QCOMPARE(m_runs, 1);
    QCOMPARE(selected(), QStringLiteral("two"));
}

void TextDragTest::aReleaseAfterTheDragLeavesTheSelection()
{
    press(1, 5);
    dragTo(at(0, 0) + QPoint(200, 0));
    QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at(2, 0));
    QCOMPARE(selected(), QStringLiteral("two"));
    QCOMPARE(m_view->textCursor().blockNumber(), 1);
}

void TextDragTest::afterADragTheMouseSelectsAgain()
{
    press(1, 5);
    dragTo(at(0, 0) + QPoint(200, 0));
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, at(2, 0));
    QVERIFY(selected().isEmpty());
    QCOMPARE(m_view->textCursor().blockNumber(), 2);
    m_runs = 0;
    besideTheSelectionAnotherIsDrawn();
}

void TextDragTest::aDropInsideTheViewMovesTheText_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("after");
    QTest::newRow("before it") << 0 << QStringLiteral("one linetwo\none  three\nlast\n");
    QTest::newRow("behind it") << 2 << QStringLiteral("one line\none  three\nlasttwo\n");
}

void TextDragTest::aDropInsideTheViewMovesTheText()
{
    QFETCH(int, line);
    QVERIFY(dragInside(QPoint(300, at(line, 0).y())));
    QTEST(m_view->toPlainText(), "after");
    QCOMPARE(m_view->textCursor().blockNumber(), line);
}

void TextDragTest::aMoveIsUndoneInOneStep()
{
    QVERIFY(dragInside(QPoint(300, at(2, 0).y())));
    m_view->undo();
    QCOMPARE(m_view->toPlainText(), kText);
}

void TextDragTest::withCtrlADropInsideTheViewCopies()
{
    QVERIFY(dragInside(QPoint(300, at(2, 0).y()), Qt::ControlModifier));
    QCOMPARE(m_view->toPlainText(), QStringLiteral("one line\none two three\nlasttwo\n"));
}

void TextDragTest::ontoItselfTheTextStays()
{
    QVERIFY(dragInside(at(1, 5)));
    QCOMPARE(m_view->toPlainText(), kText);
    QVERIFY(!m_view->document()->isModified());
}

void TextDragTest::intoATextToReadNothingIsMoved()
{
    m_view->setReadOnly(true);
    QVERIFY(!dragInside(QPoint(300, at(2, 0).y())));
    QCOMPARE(m_view->toPlainText(), kText);
}

void TextDragTest::aDropFromElsewhereIsInserted()
{
    QMimeData data;
    data.setText(QStringLiteral("new"));
    QVERIFY(drop(QPoint(300, at(2, 0).y()), data, Qt::NoModifier));
    QCOMPARE(m_view->toPlainText(), QStringLiteral("one line\none two three\nlastnew\n"));
}

QTEST_MAIN(TextDragTest)

#include "TextDragTest.moc"
