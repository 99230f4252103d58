#include "tests/mainwindow/WindowTest.h"

#include "mainwindow/FreeMemory.h"
#include "mainwindow/RunControl.h"
#include "tests/support/TestLength.h"

#include <QFileInfo>
#include <QTest>

/// A search that finds more than fits into memory ends and says so.
class MainWindowMemoryTest : public WindowTest {
    Q_OBJECT

private slots:
    void init();

    void aSearchThatTakesTheLastMemoryEndsAndSaysSo();
    void aLineCountThatTakesTheLastMemorySaysSo();
    void aSmallSearchIsNotBlamedForAFullMachine();
    void millionsOfHitsEndWithAllOfThemOrTheReason();
    void littleMemoryIsATenthOfItOrHalfAGigabyte_data();
    void littleMemoryIsATenthOfItOrHalfAGigabyte();
    void theSystemTellsItsMemory();

private:
    FreeMemory::Memory m_memory;
    qint64 m_availableOnceListed = 0;
};

namespace {

constexpr qint64 kGigabyte = Q_INT64_C(1024) * 1024 * 1024;

const QString kReason =
    QStringLiteral("メモリが足りなくなったため中止しました。見つけて表示していない行 ");

/// The number that stands behind text; 0 when the text is not there.
int numberBehind(const QString &text, const QString &result)
{
    return result.section(text, 1)
        .section(QLatin1Char('\n'), 0, 0)
        .remove(QLatin1Char(','))
        .toInt();
}

} // namespace

void MainWindowMemoryTest::init()
{
    m_fixture = std::make_unique<WindowFixture>();
    for (const char *name : {"a.txt", "b.txt", "c.txt"})
        m_fixture->tree.write(QString::fromLatin1(name), QByteArray("one apple\n").repeated(70000));
    m_fixture->tree.write(QStringLiteral("few.none"), "one pear\n");
    m_fixture->tree.write(QStringLiteral("others.none"), "one pear\n");
    m_memory = {4 * kGigabyte, kGigabyte};
    m_availableOnceListed = kGigabyte;
    m_fixture->open();
    m_fixture->window().findChild<RunControl *>()->setMemorySource([this] {
        const bool listed = m_fixture->resultView()->document()->blockCount() > 50;
        if (listed)
            m_memory.available = m_availableOnceListed;
        return m_memory;
    });
}

void MainWindowMemoryTest::aSearchThatTakesTheLastMemoryEndsAndSaysSo()
{
    m_availableOnceListed = kGigabyte / 4;
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.txt"),
                              QStringLiteral("apple")));
    const QString result = m_fixture->resultText();
    const int shown = result.count(QStringLiteral("one apple"));
    QVERIFY(shown < 210000);
    QVERIFY(result.contains(QStringLiteral("/// 中止しました ///")));
    const int leftOut = numberBehind(kReason, result);
    QVERIFY(leftOut > 0);
    QCOMPARE(shown + leftOut, numberBehind(QStringLiteral("該当行数 "), result));
    // The next one begins anew.
    m_memory.available = kGigabyte;
    m_availableOnceListed = kGigabyte;
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.none"),
                              QStringLiteral("pear")));
    QVERIFY(!m_fixture->resultText().contains(kReason));
}

void MainWindowMemoryTest::aLineCountThatTakesTheLastMemorySaysSo()
{
    const QString tree = QStringLiteral("/usr/");
    if (!QFileInfo(tree).isDir())
        QSKIP("no tree that takes so long");
    m_fixture->fill(tree, QStringLiteral("*"), QString());
    m_fixture->window().lineCountGrep();
    QVERIFY(m_fixture->isRunning());
    m_memory.available = kGigabyte / 4;
    m_availableOnceListed = m_memory.available;
    QVERIFY(m_fixture->waitUntilIdle());
    const QString result = m_fixture->resultText();
    QVERIFY(result.contains(QStringLiteral("/// 中止しました ///")));
    QVERIFY(result.contains(QStringLiteral("\nメモリが足りなくなったため中止しました。\n"))
            || result.endsWith(QStringLiteral("\nメモリが足りなくなったため中止しました。")));
}

void MainWindowMemoryTest::aSmallSearchIsNotBlamedForAFullMachine()
{
    m_memory.available = kGigabyte / 4;
    QVERIFY(m_fixture->search(m_fixture->tree.path(), QStringLiteral("*.none"),
                              QStringLiteral("pear")));
    QCOMPARE(m_fixture->resultText().count(QStringLiteral("one pear")), 2);
    QVERIFY(!m_fixture->resultText().contains(QStringLiteral("中止")));
}

/// With the memory that this machine has.
void MainWindowMemoryTest::millionsOfHitsEndWithAllOfThemOrTheReason()
{
    constexpr int kFiles = 50;
    constexpr int kLongestMilliseconds = 1000000;
    const int hits = TestLength::rounds(200000, 5000000);
    for (int file = 0; file < kFiles; ++file)
        m_fixture->tree.write(QStringLiteral("%1.many").arg(file),
                              QByteArray("a fig\n").repeated(hits / kFiles));
    m_fixture->window().findChild<RunControl *>()->setMemorySource(&FreeMemory::now);
    m_fixture->fill(m_fixture->tree.path(), QStringLiteral("*.many"), QStringLiteral("fig"));
    m_fixture->searchButton()->click();
    QVERIFY(QTest::qWaitFor([this] { return !m_fixture->isRunning(); }, kLongestMilliseconds));
    const QString result = m_fixture->resultText();
    const int leftOut = numberBehind(kReason, result);
    if (leftOut == 0)
        QCOMPARE(numberBehind(QStringLiteral("該当行数 "), result), hits);
    QCOMPARE(result.count(QStringLiteral("a fig")) + leftOut,
             numberBehind(QStringLiteral("該当行数 "), result));
}

void MainWindowMemoryTest::littleMemoryIsATenthOfItOrHalfAGigabyte_data()
{
    constexpr qint64 kMuch = 256 * Q_INT64_C(1024) * 1024;
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("before");
    QTest::addColumn<qint64>("now");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("a tenth") << 10 * kGigabyte << 4 * kGigabyte << kGigabyte << false;
    QTest::newRow("less") << 10 * kGigabyte << 4 * kGigabyte << kGigabyte - 1 << true;
    QTest::newRow("half a gigabyte of little")
        << 2 * kGigabyte << kGigabyte << kGigabyte / 2 << false;
    QTest::newRow("less of little") << 2 * kGigabyte << kGigabyte << kGigabyte / 2 - 1 << true;
    QTest::newRow("two gigabytes of much")
        << 256 * kGigabyte << 9 * kGigabyte << 2 * kGigabyte << false;
    QTest::newRow("less of much") << 256 * kGigabyte << 9 * kGigabyte << 2 * kGigabyte - 1 << true;
    const qint64 little = kGigabyte / 2 - 1;
    QTest::newRow("taken by this run") << 2 * kGigabyte << little + kMuch << little << true;
    QTest::newRow("little before, too") << 2 * kGigabyte << little + kMuch - 1 << little << false;
    QTest::newRow("not known") << qint64(-1) << qint64(-1) << qint64(-1) << false;
    QTest::newRow("not known at the start") << 20 * kGigabyte << qint64(-1) << little << false;
    QTest::newRow("not known now") << 20 * kGigabyte << kGigabyte << qint64(-1) << false;
}

void MainWindowMemoryTest::littleMemoryIsATenthOfItOrHalfAGigabyte()
{
    QFETCH(qint64, total);
    QFETCH(qint64, before);
    QFETCH(qint64, now);
    QTEST(FreeMemory::isTaken({total, before}, {total, now}), "isTaken");
}

void MainWindowMemoryTest::theSystemTellsItsMemory()
{
    const FreeMemory::Memory memory = FreeMemory::now();
    QVERIFY(memory.total > 0);
    QVERIFY(memory.available > 0 && memory.available <= memory.total);
}

QTEST_MAIN(MainWindowMemoryTest)
#include "MainWindowMemoryTest.moc"
