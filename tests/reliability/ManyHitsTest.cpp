#include "tests/cli/CliRun.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestLength.h"

#include <QTest>
#include <QThread>

#include <sys/resource.h>

/// The memory of a search on the console that finds millions of lines, read by
/// somebody who is slower than the search.
class ManyHitsTest : public QObject {
    Q_OBJECT

private slots:
    void everyHitIsPrintedInLittleMemory_data();
    void everyHitIsPrintedInLittleMemory();
};

namespace {

/// The largest that a program which ended was, in megabytes.
long largestChild()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss / 1024;
}

qint64 linesOf(QProcess &process)
{
    qint64 lines = 0;
    while (process.waitForReadyRead(120000))
        lines += process.readAllStandardOutput().count('\n');
    return lines + process.readAllStandardOutput().count('\n');
}

} // namespace

void ManyHitsTest::everyHitIsPrintedInLittleMemory_data()
{
    QTest::addColumn<int>("files");
    QTest::addColumn<int>("hitsInAFile");
    QTest::addColumn<QByteArray>("line");
    const int times = TestLength::rounds(1, 10);
    QTest::newRow("in many files")
        << 50 * times << 10000 << QByteArray("a needle and some more text on its line\n");
    // As many as a file can have that is not too large to be searched.
    QTest::newRow("in few files") << times << 524287 << QByteArray("n\n");
}

void ManyHitsTest::everyHitIsPrintedInLittleMemory()
{
    QFETCH(int, files);
    QFETCH(int, hitsInAFile);
    QFETCH(QByteArray, line);
    const ScratchFolder tree;
    const QByteArray content = line.repeated(hitsInAFile);
    for (int i = 0; i < files; ++i)
        tree.write(QStringLiteral("%1.txt").arg(i), content);

    QProcess process;
    CliRun::prepare(process, {QStringLiteral("n"), tree.path()});
    process.start();
    QVERIFY(process.waitForStarted());
    QThread::sleep(2); // nobody reads: what is found has to wait
    const qint64 lines = linesOf(process);
    QVERIFY(process.state() == QProcess::NotRunning || process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(lines, qint64(files) * (1 + hitsInAFile)); // each under the name of its file
    qInfo("%lld lines, %ld MB", lines, largestChild());
#ifdef SARVIK_SANITIZED
    QSKIP("a sanitizer needs memory of its own");
#else
    const int most = TestLength::rounds(200, 500);
    QVERIFY2(largestChild() < most, qPrintable(QString::number(largestChild())));
#endif
}

QTEST_GUILESS_MAIN(ManyHitsTest)
#include "ManyHitsTest.moc"
