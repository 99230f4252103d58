#include "engine/CodeSetDetector.h"

#include "engine/CodeSet.h"

#include <QTest>
#include <QTextCodec>

class WideTextDetectionTest : public QObject {
    Q_OBJECT

private slots:
    void wideTextNeedsAZeroByte();
    void japaneseUtf16WithoutAMarkIsRecognised();
    void utf16StopsAtAZeroUnit();
    void utf16StopsAtAnUnassignedUnit();
    void utf16NeedsMoreThanOnePointAUnit();
    void utf16TakesAPointForTwoPrintableBytes();
    void utf16TakesAPointForConsecutiveZeroLowBytes();
    void aUtf16PenaltyAboveTheScoreIsAMatch();
    void anOddLastByteDoesNotCountInUtf16();
    void utf32WithoutAMarkIsRecognised();
    void utf32StopsAtAnUnassignedUnit();
    void utf32NeedsMoreThanOnePointAUnit();
    void wideTextThatIsNoneIsJudgedAsBytes();
    void anEscapeComesBeforeTheWideChecks();
};

namespace {

int codeSetOf(const QByteArray &sample, int detectSize = 0)
{
    return detectCodeSet(sample.constData(), sample.size(), nullptr, nullptr, detectSize);
}

constexpr int kNotWide = 0;

// Which wide code set; kNotWide when the sample was judged by its bytes.
int wideCodeSetOf(const QByteArray &sample)
{
    const int codeSet = codeSetOf(sample);
    return codeSet >= CodeSet::Utf16Be ? codeSet : kNotWide;
}

// Worth one point. With its bytes exchanged it is unassigned, which ends the
// check of the other byte order.
constexpr ushort kOneWay = 0x4008;

QByteArray utf16(std::initializer_list<ushort> units, bool bigEndian = false)
{
    QByteArray bytes;
    for (const ushort unit : units) {
        bytes += char(bigEndian ? unit >> 8 : unit & 0xFF);
        bytes += char(bigEndian ? unit & 0xFF : unit >> 8);
    }
    return bytes;
}

QByteArray utf32(std::initializer_list<quint32> units, bool bigEndian = false)
{
    QByteArray bytes;
    for (const quint32 unit : units) {
        for (int i = 0; i < 4; ++i)
            bytes += char(unit >> (bigEndian ? 24 - 8 * i : 8 * i));
    }
    return bytes;
}

} // namespace

void WideTextDetectionTest::wideTextNeedsAZeroByte()
{
    // Without an ASCII character there is no zero byte: these are bytes like any others.
    const QByteArray bytes = utf16({0x3042, 0x4E9C, 0x3044, 0x4E41});
    QVERIFY(!bytes.contains('\0'));
    QCOMPARE(codeSetOf(bytes), int(CodeSet::ShiftJis));
}

void WideTextDetectionTest::japaneseUtf16WithoutAMarkIsRecognised()
{
    const QString text = QStringLiteral("検索結果の行。\r\nフォルダ abc\r\n");
    QTextCodec::ConverterState little(QTextCodec::IgnoreHeader);
    QTextCodec::ConverterState big(QTextCodec::IgnoreHeader);
    const QByteArray littleEndian =
        CodeSet::codec(CodeSet::Utf16Le)->fromUnicode(text.constData(), text.size(), &little);
    const QByteArray bigEndian =
        CodeSet::codec(CodeSet::Utf16Be)->fromUnicode(text.constData(), text.size(), &big);
    QCOMPARE(codeSetOf(littleEndian, 2048), int(CodeSet::Utf16Le));
    QCOMPARE(codeSetOf(bigEndian, 2048), int(CodeSet::Utf16Be));
}

void WideTextDetectionTest::utf16StopsAtAZeroUnit()
{
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf16Be : CodeSet::Utf16Le;
        QCOMPARE(wideCodeSetOf(utf16({'a', 'b', 'c', 'd'}, bigEndian)), expected);
        QCOMPARE(wideCodeSetOf(utf16({'a', 'b', 0, 'd'}, bigEndian)), kNotWide);
    }
}

void WideTextDetectionTest::utf16StopsAtAnUnassignedUnit()
{
    // In the other byte order the letters are worth less than one point each.
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf16Be : CodeSet::Utf16Le;
        QCOMPARE(wideCodeSetOf(utf16({'a', 'b', 'c', 0x083F}, bigEndian)), expected);
        QCOMPARE(wideCodeSetOf(utf16({'a', 'b', 'c', 0x0840}, bigEndian)), kNotWide);
    }
}

void WideTextDetectionTest::utf16NeedsMoreThanOnePointAUnit()
{
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf16Be : CodeSet::Utf16Le;
        // Three points for three units; the ideographic space has the zero byte.
        QCOMPARE(wideCodeSetOf(utf16({0x3000, kOneWay, 0x0080}, bigEndian)), kNotWide);
        // Four for ASCII: six for three.
        QCOMPARE(wideCodeSetOf(utf16({0x3000, kOneWay, 0x007F}, bigEndian)), expected);
        // Four and one, less three for high surrogates; four and three, less one.
        QCOMPARE(wideCodeSetOf(utf16({'a', 0xD800, 0xDBFF, 0xD83D, kOneWay}, bigEndian)), kNotWide);
        QCOMPARE(wideCodeSetOf(utf16({'a', 0xD7FF, 0xDC00, 0xD83D, kOneWay}, bigEndian)), expected);
    }
}

void WideTextDetectionTest::utf16TakesAPointForTwoPrintableBytes()
{
    for (const bool bigEndian : {false, true}) {
        // Two points less one: the sum stays at one for each unit.
        QCOMPARE(wideCodeSetOf(utf16({0x3000, kOneWay, 0x2020, 0x7F7F, 0x6162}, bigEndian)),
                 kNotWide);
    }
}

void WideTextDetectionTest::utf16TakesAPointForConsecutiveZeroLowBytes()
{
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf16Be : CodeSet::Utf16Le;
        // Nine points less one for each of three pairs of neighbours are no more than six.
        QCOMPARE(wideCodeSetOf(utf16({'a', 0x3000, 0x3000, 0x3000, 0x3000, kOneWay}, bigEndian)),
                 kNotWide);
        QCOMPARE(wideCodeSetOf(utf16({'a', 0x3000, kOneWay, 0x3000, 0x3000, 0x3000}, bigEndian)),
                 expected);
    }
}

void WideTextDetectionTest::aUtf16PenaltyAboveTheScoreIsAMatch()
{
    // High surrogates alone: no point at all, one taken for each.
    QCOMPARE(codeSetOf(utf16({0xD800, 0xD801, 0xD802})), int(CodeSet::Utf16Le));
    QCOMPARE(codeSetOf(utf16({0xD800, 0xD801, 0xD802}, true)), int(CodeSet::Utf16Be));
    // One point for three taken.
    QCOMPARE(codeSetOf(utf16({0xD800, 0xD801, 0xD802, 0x3081})), int(CodeSet::Utf16Le));
    // As many points as were taken: zero is no match.
    QCOMPARE(codeSetOf(utf16({0xD800, 0xD801, 0x3081, 0x3082})), int(CodeSet::ShiftJis));
}

void WideTextDetectionTest::anOddLastByteDoesNotCountInUtf16()
{
    QCOMPARE(codeSetOf(utf16({'a', 'b'}) + '\0'), int(CodeSet::Utf16Le));
    QCOMPARE(codeSetOf(utf16({'a', 'b', 'c'}) + '\x08'), int(CodeSet::Utf16Le));
}

void WideTextDetectionTest::utf32WithoutAMarkIsRecognised()
{
    QCOMPARE(codeSetOf(utf32({'a', 0x3042, 0x1F000})), int(CodeSet::Utf32Le));
    QCOMPARE(codeSetOf(utf32({'a', 0x3042, 0x1F000}, true)), int(CodeSet::Utf32Be));
    // A zero unit does no harm here, nor do up to three bytes behind the last unit.
    QCOMPARE(codeSetOf(utf32({'a', 0, 'b'}) + "\xFF\xFF\xFF"), int(CodeSet::Utf32Le));
    QCOMPARE(codeSetOf(utf32({'a', 0, 'b'}, true) + "\xFF\xFF\xFF"), int(CodeSet::Utf32Be));
}

void WideTextDetectionTest::utf32StopsAtAnUnassignedUnit()
{
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf32Be : CodeSet::Utf32Le;
        QCOMPARE(codeSetOf(utf32({'a', 'b', 0x10FFFF}, bigEndian)), expected);
        for (const quint32 unassigned : {0x0840U, 0x110000U, 0x80000000U, 0xFFFFFFFFU})
            QVERIFY(codeSetOf(utf32({'a', 'b', unassigned}, bigEndian)) != expected);
    }
}

void WideTextDetectionTest::utf32NeedsMoreThanOnePointAUnit()
{
    for (const bool bigEndian : {false, true}) {
        const int expected = bigEndian ? CodeSet::Utf32Be : CodeSet::Utf32Le;
        QVERIFY(codeSetOf(utf32({0x3042, 0x3044}, bigEndian)) != expected);
        QCOMPARE(codeSetOf(utf32({0x3042, 0x3044, 0x7F}, bigEndian)), expected);
        QVERIFY(codeSetOf(utf32({0x3042, 0x3044, 0x80}, bigEndian)) != expected);
    }
}

void WideTextDetectionTest::wideTextThatIsNoneIsJudgedAsBytes()
{
    // A zero unit, and first or second four bytes that are no code point.
    QCOMPARE(codeSetOf(QByteArray("abcd\0\0\n", 7)), int(CodeSet::Utf8));
    QCOMPARE(codeSetOf(QByteArray("abcd\0\0\r\n", 8)), int(CodeSet::ShiftJis));
    QCOMPARE(codeSetOf(QByteArray("ab\0\0\xA4\xA2\r\n", 8)), int(CodeSet::EucJp));
}

void WideTextDetectionTest::anEscapeComesBeforeTheWideChecks()
{
    QCOMPARE(codeSetOf(utf16({'a', 'b', 0x1B, 'c'})), int(CodeSet::Iso2022Jp));
}

QTEST_GUILESS_MAIN(WideTextDetectionTest)
#include "WideTextDetectionTest.moc"
