#include "engine/TextGrepCore.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>

#include <atomic>

namespace {

constexpr int kFiles = 20;

} // namespace

/// The engine waits for whoever takes its results.
class HoldBackTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void aRunThatIsHeldBackLoadsNothingAndThenEverything();
    void aLineCountIsHeldBackToo();
    void anAbortEndsTheWait();

private:
    SearchCondition condition(bool linecount) const;
    EngineOptions heldBack();

    ScratchFolder m_tree;
    std::atomic<bool> m_hold{false};
    std::atomic<int> m_asked{0};
};

void HoldBackTest::initTestCase()
{
    for (int i = 0; i < kFiles; ++i)
        m_tree.write(QStringLiteral("%1.txt").arg(i), "a key\nnone\n");
}

SearchCondition HoldBackTest::condition(bool linecount) const
{
    SearchCondition condition;
    condition.pathlist = QStringList{m_tree.path()};
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = QStringLiteral("key");
    condition.linecount = linecount;
    return condition;
}

EngineOptions HoldBackTest::heldBack()
{
    m_hold = true;
    m_asked = 0;
    EngineOptions options;
    options.holdBack = [this] {
        ++m_asked;
        return m_hold.load();
    };
    return options;
}

void HoldBackTest::aRunThatIsHeldBackLoadsNothingAndThenEverything()
{
    EngineRun run(heldBack());
    run.start(condition(false));
    QTRY_VERIFY_WITH_TIMEOUT(m_asked > 10, kPatienceMilliseconds);
    QCOMPARE(run.searched, 0);
    QVERIFY(run.finishedFlags.isEmpty());
    m_hold = false;
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
    QCOMPARE(run.searched, kFiles);
    QCOMPARE(run.pathsWithHits().size(), kFiles);
}

void HoldBackTest::aLineCountIsHeldBackToo()
{
    EngineRun run(heldBack());
    run.start(condition(true));
    QTRY_VERIFY_WITH_TIMEOUT(m_asked > 10, kPatienceMilliseconds);
    QVERIFY(run.lineCounts.isEmpty());
    m_hold = false;
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lineCounts.size(), kFiles);
}

void HoldBackTest::anAbortEndsTheWait()
{
    EngineRun run(heldBack());
    run.start(condition(false));
    QTRY_VERIFY_WITH_TIMEOUT(m_asked > 10, kPatienceMilliseconds);
    run.engine()->abort();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.finishedFlags, QVector<bool>{true});
    QCOMPARE(run.searched, 0);
}

QTEST_GUILESS_MAIN(HoldBackTest)
#include "HoldBackTest.moc"
