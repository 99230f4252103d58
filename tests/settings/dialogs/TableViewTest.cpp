#include "settings/dialogs/TableView.h"

#include <QSignalSpy>
#include <QStringListModel>
#include <QTest>

class TableViewTest : public QObject {
    Q_OBJECT

private slots:
    void aChangedCurrentIndexIsTold();
    void nothingIsToldWhileTheSignalsAreBlocked();
};

void TableViewTest::aChangedCurrentIndexIsTold()
{
    QStringListModel model({QStringLiteral("a"), QStringLiteral("b")});
    TableView view;
    view.setModel(&model);
    view.setCurrentIndex(model.index(0, 0));
    QSignalSpy spy(&view, &TableView::CurrentChanged);
    view.setCurrentIndex(model.index(1, 0));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toModelIndex(), model.index(1, 0));
    QCOMPARE(spy.at(0).at(1).toModelIndex(), model.index(0, 0));
    QVERIFY(view.selectionModel()->isSelected(model.index(1, 0)));
}

void TableViewTest::nothingIsToldWhileTheSignalsAreBlocked()
{
    QStringListModel model({QStringLiteral("a"), QStringLiteral("b")});
    TableView view;
    view.setModel(&model);
    const QSignalSpy spy(&view, &TableView::CurrentChanged);
    view.blockSignals(true);
    view.setCurrentIndex(model.index(1, 0));
    view.blockSignals(false);
    QCOMPARE(spy.count(), 0);
}

QTEST_MAIN(TableViewTest)
#include "TableViewTest.moc"
