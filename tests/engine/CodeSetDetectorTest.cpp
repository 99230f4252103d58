#include "engine/CodeSetDetector.h"

#include "engine/CodeSet.h"

#include <QTest>

#include <limits>

class CodeSetDetectorTest : public QObject {
    Q_OBJECT

private slots:
    void fourBytesOrFewerAreShiftJisWithCrLf_data();
    void fourBytesOrFewerAreShiftJisWithCrLf();
    void fiveBytesOfAsciiWithoutLineFeedsAreShiftJis();
    void asciiWithLineFeedsOnlyIsUtf8();
    void theLineEndIsTheOneThatIsMoreThanTwiceAsFrequent_data();
    void theLineEndIsTheOneThatIsMoreThanTwiceAsFrequent();
    void aMarkDecides_data();
    void aMarkDecides();
    void aMarkStillReportsTheLineEnd();
    void asciiWithAnEscapeIsIso2022Jp();
    void anEscapeAmongHighBytesDecidesNothing();
    void aShortCrLfTextIsShiftJisWithoutFurtherTests();
    void theShortRuleNeedsASampleUpToTheDetectSize();
    void theShortRuleNeedsOtherLineEndsThanLf();
    void theShortRuleNeedsBytesThatShiftJisUses_data();
    void theShortRuleNeedsBytesThatShiftJisUses();
    void eucKanaInALargeFileIsEucJp();
    void eucJpHoldsNoByteOfTheseRanges_data();
    void eucJpHoldsNoByteOfTheseRanges();
    void singleShiftsAreEucJp();
    void utf8IsValidated_data();
    void utf8IsValidated();
    void invalidUtf8WithLineFeedsIsStillUtf8();
    void outputsMayBeLeftOut();
    void fourZeroBytesInARowAreBinary_data();
    void fourZeroBytesInARowAreBinary();
};

namespace {

struct Detected {
    int codeSet = -1;
    int lineEnd = -1;
    bool bom = false;
};

bool operator==(const Detected &one, const Detected &other)
{
    return one.codeSet == other.codeSet && one.lineEnd == other.lineEnd && one.bom == other.bom;
}

Detected detect(const QByteArray &sample, int detectSize = 0)
{
    Detected result;
    result.bom = true;
    result.codeSet =
        detectCodeSet(sample.constData(), sample.size(), &result.lineEnd, &result.bom, detectSize);
    return result;
}

int codeSetOf(const QByteArray &sample, int detectSize = 0)
{
    return detect(sample, detectSize).codeSet;
}

} // namespace

void CodeSetDetectorTest::fourBytesOrFewerAreShiftJisWithCrLf_data()
{
    QTest::addColumn<QByteArray>("sample");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one line feed") << QByteArray("\n");
    QTest::newRow("four ASCII bytes with line feeds") << QByteArray("a\n\n\n");
    QTest::newRow("UTF-8 mark and a letter") << QByteArray("\xEF\xBB\xBF"
                                                           "a");
    QTest::newRow("UTF-16LE mark") << QByteArray("\xFF\xFE");
    QTest::newRow("UTF-32LE mark") << QByteArray("\xFF\xFE\0\0", 4);
    QTest::newRow("EUC-JP kana") << QByteArray("\xA4\xA2\xA4\xA4");
    QTest::newRow("escape") << QByteArray("\x1B$B");
}

void CodeSetDetectorTest::fourBytesOrFewerAreShiftJisWithCrLf()
{
    QFETCH(QByteArray, sample);
    QVERIFY(detect(sample) == (Detected{CodeSet::ShiftJis, CodeSet::CrLf, false}));
}

void CodeSetDetectorTest::fiveBytesOfAsciiWithoutLineFeedsAreShiftJis()
{
    QVERIFY(detect("abcde") == (Detected{CodeSet::ShiftJis, CodeSet::CrLf, false}));
}

void CodeSetDetectorTest::asciiWithLineFeedsOnlyIsUtf8()
{
    QVERIFY(detect("abcd\n") == (Detected{CodeSet::Utf8, CodeSet::Lf, false}));
    QVERIFY(detect("abcd\r\n") == (Detected{CodeSet::ShiftJis, CodeSet::CrLf, false}));
    QVERIFY(detect("abcd\r") == (Detected{CodeSet::ShiftJis, CodeSet::Cr, false}));
}

void CodeSetDetectorTest::theLineEndIsTheOneThatIsMoreThanTwiceAsFrequent_data()
{
    QTest::addColumn<int>("carriageReturns");
    QTest::addColumn<int>("lineFeeds");
    QTest::addColumn<int>("lineEnd");
    QTest::newRow("none") << 0 << 0 << int(CodeSet::CrLf);
    QTest::newRow("one CR") << 1 << 0 << int(CodeSet::Cr);
    QTest::newRow("one LF") << 0 << 1 << int(CodeSet::Lf);
    QTest::newRow("as many") << 7 << 7 << int(CodeSet::CrLf);
    QTest::newRow("twice as many CR") << 6 << 3 << int(CodeSet::CrLf);
    QTest::newRow("one CR more") << 7 << 3 << int(CodeSet::Cr);
    QTest::newRow("twice as many LF") << 3 << 6 << int(CodeSet::CrLf);
    QTest::newRow("one LF more") << 3 << 7 << int(CodeSet::Lf);
    QTest::newRow("more than a byte counts, CR") << 1001 << 500 << int(CodeSet::Cr);
    QTest::newRow("more than a byte counts, LF") << 500 << 1001 << int(CodeSet::Lf);
    QTest::newRow("more than a byte counts, both") << 500 << 1000 << int(CodeSet::CrLf);
}

void CodeSetDetectorTest::theLineEndIsTheOneThatIsMoreThanTwiceAsFrequent()
{
    QFETCH(int, carriageReturns);
    QFETCH(int, lineFeeds);
    const QByteArray sample =
        "abcde" + QByteArray(carriageReturns, '\r') + QByteArray(lineFeeds, '\n');
    QTEST(detect(sample).lineEnd, "lineEnd");
}

void CodeSetDetectorTest::aMarkDecides_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<int>("codeSet");
    QTest::newRow("UTF-8") << QByteArray("\xEF\xBB\xBF") << int(CodeSet::Utf8);
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xFE\xFF", 4) << int(CodeSet::Utf32Be);
    QTest::newRow("UTF-32LE, not UTF-16LE")
        << QByteArray("\xFF\xFE\0\0", 4) << int(CodeSet::Utf32Le);
    QTest::newRow("UTF-16BE") << QByteArray("\xFE\xFF") << int(CodeSet::Utf16Be);
    QTest::newRow("UTF-16LE") << QByteArray("\xFF\xFE") << int(CodeSet::Utf16Le);
}

void CodeSetDetectorTest::aMarkDecides()
{
    QFETCH(QByteArray, mark);
    const Detected detected = detect(mark + "\x82\xA0\x1B\xFF xyz", 2048);
    QTEST(detected.codeSet, "codeSet");
    QVERIFY(detected.bom);
    QVERIFY(!detect("x" + mark + "abcd").bom);
    QVERIFY(!detect(mark.left(1) + "abcd").bom);
}

void CodeSetDetectorTest::aMarkStillReportsTheLineEnd()
{
    QVERIFY(detect("\xEF\xBB\xBFx\r\ry") == (Detected{CodeSet::Utf8, CodeSet::Cr, true}));
    QVERIFY(detect("\xEF\xBB\xBFx\n\ny") == (Detected{CodeSet::Utf8, CodeSet::Lf, true}));
}

void CodeSetDetectorTest::asciiWithAnEscapeIsIso2022Jp()
{
    QCOMPARE(codeSetOf("abcd\x1B"), int(CodeSet::Iso2022Jp));
    QCOMPARE(codeSetOf("abcd\n\x1B$B$\"\x1B(B\n"), int(CodeSet::Iso2022Jp));
}

void CodeSetDetectorTest::anEscapeAmongHighBytesDecidesNothing()
{
    QCOMPARE(codeSetOf("\x1B\xA4\xA2\xA4\xA4"), int(CodeSet::EucJp));
}

void CodeSetDetectorTest::aShortCrLfTextIsShiftJisWithoutFurtherTests()
{
    // EUC-JP by its bytes and valid UTF-8 too, and yet.
    QVERIFY(detect("\xC4\xA2\xC4\xA4\r\n", 2048)
            == (Detected{CodeSet::ShiftJis, CodeSet::CrLf, false}));
    QCOMPARE(codeSetOf("\xC4\xA2\xC4\xA4\r\n"), int(CodeSet::EucJp));
}

void CodeSetDetectorTest::theShortRuleNeedsASampleUpToTheDetectSize()
{
    const QByteArray kana("\xA4\xA2\xA4\xA4");
    QCOMPARE(codeSetOf(kana + QByteArray(2044, 'a'), 2048), int(CodeSet::ShiftJis));
    QCOMPARE(codeSetOf(kana + QByteArray(2045, 'a'), 2048), int(CodeSet::EucJp));
    QCOMPARE(codeSetOf(kana + "a", -1), int(CodeSet::EucJp));
    QCOMPARE(codeSetOf(kana + "a", std::numeric_limits<int>::max()), int(CodeSet::ShiftJis));
}

void CodeSetDetectorTest::theShortRuleNeedsOtherLineEndsThanLf()
{
    const QByteArray kana("\xA4\xA2\xA4\xA4");
    QCOMPARE(codeSetOf(kana + "\r", 2048), int(CodeSet::ShiftJis));
    QCOMPARE(codeSetOf(kana + "\n", 2048), int(CodeSet::EucJp));
}

void CodeSetDetectorTest::theShortRuleNeedsBytesThatShiftJisUses_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<int>("codeSet");
    // The sample is valid UTF-8 except for FE and FF, and 7F keeps it from being EUC-JP.
    QTest::newRow("81") << 0x81 << int(CodeSet::ShiftJis);
    QTest::newRow("80") << 0x80 << int(CodeSet::Utf8);
    QTest::newRow("FC") << 0xFC << int(CodeSet::ShiftJis);
    QTest::newRow("FD") << 0xFD << int(CodeSet::Utf8);
    QTest::newRow("FE") << 0xFE << int(CodeSet::ShiftJis);
    QTest::newRow("FF") << 0xFF << int(CodeSet::ShiftJis);
}

void CodeSetDetectorTest::theShortRuleNeedsBytesThatShiftJisUses()
{
    QFETCH(int, byte);
    const QByteArray lead = byte < 0xC0 ? QByteArray("\xC3") : QByteArray();
    QTEST(codeSetOf("abc\x7F" + lead + char(byte), 2048), "codeSet");
    // Without 7F, FD to FF show that the rule was left: nothing speaks against EUC-JP.
    if (byte >= 0xC0)
        QCOMPARE(codeSetOf(QByteArray("abcd") + char(byte), 2048),
                 byte >= 0xFD ? int(CodeSet::EucJp) : int(CodeSet::ShiftJis));
}

void CodeSetDetectorTest::eucKanaInALargeFileIsEucJp()
{
    const QByteArray sample = QByteArray(2048, 'x') + "\xA4\xA2\xA4\xA4\r\n";
    QVERIFY(detect(sample, 2048) == (Detected{CodeSet::EucJp, CodeSet::CrLf, false}));
}

void CodeSetDetectorTest::eucJpHoldsNoByteOfTheseRanges_data()
{
    QTest::addColumn<int>("byte");
    QTest::addColumn<bool>("eucJp");
    QTest::newRow("7E") << 0x7E << true;
    QTest::newRow("7F") << 0x7F << false;
    QTest::newRow("80") << 0x80 << false;
    QTest::newRow("8D") << 0x8D << false;
    QTest::newRow("8E") << 0x8E << true;
    QTest::newRow("8F") << 0x8F << true;
    QTest::newRow("90") << 0x90 << false;
    QTest::newRow("A0") << 0xA0 << false;
    QTest::newRow("A1") << 0xA1 << true;
    QTest::newRow("FF") << 0xFF << true;
}

void CodeSetDetectorTest::eucJpHoldsNoByteOfTheseRanges()
{
    QFETCH(int, byte);
    QFETCH(bool, eucJp);
    const int codeSet = codeSetOf(QByteArray("\xA4\xA2xyz") + char(byte));
    QCOMPARE(codeSet, eucJp ? int(CodeSet::EucJp) : int(CodeSet::ShiftJis));
}

void CodeSetDetectorTest::singleShiftsAreEucJp()
{
    QCOMPARE(codeSetOf("\x8E\xB1\x8F\xB0\xA1"), int(CodeSet::EucJp));
}

void CodeSetDetectorTest::utf8IsValidated_data()
{
    QTest::addColumn<QByteArray>("sequence");
    QTest::addColumn<bool>("valid");
    QTest::newRow("one byte") << QByteArray("\x7F") << true;
    QTest::newRow("80 leads nothing") << QByteArray("\x80") << false;
    QTest::newRow("BF leads nothing") << QByteArray("\xBF") << false;
    QTest::newRow("C0 leads one") << QByteArray("\xC0\x80.") << true;
    QTest::newRow("C1 leads one") << QByteArray("\xC1\xBF.") << true;
    QTest::newRow("DF leads one") << QByteArray("\xDF\x80.") << true;
    QTest::newRow("DF leads no two") << QByteArray("\xDF\x80\x80.") << false;
    QTest::newRow("DF leads not none") << QByteArray("\xDF.") << false;
    QTest::newRow("E0 leads two") << QByteArray("\xE0\x80\x80.") << true;
    QTest::newRow("E0 leads more than one") << QByteArray("\xE0\x80.") << false;
    QTest::newRow("EF leads two") << QByteArray("\xEF\xBF\xBF.") << true;
    QTest::newRow("EF leads no three") << QByteArray("\xEF\xBF\xBF\xBF.") << false;
    QTest::newRow("F0 leads three") << QByteArray("\xF0\x80\x80\x80.") << true;
    QTest::newRow("F7 leads three") << QByteArray("\xF7\x80\x80\x80.") << true;
    QTest::newRow("F7 leads no four") << QByteArray("\xF7\x80\x80\x80\x80.") << false;
    QTest::newRow("F8 leads four") << QByteArray("\xF8\x80\x80\x80\x80.") << true;
    QTest::newRow("FB leads four") << QByteArray("\xFB\x80\x80\x80\x80.") << true;
    QTest::newRow("FB leads no five") << QByteArray("\xFB\x80\x80\x80\x80\x80.") << false;
    QTest::newRow("FC leads five") << QByteArray("\xFC\x80\x80\x80\x80\x80.") << true;
    QTest::newRow("FD leads five") << QByteArray("\xFD\x80\x80\x80\x80\x80.") << true;
    QTest::newRow("FD leads no six") << QByteArray("\xFD\x80\x80\x80\x80\x80\x80.") << false;
    QTest::newRow("FE is invalid") << QByteArray("\xFE\x80.") << false;
    QTest::newRow("FF is invalid") << QByteArray("\xFF\x80.") << false;
    QTest::newRow("a lead is no continuation") << QByteArray("\xE3\xC3\x81.") << false;
    QTest::newRow("cut after the lead") << QByteArray("\xE3") << true;
    QTest::newRow("cut before the last") << QByteArray("\xF0\x9F\x98") << true;
    QTest::newRow("cut, but invalid before that") << QByteArray("\xF0\x9F.") << false;
}

void CodeSetDetectorTest::utf8IsValidated()
{
    QFETCH(QByteArray, sequence);
    QFETCH(bool, valid);
    // The first character keeps the sample from being EUC-JP; the rest moves the
    // sequence over the borders of what is examined at once.
    for (int gap = 0; gap < 20; ++gap) {
        const QByteArray sample = "\xC2\x80xyz" + QByteArray(gap, 'x') + sequence;
        QCOMPARE(codeSetOf(sample), valid ? int(CodeSet::Utf8) : int(CodeSet::ShiftJis));
    }
}

void CodeSetDetectorTest::invalidUtf8WithLineFeedsIsStillUtf8()
{
    QVERIFY(detect("\x82\xA0\x82\xA2\n", 2048) == (Detected{CodeSet::Utf8, CodeSet::Lf, false}));
    QVERIFY(detect("\x82\xA0\x82\xA2\r\n", 0)
            == (Detected{CodeSet::ShiftJis, CodeSet::CrLf, false}));
}

void CodeSetDetectorTest::outputsMayBeLeftOut()
{
    QCOMPARE(detectCodeSet("abcd\n", 5, nullptr, nullptr, 2048), int(CodeSet::Utf8));
    QCOMPARE(detectCodeSet("abcd", 4, nullptr, nullptr, 2048), int(CodeSet::ShiftJis));
}

void CodeSetDetectorTest::fourZeroBytesInARowAreBinary_data()
{
    QTest::addColumn<QByteArray>("sample");
    QTest::addColumn<bool>("binary");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("three zeros") << QByteArray(3, '\0') << false;
    QTest::newRow("four zeros") << QByteArray(4, '\0') << true;
    QTest::newRow("at the end") << "abc" + QByteArray(4, '\0') << true;
    QTest::newRow("in the middle") << "abc" + QByteArray(4, '\0') + "def" << true;
    QTest::newRow("three and three")
        << "a" + QByteArray(3, '\0') + "b" + QByteArray(3, '\0') << false;
    QTest::newRow("three and four")
        << "a" + QByteArray(3, '\0') + "b" + QByteArray(4, '\0') << true;
    QTest::newRow("UTF-32LE text") << QByteArray("a\0\0\0b\0\0\0", 8) << false;
    QTest::newRow("UTF-32LE text with a zero unit") << QByteArray("a\0\0\0\0\0\0\0", 8) << true;
}

void CodeSetDetectorTest::fourZeroBytesInARowAreBinary()
{
    QFETCH(QByteArray, sample);
    QTEST(isBinarySample(sample.constData(), sample.size()), "binary");
}

QTEST_GUILESS_MAIN(CodeSetDetectorTest)
#include "CodeSetDetectorTest.moc"
