#include "engine/SearchKernels.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QTest>
#include <QVector>

#include <algorithm>

/// Every instruction set's loops against the plain way, in buffers that end
/// where the loops must not read on.
class SearchKernelsTest : public QObject {
    Q_OBJECT

private slots:
    void theBestTableIsOneOfTheUsable();
    void allTablesFindTheSameBytePairs_data();
    void allTablesFindTheSameBytePairs();
    void allTablesFindTheSameUnitPairs_data();
    void allTablesFindTheSameUnitPairs();
    void allTablesSurveyAlike_data();
    void allTablesSurveyAlike();
    void allTablesSummariseAndCountAlike_data();
    void allTablesSummariseAndCountAlike();
    void aHighByteAnywhereIsSeen_data();
    void aHighByteAnywhereIsSeen();
    void aLoneCarriageReturnAnywhereIsSeen_data();
    void aLoneCarriageReturnAnywhereIsSeen();
};

namespace {

using SearchKernels::BytePair;
using SearchKernels::Table;
using SearchKernels::UnitPair;

constexpr int kRounds = 20000;
// More than three of the widest steps.
constexpr int kMaxSize = 220;

void addTableRows()
{
    QTest::addColumn<int>("index");
    for (int index = 0; const Table *const table = SearchKernels::usable(index); ++index)
        QTest::newRow(table->name) << index;
}

const uchar *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const uchar *>(bytes.constData());
}

template <class Unit, class Agrees>
qint64 firstPosition(const Unit *units, qint64 from, qint64 end, const Agrees &agrees)
{
    for (qint64 at = from; at < end; ++at) {
        if (agrees(units + at))
            return at;
    }
    return end;
}

} // namespace

void SearchKernelsTest::theBestTableIsOneOfTheUsable()
{
    int index = 0;
    while (SearchKernels::usable(index) != nullptr
           && SearchKernels::usable(index) != &SearchKernels::best())
        ++index;
    QVERIFY(SearchKernels::usable(index) != nullptr);
    QCOMPARE(SearchKernels::usable(0), &SearchKernels::portable());
}

void SearchKernelsTest::allTablesFindTheSameBytePairs_data()
{
    addTableRows();
}

void SearchKernelsTest::allTablesFindTheSameBytePairs()
{
    QFETCH(int, index);
    const Table &table = *SearchKernels::usable(index);
    QRandomGenerator random(1);
    const auto place = [&random] {
        constexpr std::uint8_t Masks[] = {0xFF, 0xFF, 0xDF, 0x7F, 0x0F};
        BytePair::Place result;
        result.offset = random.bounded(20);
        result.mask = Masks[random.bounded(5)];
        result.value = static_cast<std::uint8_t>(random.bounded(256) & result.mask);
        return result;
    };
    for (int round = 0; round < kRounds; ++round) {
        const BytePair pair = {place(), place()};
        const qint64 reach = std::max(pair.first.offset, pair.second.offset);
        const int few = random.bounded(2) == 0 ? 256 : 6;
        QByteArray bytes(random.bounded(kMaxSize), '\0');
        for (char &byte : bytes) {
            const bool seed = random.bounded(4) == 0;
            byte = static_cast<char>(seed ? pair.first.value : random.bounded(few));
        }
        const qint64 end = std::max<qint64>(0, bytes.size() - reach);
        const qint64 from = random.bounded(static_cast<int>(end) + 1);
        const qint64 expected = firstPosition(bytesOf(bytes), from, end, [&](const uchar *at) {
            return (at[pair.first.offset] & pair.first.mask) == pair.first.value
                && (at[pair.second.offset] & pair.second.mask) == pair.second.value;
        });
        // A copy of exactly the size, so that a reading past the end is seen.
        const QVector<uchar> exact(bytes.cbegin(), bytes.cend());
        QCOMPARE(table.findBytePair(exact.constData(), from, end, pair), expected);
    }
}

void SearchKernelsTest::allTablesFindTheSameUnitPairs_data()
{
    addTableRows();
}

void SearchKernelsTest::allTablesFindTheSameUnitPairs()
{
    QFETCH(int, index);
    const Table &table = *SearchKernels::usable(index);
    QRandomGenerator random(2);
    const auto place = [&random] {
        constexpr int Counts[] = {1, 2, 4};
        UnitPair::Place result;
        result.offset = random.bounded(20);
        result.variantCount = Counts[random.bounded(3)];
        for (int i = 0; i < result.variantCount; ++i)
            result.variants[i] = static_cast<char16_t>(0x3040 + random.bounded(8));
        return result;
    };
    const auto agrees = [](const UnitPair::Place &wanted, char16_t unit) {
        return std::count(wanted.variants, wanted.variants + wanted.variantCount, unit) > 0;
    };
    for (int round = 0; round < kRounds; ++round) {
        const UnitPair pair = {place(), place()};
        const qint64 reach = std::max(pair.first.offset, pair.second.offset);
        QVector<char16_t> text(random.bounded(kMaxSize));
        for (char16_t &unit : text)
            unit = static_cast<char16_t>(0x3040 + random.bounded(60));
        const qint64 end = std::max<qint64>(0, text.size() - reach);
        const qint64 from = random.bounded(static_cast<int>(end) + 1);
        const qint64 expected = firstPosition(text.constData(), from, end, [&](const char16_t *at) {
            return agrees(pair.first, at[pair.first.offset])
                && agrees(pair.second, at[pair.second.offset]);
        });
        QCOMPARE(table.findUnitPair(text.constData(), from, end, pair), expected);
    }
}

void SearchKernelsTest::allTablesSurveyAlike_data()
{
    addTableRows();
}

void SearchKernelsTest::allTablesSurveyAlike()
{
    QFETCH(int, index);
    const Table &table = *SearchKernels::usable(index);
    QRandomGenerator random(3);
    for (int round = 0; round < kRounds; ++round) {
        QVector<uchar> bytes(random.bounded(kMaxSize), 'x');
        for (int i = random.bounded(4); i > 0 && !bytes.isEmpty(); --i) {
            constexpr uchar Interesting[] = {'\r', '\n', 0x80, 0x8D, 0x0A};
            bytes[random.bounded(bytes.size())] = Interesting[random.bounded(5)];
        }
        bool high = false;
        bool lone = false;
        for (int i = 0; i < bytes.size(); ++i) {
            high = high || bytes.at(i) >= 0x80;
            lone = lone || (bytes.at(i) == '\r' && i + 1 < bytes.size() && bytes.at(i + 1) != '\n');
        }
        const SearchKernels::ByteSurvey survey = table.survey(bytes.constData(), bytes.size());
        QCOMPARE(survey.highByte, high);
        QCOMPARE(survey.loneCarriageReturn, lone);
    }
}

void SearchKernelsTest::allTablesSummariseAndCountAlike_data()
{
    addTableRows();
}

void SearchKernelsTest::allTablesSummariseAndCountAlike()
{
    QFETCH(int, index);
    const Table *const table = SearchKernels::usable(index);
    QRandomGenerator random(7);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(random.bounded(800), 'a');
        for (int i = random.bounded(20) * bytes.size() / 10; i > 0; --i)
            bytes[random.bounded(bytes.size())] = "\n\r\x1B\x00\x80z"[random.bounded(6)];
        const SearchKernels::ByteSummary summary = table->summarise(bytesOf(bytes), bytes.size());
        const auto isHigh = [](char byte) {
            return (byte & 0x80) != 0;
        };
        QCOMPARE(summary.high, std::any_of(bytes.cbegin(), bytes.cend(), isHigh));
        QCOMPARE(summary.zero, bytes.contains('\0'));
        QCOMPARE(summary.escape, bytes.contains('\x1B'));
        QCOMPARE(summary.lineFeeds, bytes.count('\n'));
        QCOMPARE(summary.carriageReturns, bytes.count('\r'));
        QCOMPARE(table->count(bytesOf(bytes), bytes.size(), 'z'), std::int64_t(bytes.count('z')));
    }
}

void SearchKernelsTest::aHighByteAnywhereIsSeen_data()
{
    addTableRows();
}

void SearchKernelsTest::aHighByteAnywhereIsSeen()
{
    QFETCH(int, index);
    const Table &table = *SearchKernels::usable(index);
    for (int size = 1; size < 140; ++size) {
        const QByteArray ascii(size, '\x7F');
        QVERIFY(!table.survey(bytesOf(ascii), size).highByte);
        for (int at = 0; at < size; ++at) {
            QByteArray bytes = ascii;
            bytes[at] = '\x80';
            QVERIFY(table.survey(bytesOf(bytes), size).highByte);
        }
    }
}

void SearchKernelsTest::aLoneCarriageReturnAnywhereIsSeen_data()
{
    addTableRows();
}

void SearchKernelsTest::aLoneCarriageReturnAnywhereIsSeen()
{
    QFETCH(int, index);
    const Table &table = *SearchKernels::usable(index);
    for (int size = 2; size < 140; ++size) {
        for (int at = 0; at < size; ++at) {
            QByteArray bytes(size, 'x');
            bytes[at] = '\r';
            const bool last = at == size - 1;
            QCOMPARE(table.survey(bytesOf(bytes), size).loneCarriageReturn, !last);
            if (last)
                continue;
            bytes[at + 1] = '\n';
            QVERIFY(!table.survey(bytesOf(bytes), size).loneCarriageReturn);
        }
    }
}

QTEST_GUILESS_MAIN(SearchKernelsTest)
#include "SearchKernelsTest.moc"
