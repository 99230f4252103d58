#include "view/FocusEdge.h"

#include "tests/support/Patience.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QtTest>

class FocusEdgeTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void theEdgeIsSeenWhileTheViewHasTheFocus();
    void theEdgeIsPaintedWhenTheFocusComesAndGoes();
    void theTextIsLeftAlone();
    void aViewWithoutAFrameHasNone();

private:
    /// Of the view with its frame.
    QImage picture() const { return m_view->grab().toImage(); }
    bool hasEdge() const;

    QWidget m_window;
    QPlainTextEdit *m_view = nullptr;
    QLineEdit *m_other = nullptr;
};

namespace {

const QColor kEdge(0x12, 0x34, 0xf0);

} // namespace

void FocusEdgeTest::initTestCase()
{
    QPalette colours = m_window.palette();
    colours.setColor(QPalette::Highlight, kEdge);
    m_window.setPalette(colours);
    auto *layout = new QVBoxLayout(&m_window);
    m_view = new QPlainTextEdit(QStringLiteral("text"));
    // As the text views, which select in the editor's colours.
    QPalette own;
    own.setColor(QPalette::Highlight, Qt::magenta);
    m_view->setPalette(own);
    m_other = new QLineEdit;
    layout->addWidget(m_view);
    layout->addWidget(m_other);
    new FocusEdge(m_view);
    m_window.resize(300, 200);
    m_window.show();
    QVERIFY(QTest::qWaitForWindowActive(&m_window, kPatienceMilliseconds));
}

/// On all four sides.
bool FocusEdgeTest::hasEdge() const
{
    const QImage image = picture();
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    int sides = 0;
    for (const QPoint &place : {QPoint(right / 2, 0), QPoint(right / 2, bottom),
                                QPoint(0, bottom / 2), QPoint(right, bottom / 2)})
        sides += image.pixelColor(place) == kEdge;
    return sides == 4;
}

void FocusEdgeTest::theEdgeIsSeenWhileTheViewHasTheFocus()
{
    QVERIFY(m_view->frameWidth() > 0);
    m_other->setFocus();
    QVERIFY(!hasEdge());
    m_view->setFocus();
    QVERIFY(hasEdge());
    m_other->setFocus();
    QVERIFY(!hasEdge());
}

void FocusEdgeTest::theEdgeIsPaintedWhenTheFocusComesAndGoes()
{
    struct Count : QObject {
        bool eventFilter(QObject *, QEvent *event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
        int paints = 0;
    } count;
    m_view->installEventFilter(&count);
    m_other->setFocus();
    QTest::qWait(50);
    count.paints = 0;
    m_view->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(count.paints > 0, kPatienceMilliseconds);
    QTest::qWait(50);
    count.paints = 0;
    m_other->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(count.paints > 0, kPatienceMilliseconds);
    m_view->removeEventFilter(&count);
}

void FocusEdgeTest::theTextIsLeftAlone()
{
    const auto inside = [this] {
        const int width = m_view->frameWidth();
        return picture().copy(m_view->rect().adjusted(width, width, -width, -width));
    };
    // The caret apart, which is there with the focus.
    m_view->setCursorWidth(0);
    m_other->setFocus();
    const QImage without = inside();
    m_view->setFocus();
    QCOMPARE(inside(), without);
}

void FocusEdgeTest::aViewWithoutAFrameHasNone()
{
    const QFrame::Shape shape = m_view->frameShape();
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setFocus();
    QVERIFY(!hasEdge());
    m_view->setFrameShape(shape);
}

QTEST_MAIN(FocusEdgeTest)
#include "FocusEdgeTest.moc"
