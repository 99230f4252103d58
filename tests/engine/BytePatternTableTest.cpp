#include "engine/BytePatternTable.h"

#include "tests/support/TestLength.h"

#include <QRandomGenerator>
#include <QTest>

class BytePatternTableTest : public QObject {
    Q_OBJECT

private slots:
    void noPatternsFindNothing();
    void theFirstPositionIsFound();
    void aPatternAtTheEndIsFound();
    void aPatternThatGoesOnBehindTheEndIsNotFound();
    void zerosBehindTheEndAreNoneOfAPattern();
    void shortAndLongPatternsAreFoundTogether();
    void aPatternThatBeginsAnotherIsFound();
    void patternsThatBeginAlikeAreToldApart();
    void positionsKeepEachPatternsAlignment();
    void bitsThatOnePatternLeavesOutStillCountForAnother();
    void randomSearchesAgreeWithThePlainWay();
};

namespace {

QVector<BytePattern> exactly(const QList<QByteArray> &texts)
{
    QVector<BytePattern> patterns;
    for (const QByteArray &text : texts)
        patterns.append(BytePattern::exact(text));
    return patterns;
}

qint64 indexOf(const QVector<BytePattern> &patterns, const QByteArray &bytes, qint64 from = 0)
{
    return BytePatternTable(patterns).indexIn(bytes.constData(), bytes.size(), from);
}

qint64 plainIndexOf(const QVector<BytePattern> &patterns, const QByteArray &bytes, int from)
{
    for (int at = from; at < bytes.size(); ++at) {
        for (const BytePattern &pattern : patterns) {
            if (at % pattern.alignment == 0 && at + pattern.value.size() <= bytes.size()
                && pattern.matchesAt(bytes.constData() + at))
                return at;
        }
    }
    return -1;
}

/// So many patterns with the text in front.
QList<QByteArray> numbered(const QByteArray &head, int count)
{
    QList<QByteArray> texts;
    for (int i = 0; i < count; ++i)
        texts.append(head + QByteArray::number(1000 + i));
    return texts;
}

} // namespace

void BytePatternTableTest::noPatternsFindNothing()
{
    QVERIFY(BytePatternTable().isEmpty());
    QCOMPARE(BytePatternTable().indexIn("abc", 3, 0), -1);
    QCOMPARE(indexOf({}, "abc"), -1);
}

void BytePatternTableTest::theFirstPositionIsFound()
{
    const QVector<BytePattern> patterns = exactly({"needle", "thread", "thimble"});
    const QByteArray bytes = QByteArray(100, '.') + "thread..needle";
    QCOMPARE(indexOf(patterns, bytes), 100);
    QCOMPARE(indexOf(patterns, bytes, 100), 100);
    QCOMPARE(indexOf(patterns, bytes, 101), 108);
    QCOMPARE(indexOf(patterns, bytes, 109), -1);
    QCOMPARE(indexOf(patterns, bytes, bytes.size()), -1);
}

void BytePatternTableTest::aPatternAtTheEndIsFound()
{
    for (int before = 0; before < 20; ++before) {
        QCOMPARE(indexOf(exactly({"abcde", "xyz"}), QByteArray(before, '.') + "xyz"), before);
        QCOMPARE(indexOf(exactly({"abcde", "x"}), QByteArray(before, '.') + "x"), before);
    }
}

void BytePatternTableTest::aPatternThatGoesOnBehindTheEndIsNotFound()
{
    const QByteArray bytes = "......abcdefghijkl";
    const QVector<BytePattern> patterns = exactly({"abcdefghijkl", "abcdefghijxx"});
    for (int size = 0; size < bytes.size(); ++size)
        QCOMPARE(BytePatternTable(patterns).indexIn(bytes.constData(), size, 0), -1);
    QCOMPARE(indexOf(patterns, bytes), 6);
}

void BytePatternTableTest::zerosBehindTheEndAreNoneOfAPattern()
{
    const QByteArray zeros(4, '\0');
    QCOMPARE(indexOf(exactly({"ab" + zeros}), "..ab"), -1);
    QCOMPARE(indexOf(exactly({"ab" + zeros}), "..ab" + zeros), 2);
    QCOMPARE(indexOf(exactly({zeros}), ""), -1);
}

void BytePatternTableTest::shortAndLongPatternsAreFoundTogether()
{
    const QVector<BytePattern> patterns = exactly({"q", "zz", "xyz", "long one", "abcd"});
    QCOMPARE(indexOf(patterns, "........long one"), 8);
    QCOMPARE(indexOf(patterns, "........abcd...."), 8);
    QCOMPARE(indexOf(patterns, "...xyz..abcd...."), 3);
    QCOMPARE(indexOf(patterns, "....z.zz.abcd..."), 6);
    QCOMPARE(indexOf(patterns, "........zabcq..."), 12);
    QCOMPARE(indexOf(patterns, "....z.xy.abc.long on"), -1);
}

void BytePatternTableTest::aPatternThatBeginsAnotherIsFound()
{
    const QVector<BytePattern> patterns = exactly({"needlework", "needle"});
    QCOMPARE(indexOf(patterns, "...needleworks"), 3);
    QCOMPARE(indexOf(patterns, "...needless..."), 3);
    QList<QByteArray> alike = numbered("needle", 100);
    QCOMPARE(indexOf(exactly(alike), "...needless..."), -1);
    alike.append("needle");
    QCOMPARE(indexOf(exactly(alike), "...needless..."), 3);
}

void BytePatternTableTest::patternsThatBeginAlikeAreToldApart()
{
    const QByteArray head = "as long a beginning as may be: ";
    const QVector<BytePattern> patterns = exactly(numbered(head, 500));
    for (const int number : {1000, 1007, 1250, 1499})
        QCOMPARE(indexOf(patterns, "..." + head + QByteArray::number(number)), 3);
    QCOMPARE(indexOf(patterns, "..." + head + "1500"), -1);
    QCOMPARE(indexOf(patterns, "..." + head + "999"), -1);
    QCOMPARE(indexOf(patterns, "..." + head), -1);
    QCOMPARE(indexOf(patterns, "..." + head + head + "1499"), 3 + head.size());
}

void BytePatternTableTest::positionsKeepEachPatternsAlignment()
{
    QVector<BytePattern> patterns = exactly({"abcd", "wxyz"});
    patterns[0].alignment = patterns[1].alignment = 2;
    QCOMPARE(indexOf(patterns, ".abcd.abcd"), 6);
    QCOMPARE(indexOf(patterns, "abcd.wxyz.abcd", 1), 10);
    patterns[1].alignment = 1;
    QCOMPARE(indexOf(patterns, ".abcd.abcd"), 6);
    QCOMPARE(indexOf(patterns, "abcd.wxyz.abcd", 1), 5);
}

void BytePatternTableTest::bitsThatOnePatternLeavesOutStillCountForAnother()
{
    QVector<BytePattern> patterns = exactly({"word", "other"});
    patterns.append(BytePattern::asciiCaseInsensitive("word"));
    patterns[0] = BytePattern::exact("wide");
    QCOMPARE(indexOf(patterns, "..WIDE..OTHER..WoRd"), 15);
    QCOMPARE(indexOf(patterns, "..wide"), 2);
}

void BytePatternTableTest::randomSearchesAgreeWithThePlainWay()
{
    QRandomGenerator random(20240811);
    const auto bytesOf = [&random](int length, int letters) {
        QByteArray bytes;
        for (int i = 0; i < length; ++i)
            bytes.append(char((random.bounded(4) == 0 ? 'A' : 'a') + random.bounded(letters)));
        return bytes;
    };
    int found = 0;
    const int rounds = TestLength::rounds(3000, 100000);
    for (int round = 0; round < rounds; ++round) {
        const int letters = 2 + random.bounded(8);
        const QByteArray head = bytesOf(random.bounded(12), letters);
        const int shortest = 1 + random.bounded(6);
        QVector<BytePattern> patterns;
        for (int count = 1 + random.bounded(60); count > 0; --count) {
            const QByteArray text = (random.bounded(3) != 0 ? head : QByteArray())
                + bytesOf(shortest + random.bounded(12), letters);
            patterns.append(random.bounded(3) == 0 ? BytePattern::asciiCaseInsensitive(text)
                                                   : BytePattern::exact(text));
            patterns.last().alignment = round % 3 == 0 ? 1 << random.bounded(3) : 1;
        }
        QByteArray bytes;
        while (bytes.size() < 80)
            bytes += random.bounded(2) == 0 ? head : bytesOf(1 + random.bounded(8), letters);
        const int from = random.bounded(40);
        const qint64 expected = plainIndexOf(patterns, bytes, from);
        QCOMPARE(indexOf(patterns, bytes, from), expected);
        found += expected > from ? 1 : 0;
    }
    QVERIFY2(found > rounds / 10 && found < rounds, qPrintable(QString::number(found)));
}

QTEST_GUILESS_MAIN(BytePatternTableTest)
#include "BytePatternTableTest.moc"
