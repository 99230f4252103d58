#include "mainwindow/FlowLayout.h"

#include "tests/support/Patience.h"

#include <QBoxLayout>
#include <QtTest>

#include <memory>

class FlowLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aWideRowHoldsAll();
    void whatDoesNotFitBeginsAnotherRow();
    void anItemToAPixelStillFits();
    void itMayBeAsNarrowAsItsWidestItem();
    void aLayoutAroundItGivesTheRowsTheirHeight();
    void rightToLeftBeginsAtTheRight();
    void itemsAreGivenBack();

private:
    FlowLayout *layout() const { return m_layout; }
    QRect placeOf(int index) const { return m_layout->itemAt(index)->geometry(); }

    std::unique_ptr<QWidget> m_widget;
    FlowLayout *m_layout = nullptr;
};

/// Three items of 100, 60 and 80 pixels, with gaps of 10 between items, 4 between rows.
void FlowLayoutTest::init()
{
    m_widget = std::make_unique<QWidget>();
    m_layout = new FlowLayout(10, 4, m_widget.get());
    for (const QSize size : {QSize(100, 20), QSize(60, 24), QSize(80, 20)}) {
        auto *item = new QWidget;
        item->setFixedSize(size);
        m_layout->addWidget(item);
    }
}

void FlowLayoutTest::aWideRowHoldsAll()
{
    QCOMPARE(layout()->sizeHint(), QSize(260, 24));
    QCOMPARE(layout()->heightForWidth(260), 24);
    layout()->setGeometry(QRect(5, 7, 300, 50));
    QCOMPARE(placeOf(0), QRect(5, 7, 100, 20));
    QCOMPARE(placeOf(1), QRect(115, 7, 60, 24));
    QCOMPARE(placeOf(2), QRect(185, 7, 80, 20));
}

void FlowLayoutTest::whatDoesNotFitBeginsAnotherRow()
{
    QCOMPARE(layout()->heightForWidth(259), 24 + 4 + 20);
    layout()->setGeometry(QRect(0, 0, 259, 48));
    QCOMPARE(placeOf(1).topLeft(), QPoint(110, 0));
    QCOMPARE(placeOf(2).topLeft(), QPoint(0, 28));
    QCOMPARE(layout()->heightForWidth(100), 20 + 4 + 24 + 4 + 20);
}

void FlowLayoutTest::anItemToAPixelStillFits()
{
    QCOMPARE(layout()->heightForWidth(170), 24 + 4 + 20);
    // The second and the third share a row of 60 + 10 + 80.
    QCOMPARE(layout()->heightForWidth(169), 20 + 4 + 24);
}

void FlowLayoutTest::itMayBeAsNarrowAsItsWidestItem()
{
    QCOMPARE(layout()->minimumSize(), QSize(100, 24));
    // Narrower than that, each still has its row.
    QCOMPARE(layout()->heightForWidth(10), 20 + 4 + 24 + 4 + 20);
}

void FlowLayoutTest::aLayoutAroundItGivesTheRowsTheirHeight()
{
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_widget.get());
    auto *rest = new QWidget;
    column->addWidget(rest, 1);
    window.resize(180, 300);
    window.show();
    QCOMPARE(m_widget->height(), 48);
    QCOMPARE(rest->geometry(), QRect(0, 48, 180, 252));
    // What is around it keeps its place, however low the window is.
    QCOMPARE(m_widget->minimumHeight(), 48);
    window.resize(260, 300);
    QTRY_COMPARE_WITH_TIMEOUT(m_widget->minimumHeight(), 24, kPatienceMilliseconds);
    m_widget->setParent(nullptr);
}

void FlowLayoutTest::rightToLeftBeginsAtTheRight()
{
    m_widget->setLayoutDirection(Qt::RightToLeft);
    layout()->setGeometry(QRect(0, 0, 300, 50));
    QCOMPARE(placeOf(0), QRect(200, 0, 100, 20));
    QCOMPARE(placeOf(1), QRect(130, 0, 60, 24));
}

void FlowLayoutTest::itemsAreGivenBack()
{
    QCOMPARE(layout()->count(), 3);
    QVERIFY(!layout()->itemAt(-1) && !layout()->itemAt(3));
    QVERIFY(!layout()->takeAt(-1) && !layout()->takeAt(3));
    const std::unique_ptr<QLayoutItem> item(layout()->takeAt(1));
    QCOMPARE(item->sizeHint(), QSize(60, 24));
    QCOMPARE(layout()->count(), 2);
    QCOMPARE(layout()->sizeHint(), QSize(190, 20));
}

QTEST_MAIN(FlowLayoutTest)
#include "FlowLayoutTest.moc"
