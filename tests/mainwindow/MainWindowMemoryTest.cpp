#include "tests/mainwindow/WindowTest.h"

#include "mainwindow/FreeMemory.h"
#include "mainwindow/RunControl.h"

#include <QTest>

/// A search that finds more than fits into memory ends and says so.
class MainWindowMemoryTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aSearchThatTakesTheLastMemoryEndsAndSaysSo();
    void aSmallSearchIsNotBlamedForAFullMachine();
    void littleMemoryIsATenthOfItOrHalfAGigabyte_data();
    void littleMemoryIsATenthOfItOrHalfAGigabyte();
    void theSystemTellsItsMemory();
};

namespace {

constexpr qint64 kGigabyte = Q_INT64_C(1024) * 1024 * 1024;

} // namespace

void MainWindowMemoryTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    for (const char *name : {"a.txt", "b.txt", "c.txt"})
        m_fixture->tree.write(QString::fromLatin1(name), QByteArray("one apple\n").repeated(70000));
    m_fixture->tree.write(QStringLiteral("few.none"), "one pear\n");
    m_fixture->tree.write(QStringLiteral("others.none"), "one pear\n");
    m_fixture->open();
    m_fixture->window().findChild<RunControl *>()->setMemoryCheck([] { return true; });
}

void MainWindowMemoryTest::aSearchThatTakesTheLastMemoryEndsAndSaysSo()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.txt"),
                              QStringLiteral("apple")));
    const QString result = m_fixture->resultText();
    const int shown = result.count(QStringLiteral("one apple"));
    QVERIFY(shown < 210000);
    QVERIFY(result.contains(QStringLiteral("/// 中止しました ///")));
    const QString reason =
        QStringLiteral("メモリが足りなくなったため中止しました。見つけて表示していない行 ");
    QVERIFY(result.contains(reason));
    // Lines and heads are left out alike.
    const QString number = result.section(reason, 1).section(QLatin1Char('\n'), 0, 0);
    const int leftOut = QString(number).remove(QLatin1Char(',')).toInt();
    const int listed = shown + result.count(QStringLiteral("\n::"))
        + (result.startsWith(QLatin1String("::")) ? 1 : 0);
    QVERIFY2(leftOut > 0 && listed + leftOut <= 210003, qPrintable(number));
    // The next one begins anew.
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.none"),
                              QStringLiteral("pear")));
    QVERIFY(!m_fixture->resultText().contains(reason));
}

void MainWindowMemoryTest::aSmallSearchIsNotBlamedForAFullMachine()
{
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.none"),
                              QStringLiteral("pear")));
    QCOMPARE(m_fixture->resultText().count(QStringLiteral("one pear")), 2);
    QVERIFY(!m_fixture->resultText().contains(QStringLiteral("中止")));
}

void MainWindowMemoryTest::littleMemoryIsATenthOfItOrHalfAGigabyte_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("available");
    QTest::addColumn<bool>("isShort");
    QTest::newRow("a tenth of much") << 20 * kGigabyte << 2 * kGigabyte << false;
    QTest::newRow("less of much") << 20 * kGigabyte << 2 * kGigabyte - 1 << true;
    QTest::newRow("half a gigabyte of little") << 2 * kGigabyte << kGigabyte / 2 << false;
    QTest::newRow("less of little") << 2 * kGigabyte << kGigabyte / 2 - 1 << true;
    QTest::newRow("not known") << qint64(-1) << qint64(-1) << false;
    QTest::newRow("half known") << 20 * kGigabyte << qint64(-1) << false;
}

void MainWindowMemoryTest::littleMemoryIsATenthOfItOrHalfAGigabyte()
{
    QFETCH(qint64, total);
    QFETCH(qint64, available);
    QTEST(FreeMemory::isShort({total, available}), "isShort");
}

void MainWindowMemoryTest::theSystemTellsItsMemory()
{
    const FreeMemory::Memory memory = FreeMemory::now();
    QVERIFY(memory.total > 0);
    QVERIFY(memory.available > 0 && memory.available <= memory.total);
}

QTEST_MAIN(MainWindowMemoryTest)
#include "MainWindowMemoryTest.moc"
