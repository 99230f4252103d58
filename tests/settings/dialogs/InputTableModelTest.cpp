#include "settings/dialogs/InputTableModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <limits>

namespace {

struct Shown {
    QStringList history{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                        QStringLiteral("d")};
    InputTableModel model{history};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};

    QStringList texts() const
    {
        QStringList result;
        for (int row = 0; row < model.rowCount(); ++row)
            result.append(model.index(row, 0).data().toString());
        return result;
    }
};

} // namespace

class InputTableModelTest : public QObject {
    Q_OBJECT

private slots:
    void everyEntryIsShownAtFirst();
    void theRowsNameEntriesOfTheHistory();
    void itHasOneColumnAndNoTree();
    void rolesOtherThanDisplayAreEmpty();
    void withoutRowsThereIsNoData();
    void anIndexOutsideTheHistoryShowsNothing();
    void newRowsResetTheModel();
    void removedRowsLeaveTheHistoryAlone();
    void rowsThatDoNotExistAreNotRemoved_data();
    void rowsThatDoNotExistAreNotRemoved();
};

void InputTableModelTest::everyEntryIsShownAtFirst()
{
    const Shown shown;
    QCOMPARE(shown.texts(), shown.history);
}

void InputTableModelTest::theRowsNameEntriesOfTheHistory()
{
    Shown shown;
    shown.model.setRows({1, 3});
    QCOMPARE(shown.texts(), QStringList({QStringLiteral("b"), QStringLiteral("d")}));
    shown.model.showAll();
    QCOMPARE(shown.texts(), shown.history);
}

void InputTableModelTest::itHasOneColumnAndNoTree()
{
    const Shown shown;
    QCOMPARE(shown.model.columnCount(), 1);
    QCOMPARE(shown.model.rowCount(shown.model.index(0, 0)), 0);
    QCOMPARE(shown.model.columnCount(shown.model.index(0, 0)), 0);
}

void InputTableModelTest::rolesOtherThanDisplayAreEmpty()
{
    const Shown shown;
    for (const int role : {Qt::EditRole, Qt::DecorationRole, Qt::ToolTipRole, Qt::FontRole,
                           Qt::TextAlignmentRole, Qt::CheckStateRole, Qt::UserRole})
        QVERIFY(!shown.model.data(shown.model.index(0, 0), role).isValid());
}

void InputTableModelTest::withoutRowsThereIsNoData()
{
    Shown shown;
    const QModelIndex stale = shown.model.index(0, 0);
    shown.model.setRows({});
    QCOMPARE(shown.model.rowCount(), 0);
    QVERIFY(!shown.model.data(stale, Qt::DisplayRole).isValid());
}

void InputTableModelTest::anIndexOutsideTheHistoryShowsNothing()
{
    Shown shown;
    shown.model.setRows({4, -1, 0});
    QCOMPARE(shown.texts(), QStringList({QString(), QString(), QStringLiteral("a")}));
}

void InputTableModelTest::newRowsResetTheModel()
{
    Shown shown;
    const QSignalSpy spy(&shown.model, &QAbstractItemModel::modelReset);
    shown.model.setRows({2});
    QCOMPARE(spy.count(), 1);
}

void InputTableModelTest::removedRowsLeaveTheHistoryAlone()
{
    Shown shown;
    QVERIFY(shown.model.removeRows(1, 2));
    QCOMPARE(shown.texts(), QStringList({QStringLiteral("a"), QStringLiteral("d")}));
    QCOMPARE(shown.history.size(), 4);
}

void InputTableModelTest::rowsThatDoNotExistAreNotRemoved_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::newRow("before the first") << -1 << 1;
    QTest::newRow("past the last") << 3 << 2;
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("so many that the sum overflows") << 1 << std::numeric_limits<int>::max();
}

void InputTableModelTest::rowsThatDoNotExistAreNotRemoved()
{
    QFETCH(int, row);
    QFETCH(int, count);
    Shown shown;
    QVERIFY(!shown.model.removeRows(row, count));
    QCOMPARE(shown.model.rowCount(), 4);
}

QTEST_GUILESS_MAIN(InputTableModelTest)
#include "InputTableModelTest.moc"
