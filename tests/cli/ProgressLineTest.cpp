#include "cli/ProgressLine.h"

#include <QTest>

namespace {

ProgressLine::State state(const QString &file)
{
    return {12, 3, 45, 6, file};
}

const QString kCounts = QStringLiteral("searched 12, hits 6, queued: folders 3, files 45 ");

} // namespace

class ProgressLineTest : public QObject {
    Q_OBJECT

private slots:
    void theCountsStandBeforeTheFile();
    void aLongPathLosesItsBeginning();
    void aWideCharacterTakesTwoColumns();
    void aNarrowTerminalGetsTheStartOfTheCounts_data();
    void aNarrowTerminalGetsTheStartOfTheCounts();
    void controlCharactersOfANameAreNotPrinted();
    void showingWritesOverTheLineBefore();
    void clearingWritesOnlyWhenALineIsShown();
    void nothingIsShownInTheFirst300Milliseconds();
};

void ProgressLineTest::theCountsStandBeforeTheFile()
{
    QCOMPARE(ProgressLine::text(state(QStringLiteral("src/a.txt")), 80),
             kCounts + QStringLiteral("src/a.txt"));
}

void ProgressLineTest::aLongPathLosesItsBeginning()
{
    const int columns = kCounts.size() + 6;
    QCOMPARE(ProgressLine::text(state(QStringLiteral("src/a.txt")), columns),
             kCounts + QStringLiteral("a.txt"));
}

void ProgressLineTest::aWideCharacterTakesTwoColumns()
{
    const int columns = kCounts.size() + 6;
    QCOMPARE(ProgressLine::text(state(QStringLiteral("灯台/港")), columns),
             kCounts + QStringLiteral("台/港"));
    QCOMPARE(ProgressLine::text(state(QStringLiteral("灯台/港")), columns - 1),
             kCounts + QStringLiteral("/港"));
}

void ProgressLineTest::aNarrowTerminalGetsTheStartOfTheCounts_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("text");
    QTest::newRow("ten") << 10 << QStringLiteral("searched ");
    QTest::newRow("one") << 1 << QString();
    QTest::newRow("none") << 0 << QString();
    QTest::newRow("as wide as the counts") << kCounts.size() << kCounts.left(kCounts.size() - 1);
}

void ProgressLineTest::aNarrowTerminalGetsTheStartOfTheCounts()
{
    QFETCH(int, columns);
    QTEST(ProgressLine::text(state(QStringLiteral("a")), columns), "text");
}

void ProgressLineTest::controlCharactersOfANameAreNotPrinted()
{
    const QString name = QStringLiteral("a\x1b[2J\n") + QChar(0xDC81) + QStringLiteral("b");
    QCOMPARE(ProgressLine::text(state(name), 80), kCounts + QStringLiteral("a?[2J??b"));
}

void ProgressLineTest::showingWritesOverTheLineBefore()
{
    QByteArray written;
    ProgressLine line([&](const QByteArray &bytes) { written += bytes; });
    line.show(state(QStringLiteral("港")), 80, 300);
    QCOMPARE(written, "\r\x1b[K" + (kCounts + QStringLiteral("港")).toUtf8());
}

void ProgressLineTest::clearingWritesOnlyWhenALineIsShown()
{
    QByteArray written;
    ProgressLine line([&](const QByteArray &bytes) { written += bytes; });
    line.clear();
    QCOMPARE(written, QByteArray());
    line.show(state(QString()), 80, 300);
    written.clear();
    line.clear();
    line.clear();
    QCOMPARE(written, QByteArray("\r\x1b[K"));
}

void ProgressLineTest::nothingIsShownInTheFirst300Milliseconds()
{
    QByteArray written;
    ProgressLine line([&](const QByteArray &bytes) { written += bytes; });
    line.show(state(QString()), 80, 299);
    QVERIFY(!line.isShown());
    QCOMPARE(written, QByteArray());
    line.show(state(QString()), 80, 300);
    QVERIFY(line.isShown());
    QVERIFY(!written.isEmpty());
}

QTEST_GUILESS_MAIN(ProgressLineTest)
#include "ProgressLineTest.moc"
