#include "engine/SignalSpool.h"
#include "tests/engine_support/SearchRequests.h"
#include "tests/engine_support/SpoolRun.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"

#include <QFile>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

/// A working week of searches in one process.
class LongRunTest : public QObject {
    Q_OBJECT

private slots:
    void searchesLeaveNoMemoryBehind();
};

namespace {

QByteArray fileContent(int number)
{
    QByteArray content;
    for (int line = 0; line < 40; ++line)
        content += "word" + QByteArray::number((number * 7 + line) % 500) + " 表示 text\n";
    return content;
}

/// Each unlike the one before, of every kind.
SearchCondition requestNumber(int number, const QString &folder)
{
    if (number % 10 == 9)
        return countLinesIn({folder});
    SearchCondition condition = searchFor(QStringLiteral("word%1").arg(number % 500), {folder});
    switch (number % 4) {
    case 1:
        condition.flg = SearchCondition::RegExpFlag;
        condition.keyword1 = QStringLiteral("w.*%1\\b.*示").arg(number);
        break;
    case 2:
        condition.flg = SearchCondition::IgnoreCaseFlag | SearchCondition::WordFlag;
        condition.keyword2 = QStringLiteral("表示");
        break;
    case 3:
        condition.keyword1 += QStringLiteral(" 表");
        condition.fnameflg = true;
        break;
    default:
        break;
    }
    return condition;
}

/// The number of result lines; what the run says is thrown away.
int linesOf(SpoolRun &run, const SearchCondition &request)
{
    run->requestScan(request);
    if (!run.waitForEnds(1))
        return -1;
    run.finishedFlags.clear();
    run.lcntFinishedFlags.clear();
    run.lineCounts.clear();
    run.encodings.clear();
    return run.takeAll().size();
}

struct Memory {
    /// Bytes that the program has asked for and not given back, of every thread; 0
    /// where the allocator cannot tell.
    qint64 used = 0;
    /// Bytes that the process alone takes of the system, after what is free went back.
    qint64 own = 0;
    /// With the pages of files, which come and go with what the machine needs.
    qint64 resident = 0;
};

Memory memoryNow()
{
    ::malloc_trim(0);
    const struct mallinfo2 info = ::mallinfo2();
    QFile statm(QStringLiteral("/proc/self/statm"));
    statm.open(QIODevice::ReadOnly);
    const qint64 pages = statm.readAll().split(' ').value(1).toLongLong();
    return {static_cast<qint64>(info.uordblks + info.hblkhd), ProcessMemory::ownBytes(),
            pages * ::sysconf(_SC_PAGESIZE)};
}

/// By a tenth of whole.
void verifyNotGrown(const char *what, qint64 before, qint64 after, qint64 whole)
{
    qInfo("%s: %lld bytes, %lld after the first hundred", what, after, before);
    QVERIFY2(after <= before + whole / 10, what);
}

} // namespace

void LongRunTest::searchesLeaveNoMemoryBehind()
{
    constexpr int kWarmedUp = 100;
    const ScratchFolder tree;
    for (int i = 0; i < 60; ++i)
        tree.write(QStringLiteral("%1/%2.txt").arg(i % 6).arg(i), fileContent(i));
    const int searches = TestLength::rounds(500, 5000);
    Memory afterWarmUp;
    int lines = 0;
    // Every other search is one more of the same spool.
    SpoolRun kept;
    for (int i = 1; i <= searches; ++i) {
        const SearchCondition request = requestNumber(i, tree.path());
        SpoolRun fresh;
        const int found = linesOf(i % 2 == 0 ? kept : fresh, request);
        QVERIFY(found >= 0);
        lines += found;
        if (i == kWarmedUp)
            afterWarmUp = memoryNow();
    }
    QVERIFY(lines > searches);
    if (afterWarmUp.used == 0)
        QSKIP("this allocator does not tell what is in use");
    const Memory atTheEnd = memoryNow();
    verifyNotGrown("in use", afterWarmUp.used, atTheEnd.used, afterWarmUp.used);
    verifyNotGrown("resident", afterWarmUp.own, atTheEnd.own, afterWarmUp.resident);
}

QTEST_GUILESS_MAIN(LongRunTest)
#include "LongRunTest.moc"
