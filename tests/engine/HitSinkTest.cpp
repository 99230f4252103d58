#include "engine/CodeSet.h"
#include "tests/engine_support/EngineRun.h"
#include "tests/support/ScratchFolder.h"

#include <QTest>
#include <QTextCodec>

#include <mutex>
#include <new>

namespace {

struct Taken {
    int codeSet;
    QStringList hits;
};

using TakenByName = QMap<QString, Taken>;

/// What the threads of a run have given; the lock is what a checker of races sees.
class Collected {
public:
    void add(const QString &name, const Taken &taken)
    {
        const std::lock_guard guard(m_lock);
        m_taken.insert(m_taken.contains(name) ? QStringLiteral("twice") : name, taken);
    }
    TakenByName all()
    {
        const std::lock_guard guard(m_lock);
        return m_taken;
    }

private:
    std::mutex m_lock;
    TakenByName m_taken; // guarded by m_lock
};

} // namespace

/// Hits that a sink takes from the threads which find them.
class HitSinkTest : public QObject {
    Q_OBJECT

private slots:
    void theSinkTakesEachFileOnceAndTheSignalsNothing();
    void aFileWithoutHitsCountsByItsNameWhereNamesAreWanted();
    void whatTheSinkThrowsForLackOfMemoryIsToldOfThatFile();
};

namespace {

SearchCondition conditionFor(const ScratchFolder &tree, const QString &keyword)
{
    SearchCondition condition;
    condition.pathlist = QStringList{tree.path()};
    condition.mask = QStringLiteral("*.*");
    condition.keyword1 = keyword;
    return condition;
}

/// With a byte order mark.
QByteArray utf16(const char *text)
{
    return QTextCodec::codecForName("UTF-16LE")->fromUnicode(QString::fromUtf8(text));
}

/// What the sink is given, by the file's name; a file that comes twice is named
/// "twice".
EngineOptions sinkInto(Collected &collected)
{
    EngineOptions options;
    options.hitSink = [&](const QString &path, int codeSet, const QStringList &hits) {
        collected.add(path.section(QLatin1Char('/'), -1), {codeSet, hits});
    };
    return options;
}

} // namespace

void HitSinkTest::theSinkTakesEachFileOnceAndTheSignalsNothing()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("wide.txt"), utf16("港の key\nnone\n\tkey\n"));
    for (int i = 0; i < 50; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), "港の key\n");
    tree.write(QStringLiteral("none.txt"), "none\n");
    Collected collected;
    EngineRun run(sinkInto(collected));
    QVERIFY(run.run(conditionFor(tree, QStringLiteral("key"))));
    const TakenByName taken = collected.all();
    QCOMPARE(taken.size(), 51);
    QCOMPARE(taken.value(QStringLiteral("wide.txt")).codeSet, int(CodeSet::Utf16Le));
    QCOMPARE(taken.value(QStringLiteral("wide.txt")).hits,
             (QStringList{QStringLiteral("      1:    6:港の key"),
                          QStringLiteral("      3:    5:\tkey")}));
    QCOMPARE(taken.value(QStringLiteral("49.txt")).codeSet, int(CodeSet::Utf8));
    QCOMPARE(taken.value(QStringLiteral("49.txt")).hits,
             QStringList{QStringLiteral("      1:    6:港の key")});
    QVERIFY(run.lists.isEmpty());
    QVERIFY(run.filesWithoutHits.isEmpty());
    QCOMPARE(run.searched, 52);
}

void HitSinkTest::aFileWithoutHitsCountsByItsNameWhereNamesAreWanted()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "key\n");
    tree.write(QStringLiteral("b.txt"), "none\n");
    Collected collected;
    EngineRun run(sinkInto(collected));
    SearchCondition condition = conditionFor(tree, QStringLiteral("key"));
    condition.fnameflg = true;
    QVERIFY(run.run(condition));
    const TakenByName taken = collected.all();
    QCOMPARE(taken.keys(), (QStringList{QStringLiteral("a.txt"), QStringLiteral("b.txt")}));
    QCOMPARE(taken.value(QStringLiteral("b.txt")).hits, QStringList());
    QVERIFY(run.filesWithoutHits.isEmpty());
}

void HitSinkTest::whatTheSinkThrowsForLackOfMemoryIsToldOfThatFile()
{
    const ScratchFolder tree;
    tree.write(QStringLiteral("a.txt"), "key\n");
    tree.write(QStringLiteral("b.txt"), "key\n");
    EngineOptions options;
    options.hitSink = [](const QString &path, int, const QStringList &) {
        if (path.endsWith(QLatin1String("a.txt")))
            throw std::bad_alloc();
    };
    EngineRun run(options);
    QVERIFY(run.run(conditionFor(tree, QStringLiteral("key"))));
    QCOMPARE(run.errors,
             QStringList{QStringLiteral("Error out of memory:")
                         + tree.filePath(QStringLiteral("a.txt"))});
    QCOMPARE(run.finishedFlags, QVector<bool>{false});
}

QTEST_GUILESS_MAIN(HitSinkTest)
#include "HitSinkTest.moc"
