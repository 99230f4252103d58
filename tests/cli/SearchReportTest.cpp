#include "cli/SearchReport.h"

#include "cli/GrepFormat.h"
#include "engine/CodeSet.h"

#include <QTest>

#include <thread>
#include <vector>

class SearchReportTest : public QObject {
    Q_OBJECT

private slots:
    void whatWaitsIsCountedInBytesUntilItIsWritten();
    void sortedResultsWaitForTheEnd();
    void threadsMayAddAtOnce();
};

namespace {

FileResult fileNamed(const QString &path)
{
    return {path,
            CodeSet::Utf8,
            {QStringLiteral("      1:    1:x"), QStringLiteral("      2:    1:y")}};
}

SearchReport::Output into(QByteArray *written)
{
    return [written](const QByteArray &lines) {
        written->append(lines);
    };
}

std::unique_ptr<ResultFormat> grepFormat()
{
    return std::make_unique<GrepFormat>(HitPainter());
}

} // namespace

void SearchReportTest::whatWaitsIsCountedInBytesUntilItIsWritten()
{
    QByteArray written;
    SearchReport report(into(&written), grepFormat(), false);
    QVERIFY(!report.foundAny());
    report.addHits(fileNamed(QStringLiteral("港")));
    report.addHits({QStringLiteral("b"), CodeSet::Utf8, {}});
    const QByteArray lines = "港:1:1:x\n港:2:1:y\nb\n";
    QCOMPARE(report.waitingBytes(), qint64(lines.size()));
    QVERIFY(report.foundAny());
    QCOMPARE(report.hitCount(), qint64(2));
    QCOMPARE(written, QByteArray());
    report.writeWaiting();
    QCOMPARE(written, lines);
    QCOMPARE(report.waitingBytes(), qint64(0));
    const RunReport::Counts counts = {{QStringLiteral("files"), 7},
                                      {QStringLiteral("hits"), 2},
                                      {QStringLiteral("matched files"), 1}};
    QCOMPARE(report.counts(7), counts);
}

void SearchReportTest::sortedResultsWaitForTheEnd()
{
    QByteArray written;
    SearchReport report(into(&written), grepFormat(), true);
    for (const char *name : {"b", "a/b", "\uff21", "a", "B"})
        report.addHits({QString::fromUtf8(name), CodeSet::Utf8, {}});
    // Nobody is held back for what is kept on purpose.
    QCOMPARE(report.waitingBytes(), qint64(0));
    report.writeWaiting();
    QCOMPARE(written, QByteArray());
    report.finish(false);
    QCOMPARE(written, QByteArray("B\na\na/b\nb\n\uff21\n"));
}

void SearchReportTest::threadsMayAddAtOnce()
{
    QByteArray written;
    SearchReport report(into(&written), grepFormat(), false);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&report] {
            for (int n = 0; n < 1000; ++n)
                report.addHits(fileNamed(QStringLiteral("a")));
        });
    report.writeWaiting();
    for (std::thread &thread : threads)
        thread.join();
    report.writeWaiting();
    QCOMPARE(report.hitCount(), qint64(8000));
    QCOMPARE(report.waitingBytes(), qint64(0));
    QCOMPARE(written, QByteArray("a:1:1:x\na:2:1:y\n").repeated(4000));
}

QTEST_GUILESS_MAIN(SearchReportTest)
#include "SearchReportTest.moc"
