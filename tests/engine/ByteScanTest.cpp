#include "engine/ByteScan.h"

#include "tests/support/EncodedTextGenerator.h"
#include "tests/support/TestLength.h"

#include <QTest>

#include <algorithm>

class ByteScanTest : public QObject {
    Q_OBJECT

private slots:
    void nothingIsFoundInNothing();
    void eachByteIsSeenAtEachPlace();
    void lineEndsAreCountedBeyondWhatAByteCounts();
    void steadyAsciiLeavesOutWhatCodecsUse();
    void anUnsteadyByteIsSeenAtEachPlace();
    void theSummaryIsThatOfAPlainLoop();
};

void ByteScanTest::nothingIsFoundInNothing()
{
    const ByteScan::Summary summary = ByteScan::summarise(nullptr, 0);
    QVERIFY(!summary.high && !summary.zero && !summary.escape);
    QCOMPARE(summary.lineFeeds, 0);
    QCOMPARE(summary.carriageReturns, 0);
    QVERIFY(ByteScan::asciiOf(nullptr, 0) == ByteScan::Ascii::AllSteady);
    QCOMPARE(ByteScan::count(nullptr, 0, 'a'), qint64(0));
}

void ByteScanTest::eachByteIsSeenAtEachPlace()
{
    QByteArray bytes(600, 'a');
    for (int at = 0; at < bytes.size(); ++at) {
        for (const char byte : {'\x80', '\0', '\x1B', '\n', '\r'}) {
            bytes[at] = byte;
            const ByteScan::Summary summary = ByteScan::summarise(bytes.constData(), bytes.size());
            QCOMPARE(summary.high, byte == '\x80');
            QCOMPARE(summary.zero, byte == '\0');
            QCOMPARE(summary.escape, byte == '\x1B');
            QCOMPARE(summary.lineFeeds, byte == '\n' ? 1 : 0);
            QCOMPARE(summary.carriageReturns, byte == '\r' ? 1 : 0);
            QCOMPARE(ByteScan::count(bytes.constData(), bytes.size(), byte), qint64(1));
        }
        bytes[at] = 'a';
    }
}

void ByteScanTest::lineEndsAreCountedBeyondWhatAByteCounts()
{
    const QByteArray lineFeeds(100000, '\n');
    QCOMPARE(ByteScan::summarise(lineFeeds.constData(), lineFeeds.size()).lineFeeds, 100000);
    QCOMPARE(ByteScan::count(lineFeeds.constData(), lineFeeds.size(), '\n'), qint64(100000));
    const QByteArray carriageReturns(100000, '\r');
    const ByteScan::Summary summary =
        ByteScan::summarise(carriageReturns.constData(), carriageReturns.size());
    QCOMPARE(summary.carriageReturns, 100000);
    QCOMPARE(summary.lineFeeds, 0);
}

void ByteScanTest::steadyAsciiLeavesOutWhatCodecsUse()
{
    const QByteArray unsteady("\0\x0E\x0F\x1A\x1B\x1C\x7F", 7);
    for (int value = 0; value < 256; ++value) {
        const char byte = char(value);
        const ByteScan::Ascii expected = value >= 0x80 ? ByteScan::Ascii::SteadyAndHigh
            : unsteady.contains(byte)                  ? ByteScan::Ascii::Other
                                                       : ByteScan::Ascii::AllSteady;
        QVERIFY(ByteScan::asciiOf(&byte, 1) == expected);
    }
}

void ByteScanTest::anUnsteadyByteIsSeenAtEachPlace()
{
    QByteArray bytes(9000, 'a');
    QVERIFY(ByteScan::asciiOf(bytes.constData(), bytes.size()) == ByteScan::Ascii::AllSteady);
    for (int at = 0; at < bytes.size(); ++at) {
        bytes[at] = '\x80';
        QVERIFY(ByteScan::asciiOf(bytes.constData(), bytes.size())
                == ByteScan::Ascii::SteadyAndHigh);
        const int other = (at + 4500) % bytes.size();
        bytes[other] = '\x1A';
        QVERIFY(ByteScan::asciiOf(bytes.constData(), bytes.size()) == ByteScan::Ascii::Other);
        bytes[at] = 'a';
        bytes[other] = 'a';
    }
}

void ByteScanTest::theSummaryIsThatOfAPlainLoop()
{
    EncodedTextGenerator random(31);
    for (int i = 0; i < TestLength::rounds(5000, 500000); ++i) {
        const QByteArray bytes = random.randomBytes(random.number(1000));
        const ByteScan::Summary summary = ByteScan::summarise(bytes.constData(), bytes.size());
        const bool high =
            std::any_of(bytes.begin(), bytes.end(), [](char byte) { return uchar(byte) >= 0x80; });
        QCOMPARE(summary.high, high);
        QCOMPARE(summary.zero, bytes.contains('\0'));
        QCOMPARE(summary.escape, bytes.contains('\x1B'));
        QCOMPARE(summary.lineFeeds, bytes.count('\n'));
        QCOMPARE(summary.carriageReturns, bytes.count('\r'));
        const char wanted = char(random.number(256));
        QCOMPARE(ByteScan::count(bytes.constData(), bytes.size(), wanted),
                 qint64(bytes.count(wanted)));
    }
}

QTEST_GUILESS_MAIN(ByteScanTest)
#include "ByteScanTest.moc"
