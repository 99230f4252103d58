#include "engine/CurrentThread.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/engine_support/GatedLister.h"
#include "tests/support/Patience.h"
#include "tests/support/ScratchFolder.h"

#include <QSet>
#include <QTest>

#include <mutex>

/// Walkers and loaders work side by side, on however few processors.
class ParallelRunTest : public QObject {
    Q_OBJECT

private slots:
    void foldersAreListedAtOnce();
    void filesAreLoadedAtOnce();
};

namespace {

SearchCondition searchIn(const QStringList &folders)
{
    SearchCondition condition;
    condition.pathlist = folders;
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = QStringLiteral("key");
    condition.subdir = true;
    return condition;
}

} // namespace

void ParallelRunTest::foldersAreListedAtOnce()
{
    const ScratchFolder one;
    const ScratchFolder two;
    one.write(QStringLiteral("a.txt"), "key\n");
    two.write(QStringLiteral("b.txt"), "key\n");
    const auto lister = std::make_shared<GatedLister>(GatedLister::BeforeListing);
    EngineOptions options;
    options.lister = lister;
    EngineRun run(options);
    run.start(searchIn({one.path(), two.path()}));
    // Each stands at the gate with a folder of its own.
    QTRY_COMPARE_WITH_TIMEOUT(lister->arrived(), 2, kPatienceMilliseconds);
    lister->open();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lists.size(), 2);
}

void ParallelRunTest::filesAreLoadedAtOnce()
{
    const ScratchFolder tree;
    for (int i = 0; i < 10; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "key\n");
    std::mutex lock;
    QSet<int> threads; // guarded by lock
    const auto countThreads = [&] {
        const std::lock_guard guard(lock);
        return threads.size();
    };
    EngineOptions options;
    options.holdBack = [&] {
        const std::lock_guard guard(lock);
        threads.insert(CurrentThread::id());
        return threads.size() < 2;
    };
    EngineRun run(options);
    run.start(searchIn({tree.path()}));
    QTRY_VERIFY_WITH_TIMEOUT(countThreads() >= 2, kPatienceMilliseconds);
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lists.size(), 10);
}

QTEST_GUILESS_MAIN(ParallelRunTest)
#include "ParallelRunTest.moc"
