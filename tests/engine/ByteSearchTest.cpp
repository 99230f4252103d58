#include "engine/ByteSearch.h"

#include "engine/ByteFrequency.h"

#include <QRandomGenerator>
#include <QTest>

class ByteSearchTest : public QObject {
    Q_OBJECT

private slots:
    void anEmptySearchFindsNothing();
    void theFirstOccurrenceIsFound();
    void aPatternLongerThanTheBufferIsNotFound();
    void onlyAsciiLettersIgnoreCase();
    void positionsKeepTheAlignment();
    void theFirstOfSeveralPatternsIsFound();
    void aPatternAcrossTwoPiecesIsFound();
    void commonBytesAreKnownAsCommon();
    void randomSearchesAgreeWithThePlainWay_data();
    void randomSearchesAgreeWithThePlainWay();
};

namespace {

qint64 indexOf(const QVector<BytePattern> &patterns, const QByteArray &bytes, qint64 from = 0)
{
    return ByteSearch(patterns).indexIn(bytes.constData(), bytes.size(), from);
}

bool matchesAt(const BytePattern &pattern, const QByteArray &bytes, int at)
{
    if (at % pattern.alignment != 0 || at + pattern.value.size() > bytes.size())
        return false;
    for (int i = 0; i < pattern.value.size(); ++i) {
        if ((bytes.at(at + i) & pattern.mask.at(i)) != pattern.value.at(i))
            return false;
    }
    return true;
}

qint64 plainIndexOf(const QVector<BytePattern> &patterns, const QByteArray &bytes, int from)
{
    for (int at = from; at < bytes.size(); ++at) {
        for (const BytePattern &pattern : patterns) {
            if (matchesAt(pattern, bytes, at))
                return at;
        }
    }
    return -1;
}

BytePattern aligned(const QByteArray &bytes, int alignment)
{
    BytePattern pattern = BytePattern::exact(bytes);
    pattern.alignment = alignment;
    return pattern;
}

} // namespace

void ByteSearchTest::anEmptySearchFindsNothing()
{
    QVERIFY(ByteSearch().isEmpty());
    QCOMPARE(ByteSearch().indexIn("abc", 3), -1);
    QCOMPARE(indexOf({}, "abc"), -1);
    QCOMPARE(indexOf({BytePattern::exact("a")}, ""), -1);
}

void ByteSearchTest::theFirstOccurrenceIsFound()
{
    const QByteArray bytes = QByteArray(1000, '.') + "needle" + QByteArray(50, '.') + "needle";
    const QVector<BytePattern> needle = {BytePattern::exact("needle")};
    QCOMPARE(indexOf(needle, bytes), 1000);
    QCOMPARE(indexOf(needle, bytes, 1000), 1000);
    QCOMPARE(indexOf(needle, bytes, 1001), 1056);
    QCOMPARE(indexOf(needle, bytes, 1057), -1);
    QCOMPARE(indexOf(needle, bytes, bytes.size()), -1);
}

void ByteSearchTest::aPatternLongerThanTheBufferIsNotFound()
{
    QCOMPARE(indexOf({BytePattern::exact("abcd")}, "abc"), -1);
    QCOMPARE(indexOf({BytePattern::exact("abcd"), BytePattern::exact("c")}, "abc"), 2);
}

void ByteSearchTest::onlyAsciiLettersIgnoreCase()
{
    const auto found = [](const char *needle, const char *bytes) {
        return indexOf({BytePattern::asciiCaseInsensitive(needle)}, bytes) == 0;
    };
    QVERIFY(found("Key", "kEY"));
    QVERIFY(found("kEY", "Key"));
    QVERIFY(found("a1_", "A1_"));
    QVERIFY(!found("@", "`"));
    QVERIFY(!found("[", "{"));
    QVERIFY(!found("1", "\x11"));
    QVERIFY(!found("\xE4", "\xC4"));
    QVERIFY(!found("\xC4", "\xE4"));
}

void ByteSearchTest::positionsKeepTheAlignment()
{
    QCOMPARE(indexOf({aligned("ab", 2)}, "xabyab"), 4);
    QCOMPARE(indexOf({aligned("ab", 4)}, "xxabxxxxab"), 8);
    QCOMPARE(indexOf({aligned("ab", 4)}, "xabxxxabxxab"), -1);
}

void ByteSearchTest::theFirstOfSeveralPatternsIsFound()
{
    const QVector<BytePattern> patterns = {BytePattern::exact("one"), BytePattern::exact("two"),
                                           BytePattern::asciiCaseInsensitive("three")};
    QCOMPARE(indexOf(patterns, "..two..one"), 2);
    QCOMPARE(indexOf(patterns, "..two..one", 3), 7);
    QCOMPARE(indexOf(patterns, "..THREE..one"), 2);
    QCOMPARE(indexOf(patterns, "..four"), -1);
}

void ByteSearchTest::aPatternAcrossTwoPiecesIsFound()
{
    for (int before = 8180; before < 8200; ++before) {
        const QByteArray bytes =
            QByteArray(before, '.') + "needle" + QByteArray(9000, '.') + "other";
        const QVector<BytePattern> patterns = {BytePattern::exact("other"),
                                               BytePattern::exact("needle")};
        QCOMPARE(indexOf(patterns, bytes), before);
        QCOMPARE(indexOf(patterns, bytes, before + 1), before + 9006);
    }
}

void ByteSearchTest::commonBytesAreKnownAsCommon()
{
    QVERIFY(ByteFrequency::of('e') > ByteFrequency::of('q'));
    QVERIFY(ByteFrequency::of(' ') > ByteFrequency::of('z'));
    for (int byte = 0; byte < 256; ++byte)
        QVERIFY(ByteFrequency::of(static_cast<uchar>(byte)) >= 1);
    QCOMPARE(ByteFrequency::ofMasked(0xDF, 'A'), ByteFrequency::of('A') + ByteFrequency::of('a'));
}

void ByteSearchTest::randomSearchesAgreeWithThePlainWay_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; const auto *const table = SearchKernels::usable(index); ++index)
        QTest::newRow(table->name) << index;
}

void ByteSearchTest::randomSearchesAgreeWithThePlainWay()
{
    QFETCH(int, index);
    QRandomGenerator random(7);
    const auto letters = [&random](int count) {
        QByteArray result(count, '\0');
        for (char &byte : result)
            byte = static_cast<char>((random.bounded(8) == 0 ? 'A' : 'a') + random.bounded(4));
        return result;
    };
    int found = 0;
    constexpr int Rounds = 20000;
    for (int round = 0; round < Rounds; ++round) {
        QVector<BytePattern> patterns;
        for (int i = random.bounded(4); i >= 0; --i) {
            const QByteArray needle = letters(1 + random.bounded(6));
            patterns.append(random.bounded(2) == 0 ? BytePattern::exact(needle)
                                                   : BytePattern::asciiCaseInsensitive(needle));
            patterns.last().alignment = 1 << random.bounded(3);
        }
        const QByteArray bytes = letters(random.bounded(200));
        const int from = random.bounded(bytes.size() + 1);
        const qint64 expected = plainIndexOf(patterns, bytes, from);
        const ByteSearch search(patterns, *SearchKernels::usable(index));
        QCOMPARE(search.indexIn(bytes.constData(), bytes.size(), from), expected);
        found += expected >= 0 ? 1 : 0;
    }
    QVERIFY(found > Rounds / 10);
    QVERIFY(found < Rounds * 9 / 10);
}

QTEST_GUILESS_MAIN(ByteSearchTest)
#include "ByteSearchTest.moc"
