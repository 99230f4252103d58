#include "engine/KeywordPrefilter.h"

#include "engine/CodeSet.h"
#include "tests/support/FileText.h"

#include <QRegExp>
#include <QTest>
#include <QTextCodec>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

class KeywordPrefilterTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void aFileWithTheKeywordPasses_data();
    void aFileWithTheKeywordPasses();
    void aFileWithoutTheKeywordIsRefused_data();
    void aFileWithoutTheKeywordIsRefused();
    void theUsualCaseIsFoundWhenCaseIsIgnored_data();
    void theUsualCaseIsFoundWhenCaseIsIgnored();
    void theOtherCaseIsRefusedWhenCaseCounts();
    void kMatchesTheKelvinSignAndSTheLongS_data();
    void kMatchesTheKelvinSignAndSTheLongS();
    void aCharacterWithSeveralCodesIsFoundByEach_data();
    void aCharacterWithSeveralCodesIsFoundByEach();
    void aCharacterThatTheCodeSetLacksRefusesItsFiles();
    void aCarriageReturnInsideTheKeywordPasses_data();
    void aCarriageReturnInsideTheKeywordPasses();
    void carriageReturnsBeforeLineFeedsDoNotPass_data();
    void carriageReturnsBeforeLineFeedsDoNotPass();
    void aCarriageReturnBeforeACharacterLikeALineFeedIsLone();
    void aByteOrderMarkOverridesTheCodeSet_data();
    void aByteOrderMarkOverridesTheCodeSet();
    void aMarkBehindBlocksOfAsciiIsDropped();
    void aMarkInsideUtf32IsNotDropped();
    void aUnitAboveTheLastCodePointCanBeTheLastCharacter();
    void onlyUnitsAboveTheLastCodePointPass_data();
    void onlyUnitsAboveTheLastCodePointPass();
    void aPairInUtf32IsFoundInEveryForm();
    void aLoneSurrogateIsAQuestionMark();
    void halfACharacterIsAReplacementCharacter();
    void escapeSequencesMayStandBetweenAllCharacters_data();
    void escapeSequencesMayStandBetweenAllCharacters();
    void oneByteAndTwoByteTextMayFollowEachOther();
    void brokenIso2022JpPasses_data();
    void brokenIso2022JpPasses();
    void aPatternsAlternativesAreAllLookedFor();
    void anUnknownLiteralPassesEverything();
    void anInvalidPatternRefusesEverything();
    void theDefaultCodeSetPassesEverything();
    void anEmptyFileIsRefused();
    void manyThreadsMayAskAtOnce();
};

namespace {

const int kCodeSets[] = {CodeSet::ShiftJis, CodeSet::EucJp,   CodeSet::Iso2022Jp, CodeSet::Utf8,
                         CodeSet::Utf16Be,  CodeSet::Utf16Le, CodeSet::Utf32Be,   CodeSet::Utf32Le};

QByteArray encode(const QString &text, int codeSet)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
}

bool passes(const QString &keyword, const QByteArray &bytes, int codeSet,
            Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    const KeywordPrefilter prefilter(keyword, false, sensitivity);
    return prefilter.mayMatch(bytes.constData(), bytes.size(), codeSet);
}

bool matches(const QString &keyword, const QByteArray &bytes, int codeSet,
             Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    const QStringList lines = FileText::lines(FileText::read(bytes, CodeSet::codec(codeSet)));
    return std::any_of(lines.cbegin(), lines.cend(), [&](const QString &line) {
        return line.indexOf(keyword, 0, sensitivity) >= 0;
    });
}

bool canEncode(const QString &text, int codeSet)
{
    return FileText::read(encode(text, codeSet), CodeSet::codec(codeSet)) == text;
}

/// One row for every code set and keyword that it can encode.
void addKeywordRows(const QStringList &keywords)
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("codeSet");
    for (const int codeSet : kCodeSets) {
        for (const QString &keyword : keywords) {
            if (!canEncode(keyword, codeSet))
                continue;
            const QString name = CodeSet::name(codeSet) + QLatin1Char(' ') + keyword;
            QTest::newRow(qPrintable(name)) << keyword << codeSet;
        }
    }
}

const QStringList &someKeywords()
{
    static const QStringList keywords = {
        QStringLiteral("keyword"),  QStringLiteral("z"),        QStringLiteral("かな"),
        QStringLiteral("カタカナ"), QStringLiteral("漢字"),     QStringLiteral("表"),
        QStringLiteral("ﾊﾝｶｸ"),     QStringLiteral("Ｆｕｌｌ"), QStringLiteral("mixed混在テキスト"),
        QStringLiteral("①≒∪"),      QStringLiteral("ωΩ"),       QStringLiteral("Яя")};
    return keywords;
}

} // namespace

void KeywordPrefilterTest::initTestCase()
{
    qputenv("UNICODEMAP_JP", "cp932"); // as the programs do before they use a codec
    for (const int codeSet : kCodeSets)
        QVERIFY2(CodeSet::codec(codeSet) != nullptr, qPrintable(CodeSet::name(codeSet)));
}

void KeywordPrefilterTest::aFileWithTheKeywordPasses_data()
{
    addKeywordRows(someKeywords());
}

void KeywordPrefilterTest::aFileWithTheKeywordPasses()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    const QString text =
        QStringLiteral("first line\nあいう ") + keyword + QStringLiteral("!\nlast");
    QVERIFY(passes(keyword, encode(text, codeSet), codeSet));
}

void KeywordPrefilterTest::aFileWithoutTheKeywordIsRefused_data()
{
    addKeywordRows(someKeywords());
}

void KeywordPrefilterTest::aFileWithoutTheKeywordIsRefused()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    const QByteArray bytes =
        encode(QStringLiteral("first line\r\nひらがな、日本語と文字。ABC 亜唖\r\nlast"), codeSet);
    QVERIFY(!passes(keyword, bytes, codeSet));
    const Qt::CaseSensitivity ignoreCase = Qt::CaseInsensitive;
    QCOMPARE(passes(keyword, bytes, codeSet, ignoreCase), false);
}

void KeywordPrefilterTest::theUsualCaseIsFoundWhenCaseIsIgnored_data()
{
    addKeywordRows({QStringLiteral("KeyWord"), QStringLiteral("Ｆｕｌｌ"), QStringLiteral("Ωμέγα"),
                    QStringLiteral("Привет"), QStringLiteral("Straße"),
                    QStringLiteral("\U00010400")});
}

void KeywordPrefilterTest::theUsualCaseIsFoundWhenCaseIsIgnored()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    for (const QString &text : {keyword.toLower(), keyword, keyword.toCaseFolded()}) {
        const QByteArray bytes = encode(QStringLiteral("xx\n") + text, codeSet);
        if (!matches(keyword, bytes, codeSet, Qt::CaseInsensitive))
            continue;
        QVERIFY(passes(keyword, bytes, codeSet, Qt::CaseInsensitive));
    }
}

void KeywordPrefilterTest::theOtherCaseIsRefusedWhenCaseCounts()
{
    for (const int codeSet : kCodeSets)
        QVERIFY(!passes(QStringLiteral("keyword"), encode(QStringLiteral("KeyWord"), codeSet),
                        codeSet));
}

void KeywordPrefilterTest::kMatchesTheKelvinSignAndSTheLongS_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("text");
    QTest::newRow("k, Kelvin") << QStringLiteral("desk") << QStringLiteral("DES\u212A");
    QTest::newRow("Kelvin, k") << QStringLiteral("des\u212A") << QStringLiteral("desk");
    QTest::newRow("Kelvin, K") << QStringLiteral("des\u212A") << QStringLiteral("DESK");
    QTest::newRow("s, long s") << QStringLiteral("basis") << QStringLiteral("ba\u017Fi\u017F");
    QTest::newRow("long s, s") << QStringLiteral("ba\u017Fis") << QStringLiteral("BASIS");
    QTest::newRow("only k") << QStringLiteral("k") << QStringLiteral("\u212A");
    QTest::newRow("only long s") << QStringLiteral("\u017F") << QStringLiteral("S");
    QTest::newRow("both") << QStringLiteral("sks") << QStringLiteral("\u017F\u212A\u017F");
    QTest::newRow("micro, mu") << QStringLiteral("5 \u00B5m") << QStringLiteral("5 \u039Cm");
    QTest::newRow("sigmas") << QStringLiteral("\u03C3\u03C2") << QStringLiteral("\u03C2\u03A3");
    QTest::newRow("sharp s") << QStringLiteral("stra\u00DFe") << QStringLiteral("STRA\u1E9EE");
    QTest::newRow("Angstrom") << QStringLiteral("\u212Bngstr") << QStringLiteral("\u00E5NGSTR");
    QTest::newRow("Ohm") << QStringLiteral("10 \u2126") << QStringLiteral("10 \u03C9");
    QTest::newRow("Cherokee") << QStringLiteral("\u13A0\u13A1") << QStringLiteral("\uAB70\uAB71");
}

void KeywordPrefilterTest::kMatchesTheKelvinSignAndSTheLongS()
{
    QFETCH(QString, keyword);
    QFETCH(QString, text);
    QVERIFY(text.indexOf(keyword, 0, Qt::CaseInsensitive) >= 0);
    for (const int codeSet :
         {CodeSet::Utf8, CodeSet::Utf16Be, CodeSet::Utf16Le, CodeSet::Utf32Be, CodeSet::Utf32Le}) {
        const QByteArray bytes =
            encode(QStringLiteral("xx ") + text + QStringLiteral(" yy"), codeSet);
        QVERIFY(passes(keyword, bytes, codeSet, Qt::CaseInsensitive));
        QVERIFY(!passes(keyword, bytes, codeSet, Qt::CaseSensitive));
    }
}

void KeywordPrefilterTest::aCharacterWithSeveralCodesIsFoundByEach_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("code");
    const auto row = [](const char *character, int codeSet, const char *hex) {
        const QByteArray code = QByteArray::fromHex(hex);
        QTest::newRow(
            qPrintable(QString::fromUtf8(character) + QLatin1String(" ") + QLatin1String(hex)))
            << QString::fromUtf8(character) << codeSet << code;
    };
    row("≒", CodeSet::ShiftJis, "81e0");
    row("≒", CodeSet::ShiftJis, "8790");
    row("∪", CodeSet::ShiftJis, "81be");
    row("∪", CodeSet::ShiftJis, "879c");
    row("纊", CodeSet::ShiftJis, "ed40");
    row("纊", CodeSet::ShiftJis, "fa5c");
    row("ⅰ", CodeSet::ShiftJis, "eeef");
    row("ⅰ", CodeSet::ShiftJis, "fa40");
    row("Ⅰ", CodeSet::ShiftJis, "8754");
    row("Ⅰ", CodeSet::ShiftJis, "fa4a");
    row("①", CodeSet::ShiftJis, "8740");
    row("∪", CodeSet::EucJp, "a2c0");
    row("∪", CodeSet::EucJp, "adfc");
    row("丂", CodeSet::EucJp, "8fb0a1");
    row("ﾊ", CodeSet::EucJp, "8eca");
}

void KeywordPrefilterTest::aCharacterWithSeveralCodesIsFoundByEach()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    QFETCH(QByteArray, code);
    const QByteArray bytes = "abc" + code + "def";
    if (!matches(keyword, bytes, codeSet))
        QSKIP("this platform's codec knows no such code");
    QVERIFY(passes(keyword, bytes, codeSet));
    QVERIFY(passes(QStringLiteral("c") + keyword + QStringLiteral("d"), bytes, codeSet));
    QVERIFY(!passes(QStringLiteral("c") + keyword + QStringLiteral("d"), "abcdef", codeSet));
}

void KeywordPrefilterTest::aCharacterThatTheCodeSetLacksRefusesItsFiles()
{
    const QString keyword = QStringLiteral("caf\u00E9");
    const QByteArray bytes = QByteArray("caf\x8E\xE9 caf\xE9 caf");
    QVERIFY(!matches(keyword, bytes, CodeSet::ShiftJis));
    QVERIFY(!passes(keyword, bytes, CodeSet::ShiftJis));
}

void KeywordPrefilterTest::aCarriageReturnInsideTheKeywordPasses_data()
{
    addKeywordRows({QStringLiteral("foobar"), QStringLiteral("漢字"), QStringLiteral("ab")});
}

void KeywordPrefilterTest::aCarriageReturnInsideTheKeywordPasses()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    for (const char *returns : {"\r", "\r\r", "\r\r\r"}) {
        QString text = QStringLiteral("xx ") + keyword + QStringLiteral(" yy");
        text.insert(4, QLatin1String(returns));
        const QByteArray bytes = encode(text, codeSet);
        QVERIFY(matches(keyword, bytes, codeSet));
        QVERIFY(passes(keyword, bytes, codeSet));
    }
}

void KeywordPrefilterTest::carriageReturnsBeforeLineFeedsDoNotPass_data()
{
    addKeywordRows({QStringLiteral("foobar")});
}

void KeywordPrefilterTest::carriageReturnsBeforeLineFeedsDoNotPass()
{
    QFETCH(QString, keyword);
    QFETCH(int, codeSet);
    const QString text =
        QStringLiteral("foo\r\nbar\r\n\r\n").repeated(100) + QStringLiteral("foo\r\nbar\r");
    QVERIFY(!passes(keyword, encode(text, codeSet), codeSet));
}

void KeywordPrefilterTest::aCarriageReturnBeforeACharacterLikeALineFeedIsLone()
{
    const QString keyword = QStringLiteral("a\u300A\u0A0A\u0A00");
    for (const int codeSet :
         {CodeSet::Utf16Be, CodeSet::Utf16Le, CodeSet::Utf32Be, CodeSet::Utf32Le}) {
        for (int at = 1; at < keyword.size(); ++at) {
            QString text = keyword + QLatin1Char('z');
            text.insert(at, QLatin1Char('\r'));
            const QByteArray bytes = encode(text, codeSet);
            QVERIFY(matches(keyword, bytes, codeSet));
            QVERIFY(passes(keyword, bytes, codeSet));
        }
        // Characters with a 0D in their code are no carriage returns.
        QVERIFY(!passes(keyword, encode(QStringLiteral("\u300D\u0D00\u0D0Da\u300A"), codeSet),
                        codeSet));
    }
}

void KeywordPrefilterTest::aByteOrderMarkOverridesTheCodeSet_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<int>("codeSet");
    QTest::newRow("UTF-8") << QByteArray("\xEF\xBB\xBF") << int(CodeSet::Utf8);
    QTest::newRow("UTF-16BE") << QByteArray("\xFE\xFF") << int(CodeSet::Utf16Be);
    QTest::newRow("UTF-16LE") << QByteArray("\xFF\xFE") << int(CodeSet::Utf16Le);
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xFE\xFF", 4) << int(CodeSet::Utf32Be);
    QTest::newRow("UTF-32LE") << QByteArray("\xFF\xFE\0\0", 4) << int(CodeSet::Utf32Le);
}

void KeywordPrefilterTest::aByteOrderMarkOverridesTheCodeSet()
{
    QFETCH(QByteArray, mark);
    QFETCH(int, codeSet);
    const QString keyword = QStringLiteral("漢字kana");
    const QByteArray with = mark + encode(QStringLiteral("xx 漢字kana yy"), codeSet);
    const QByteArray without = mark + encode(QStringLiteral("xx kanji yy"), codeSet);
    for (int claimed = CodeSet::Default; claimed < CodeSet::kCount; ++claimed) {
        QVERIFY(matches(keyword, with, claimed));
        QVERIFY(passes(keyword, with, claimed));
        QVERIFY(!passes(keyword, without, claimed));
    }
}

void KeywordPrefilterTest::aMarkBehindBlocksOfAsciiIsDropped()
{
    const QByteArray block = QByteArray(16381, 'x') + "foo";
    const QByteArray bytes = block + "\xEF\xBB\xBF" + "bar" + QByteArray(100, 'y');
    QVERIFY(passes(QStringLiteral("foobar"), bytes, CodeSet::Utf8));
    QVERIFY(matches(QStringLiteral("foobar"), bytes, CodeSet::Utf8));
    // At the file's start it is no reason to pass.
    QVERIFY(!passes(QStringLiteral("foobar"), "\xEF\xBB\xBF" + block + "\xE3\x81\x82 bar",
                    CodeSet::Utf8));
}

void KeywordPrefilterTest::aMarkInsideUtf32IsNotDropped()
{
    for (const int codeSet : {CodeSet::Utf32Be, CodeSet::Utf32Le}) {
        const QByteArray bytes = encode(QStringLiteral("xfoo\uFEFFbarx"), codeSet);
        QVERIFY(!matches(QStringLiteral("foobar"), bytes, codeSet));
        QVERIFY(!passes(QStringLiteral("foobar"), bytes, codeSet));
    }
}

void KeywordPrefilterTest::aUnitAboveTheLastCodePointCanBeTheLastCharacter()
{
    // Its first half comes out as 'r', its second one as "?".
    const quint32 strange = (quint32('r') - 0xD7C0U) << 10;
    QByteArray unit;
    for (int shift = 0; shift < 32; shift += 8)
        unit.append(static_cast<char>(strange >> shift));
    const QByteArray bytes = encode(QStringLiteral("fooba"), CodeSet::Utf32Le) + unit
        + encode(QStringLiteral("z"), CodeSet::Utf32Le);
    for (const char *keyword : {"foobar", "r", "bar?z", "ar?"}) {
        QVERIFY(matches(QLatin1String(keyword), bytes, CodeSet::Utf32Le));
        QVERIFY(passes(QLatin1String(keyword), bytes, CodeSet::Utf32Le));
    }
}

void KeywordPrefilterTest::onlyUnitsAboveTheLastCodePointPass_data()
{
    QTest::addColumn<quint32>("unit");
    QTest::addColumn<bool>("impossible");
    QTest::newRow("last code point") << quint32(0x10FFFF) << false;
    QTest::newRow("plane 9") << quint32(0x090000) << false;
    QTest::newRow("first above") << quint32(0x110000) << true;
    QTest::newRow("second byte 7F") << quint32(0x7F0000) << true;
    QTest::newRow("second byte 80") << quint32(0x800000) << true;
    QTest::newRow("second byte 91") << quint32(0x910000) << true;
    QTest::newRow("second byte FF") << quint32(0xFF0000) << true;
    QTest::newRow("highest byte 1") << quint32(0x01000000) << true;
    QTest::newRow("highest byte 80") << quint32(0x80000000) << true;
    QTest::newRow("all bits") << quint32(0xFFFFFFFF) << true;
}

/// At every place of a text that is read several units at a time.
void KeywordPrefilterTest::onlyUnitsAboveTheLastCodePointPass()
{
    QFETCH(quint32, unit);
    QFETCH(bool, impossible);
    constexpr int kUnits = 40;
    for (int place = 0; place < kUnits; ++place) {
        for (const int codeSet : {CodeSet::Utf32Be, CodeSet::Utf32Le}) {
            QByteArray bytes = encode(QString(kUnits, QLatin1Char('x')), codeSet);
            for (int i = 0; i < 4; ++i) {
                const int shift = 8 * (codeSet == CodeSet::Utf32Be ? 3 - i : i);
                bytes[4 * place + i] = static_cast<char>(unit >> shift);
            }
            QCOMPARE(passes(QStringLiteral("foobar"), bytes, codeSet), impossible);
        }
    }
}

void KeywordPrefilterTest::aPairInUtf32IsFoundInEveryForm()
{
    const QString keyword = QStringLiteral("\U0001F600");
    const QByteArray usual("\x00\xF6\x01\x00", 4);
    const QByteArray halves("\x3D\xD8\x00\x00\x00\xDE\x00\x00", 8);
    const QByteArray withHighBits("\x00\xF6\x01\x04", 4);
    for (const QByteArray &bytes : {usual, halves, withHighBits}) {
        QVERIFY(passes(keyword, bytes, CodeSet::Utf32Le)
                || !matches(keyword, bytes, CodeSet::Utf32Le));
    }
    QVERIFY(matches(keyword, halves, CodeSet::Utf32Le));
}

void KeywordPrefilterTest::aLoneSurrogateIsAQuestionMark()
{
    const QByteArray littleEndian("a\0\x3D\xD8"
                                  "b\0",
                                  6);
    QVERIFY(matches(QStringLiteral("a?b"), littleEndian, CodeSet::Utf16Le));
    QVERIFY(passes(QStringLiteral("a?b"), littleEndian, CodeSet::Utf16Le));
    QVERIFY(passes(QStringLiteral("?"), littleEndian, CodeSet::Utf16Le));
    const QByteArray bigEndian("\0a\xD8\x3D\0b", 6);
    QVERIFY(matches(QStringLiteral("a?b"), bigEndian, CodeSet::Utf16Be));
    QVERIFY(passes(QStringLiteral("a?b"), bigEndian, CodeSet::Utf16Be));
}

void KeywordPrefilterTest::halfACharacterIsAReplacementCharacter()
{
    const QString keyword = QStringLiteral("a\uFFFD");
    const auto check = [&keyword](const QByteArray &bytes, int codeSet) {
        return matches(keyword, bytes, codeSet) && passes(keyword, bytes, codeSet);
    };
    QVERIFY(check("xa\x81\n", CodeSet::ShiftJis));
    QVERIFY(check("xa\xA4\n", CodeSet::EucJp));
    QVERIFY(check("xa\xE3\x81\n", CodeSet::Utf8));
    // The toolkit's own codec, where there is no ICU, drops it here.
    const QByteArray jis = "xa\x1B$B\x46\x1B(B\n";
    const bool dropped =
        !CodeSet::codec(CodeSet::Iso2022Jp)->toUnicode(jis).contains(QChar::ReplacementCharacter);
    QVERIFY(dropped || check(jis, CodeSet::Iso2022Jp));
}

void KeywordPrefilterTest::escapeSequencesMayStandBetweenAllCharacters_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("usual") << QByteArray("\x1B$B\x46\x7C\x4B\x5C\x1B(B");
    QTest::newRow("old") << QByteArray("\x1B$@\x46\x7C\x4B\x5C\x1B(J");
    QTest::newRow("repeated") << QByteArray("\x1B$B\x46\x7C\x1B$B\x4B\x5C\x1B(B");
    QTest::newRow("changed") << QByteArray("\x1B$B\x46\x7C\x1B$@\x4B\x5C\x1B(B");
    QTest::newRow("left and entered") << QByteArray("\x1B$B\x46\x7C\x1B(B\x1B$B\x4B\x5C\x1B(B");
    QTest::newRow("not left") << QByteArray("abc\n\x1B$B\x46\x7C\x4B\x5C");
    QTest::newRow("carriage return between")
        << QByteArray("\x1B$B\x46\x7C\x1B(B\r\x1B$B\x4B\x5C\x1B(B");
}

void KeywordPrefilterTest::escapeSequencesMayStandBetweenAllCharacters()
{
    QFETCH(QByteArray, bytes);
    const QString keyword = QStringLiteral("日本");
    QVERIFY(passes(keyword, bytes, CodeSet::Iso2022Jp));
    QVERIFY(!passes(QStringLiteral("本日"), bytes, CodeSet::Iso2022Jp));
    QVERIFY(!passes(QStringLiteral("F|"), "\x1B$B\x4B\x5C\x1B(B", CodeSet::Iso2022Jp));
}

void KeywordPrefilterTest::oneByteAndTwoByteTextMayFollowEachOther()
{
    const QByteArray bytes("see \x1B$B\x46\x7C\x4B\x5C\x1B(Babc\x1B(I\x4A\x5D\x1B(B.");
    for (const char *keyword : {"see 日本", "日本abc", "e 日本ab", "cﾊﾝ.", "ﾊﾝ"}) {
        const QString text = QString::fromUtf8(keyword);
        QVERIFY(matches(text, bytes, CodeSet::Iso2022Jp));
        QVERIFY(passes(text, bytes, CodeSet::Iso2022Jp));
    }
    QVERIFY(!passes(QStringLiteral("本日"), bytes, CodeSet::Iso2022Jp));
    QVERIFY(!passes(QStringLiteral("e 本"), bytes, CodeSet::Iso2022Jp));
}

void KeywordPrefilterTest::brokenIso2022JpPasses_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("unknown escape sequence") << QByteArray("a\x1B*Zb");
    QTest::newRow("escape at the end") << QByteArray("ab\x1B");
    QTest::newRow("shift out") << QByteArray("a\x0E\x31\x0F"
                                             "b");
    QTest::newRow("half a character") << QByteArray("\x1B$B\x46\x7C\x4B\x1B(B");
    QTest::newRow("line feed in two-byte text") << QByteArray("\x1B$B\x46\x7C\n\x4B\x5C\x1B(B");
    QTest::newRow("carriage return in two-byte text")
        << QByteArray("\x1B$B\x46\x7C\r\r\x4B\x5C\x1B(B");
}

void KeywordPrefilterTest::brokenIso2022JpPasses()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(passes(QStringLiteral("zzzz"), bytes, CodeSet::Iso2022Jp));
}

void KeywordPrefilterTest::aPatternsAlternativesAreAllLookedFor()
{
    const KeywordPrefilter prefilter(QStringLiteral("^(alpha|beta|ガンマ) *="), true,
                                     Qt::CaseSensitive);
    for (const int codeSet : kCodeSets) {
        const auto mayMatch = [&](const char *text) {
            const QByteArray bytes = encode(QString::fromUtf8(text), codeSet);
            return prefilter.mayMatch(bytes.constData(), bytes.size(), codeSet);
        };
        QVERIFY(mayMatch("x\nalpha = 1"));
        QVERIFY(mayMatch("beta=1"));
        QVERIFY(mayMatch("ガンマ = 1"));
        QVERIFY(!mayMatch("delta = 1 ガマン"));
    }
}

void KeywordPrefilterTest::anUnknownLiteralPassesEverything()
{
    for (const char *pattern : {"", ".*", "\\d+", "a|", "[a-z]+"}) {
        const KeywordPrefilter prefilter(QLatin1String(pattern), true, Qt::CaseSensitive);
        for (int codeSet = CodeSet::Default; codeSet < CodeSet::kCount; ++codeSet)
            QVERIFY(prefilter.mayMatch("", 0, codeSet));
    }
}

void KeywordPrefilterTest::anInvalidPatternRefusesEverything()
{
    const KeywordPrefilter prefilter(QStringLiteral("foo("), true, Qt::CaseSensitive);
    for (int codeSet = CodeSet::Default; codeSet < CodeSet::kCount; ++codeSet)
        QVERIFY(!prefilter.mayMatch("foo(", 4, codeSet));
}

void KeywordPrefilterTest::theDefaultCodeSetPassesEverything()
{
    for (const int codeSet : {-2, -1, 0, 9, 1000}) {
        QVERIFY(passes(QStringLiteral("keyword"), "nothing", codeSet));
        QVERIFY(passes(QStringLiteral("keyword"), "", codeSet));
    }
}

void KeywordPrefilterTest::anEmptyFileIsRefused()
{
    for (const int codeSet : kCodeSets) {
        QVERIFY(!passes(QStringLiteral("a"), "", codeSet));
        QVERIFY(!passes(QStringLiteral("ab"), "", codeSet));
    }
}

void KeywordPrefilterTest::manyThreadsMayAskAtOnce()
{
    const QString keyword = QStringLiteral("日本語");
    for (int round = 0; round < 20; ++round) {
        const KeywordPrefilter prefilter(keyword, false, Qt::CaseInsensitive);
        std::atomic<int> wrong(0);
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                for (const int codeSet : kCodeSets) {
                    const QByteArray with = encode(QStringLiteral("これは日本語です"), codeSet);
                    const QByteArray without = encode(QStringLiteral("これは漢字です"), codeSet);
                    if (!prefilter.mayMatch(with.constData(), with.size(), codeSet)
                        || prefilter.mayMatch(without.constData(), without.size(), codeSet))
                        ++wrong;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
    }
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    KeywordPrefilterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "KeywordPrefilterTest.moc"
