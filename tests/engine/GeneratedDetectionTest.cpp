#include "engine/CodeSetDetector.h"

#include "engine/CodeSet.h"
#include "tests/engine_support/PlainDetection.h"
#include "tests/support/EncodedTextGenerator.h"
#include "tests/support/TestLength.h"

#include <QTest>
#include <QTextCodec>

#include <array>
#include <limits>

class GeneratedDetectionTest : public QObject {
    Q_OBJECT

private slots:
    void theAnswerIsThatOfThePlainRule();
    void assignedRangesEndWhereTheyShould_data();
    void assignedRangesEndWhereTheyShould();
    void everyCodePointIsInOrOutOfARange();
    void negativeValuesAreUnassigned();
};

void GeneratedDetectionTest::theAnswerIsThatOfThePlainRule()
{
    EncodedTextGenerator random(4711);
    std::array<int, CodeSet::kCount> answers = {};
    for (int i = 0; i < TestLength::rounds(40000, 1000000); ++i) {
        QTextCodec *codec = CodeSet::codec(1 + random.number(CodeSet::kCount - 1));
        const int length = i % 20 == 0 ? 4200 : 60;
        QByteArray sample;
        switch (random.number(4)) {
        case 0:
            sample = random.randomBytes(random.number(length));
            break;
        case 1:
            sample = random.fragments(random.number(length));
            break;
        case 2:
            sample = random.broken(random.encoded(random.text(random.number(length)), codec));
            break;
        default:
            sample = random.encoded(random.text(random.number(length)), codec);
            break;
        }
        const int detectSize = random.oneIn(2) ? 2048 : sample.size() - 1 + random.number(3);
        const Detected expected = PlainDetection::detect(sample, detectSize);
        QVERIFY2(Detected::byEngine(sample, detectSize) == expected, sample.toHex(' ').constData());
        ++answers[size_t(expected.codeSet)];
    }
    for (size_t codeSet = 1; codeSet < answers.size(); ++codeSet)
        QVERIFY2(answers[codeSet] >= 500, "a code set that is hardly ever the answer");
}

void GeneratedDetectionTest::assignedRangesEndWhereTheyShould_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    for (const PlainDetection::Range &range : PlainDetection::kAssigned)
        QTest::addRow("%X to %X", range.first, range.last) << range.first << range.last;
}

void GeneratedDetectionTest::assignedRangesEndWhereTheyShould()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QVERIFY(isUnassignedCodePoint(first - 1));
    QVERIFY(!isUnassignedCodePoint(first));
    QVERIFY(!isUnassignedCodePoint(last));
    QVERIFY(isUnassignedCodePoint(last + 1));
}

void GeneratedDetectionTest::everyCodePointIsInOrOutOfARange()
{
    for (qint32 value = 0; value <= 0x110010; ++value) {
        if (isUnassignedCodePoint(value) != PlainDetection::isUnassigned(value))
            QFAIL(QByteArray::number(value, 16).constData());
    }
}

void GeneratedDetectionTest::negativeValuesAreUnassigned()
{
    QVERIFY(isUnassignedCodePoint(-1));
    QVERIFY(isUnassignedCodePoint(-0xFFFF));
    QVERIFY(isUnassignedCodePoint(std::numeric_limits<qint32>::min()));
    QVERIFY(isUnassignedCodePoint(std::numeric_limits<qint32>::max()));
}

QTEST_GUILESS_MAIN(GeneratedDetectionTest)
#include "GeneratedDetectionTest.moc"
