#include "engine/TextDecoder.h"

#include "engine/CodeSet.h"
#include "tests/support/StreamedText.h"

#include <QTest>
#include <QTextCodec>

#include <array>
#include <thread>

class TextDecoderTest : public QObject {
    Q_OBJECT

private slots:
    void manyThreadsMayStartAtOnce();
    void aLetterIsReadInEveryCodeSet_data();
    void aLetterIsReadInEveryCodeSet();
    void anEmptyFileIsAnEmptyText();
    void everyCarriageReturnIsDropped_data();
    void everyCarriageReturnIsDropped();
    void carriageReturnsAreDroppedWherePiecesMeet();
    void aCarriageReturnInsideAUnitStays();
    void aMarkOverridesTheCodeSet_data();
    void aMarkOverridesTheCodeSet();
    void aMarkInAFileOfFourBytesOrFewerOverridesShiftJis_data();
    void aMarkInAFileOfFourBytesOrFewerOverridesShiftJis();
    void aSecondMarkStays();
    void aMarkBehindPiecesOfAsciiIsTakenForOne();
    void aSequenceCutOffAtTheEndIsDropped_data();
    void aSequenceCutOffAtTheEndIsDropped();
    void aSequenceCutOffWherePiecesMeetIsWhole_data();
    void aSequenceCutOffWherePiecesMeetIsWhole();
    void shiftStatesAreFollowed_data();
    void shiftStatesAreFollowed();
    void aShiftStateLastsBeyondAPiece();
    void controlsAreWhatTheCodecMakesOfThem();
    void defaultIsTheLocaleCodec();
    void unknownNumbersAreDefault();
    void halvesOfPairsBecomeQuestionMarks_data();
    void halvesOfPairsBecomeQuestionMarks();
    void allOtherCharactersSurviveTheSearch();
    void theMarkBehindTheMarkIsSearchable();
    void linesAreCounted_data();
    void linesAreCounted();
    void aLineFeedBehindHalfALetterCountsIfTheStreamReadsIt();
};

namespace {

constexpr int kPieceSize = 16384;

QString decode(const QByteArray &content, int codeSet)
{
    return decodeText(content.constData(), content.size(), codeSet);
}

QString streamed(const QByteArray &content, int codeSet)
{
    return StreamedText(content).read(CodeSet::codec(codeSet));
}

QByteArray encode(const QString &text, int codeSet)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
}

QByteArray mark(int codeSet)
{
    return encode(QString(QChar(QChar::ByteOrderMark)), codeSet);
}

} // namespace

// The first of the tests: the codecs and the tables have not been made yet.
void TextDecoderTest::manyThreadsMayStartAtOnce()
{
    constexpr size_t kThreads = 8;
    std::array<QString, kThreads> texts;
    std::array<int, kThreads> lines = {};
    std::array<std::thread, kThreads> threads;
    for (size_t i = 0; i < kThreads; ++i) {
        threads[i] = std::thread([&texts, &lines, i] {
            const QByteArray content("\x82\xA0\r\nabc");
            texts[i] = decode(content, CodeSet::ShiftJis);
            lines[i] = countLines(content.constData(), content.size(), CodeSet::ShiftJis);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (size_t i = 0; i < kThreads; ++i) {
        QCOMPARE(texts[i], QStringLiteral("あ\nabc"));
        QCOMPARE(lines[i], 2);
    }
}

void TextDecoderTest::aLetterIsReadInEveryCodeSet_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("Shift-JIS") << 1 << QByteArray("\x82\xA0");
    QTest::newRow("EUC-JP") << 2 << QByteArray("\xA4\xA2");
    QTest::newRow("ISO 2022-JP") << 3 << QByteArray("\x1B$B$\"\x1B(B");
    QTest::newRow("UTF-8") << 4 << QByteArray("\xE3\x81\x82");
    QTest::newRow("UTF-16BE") << 5 << QByteArray("\x30\x42");
    QTest::newRow("UTF-16LE") << 6 << QByteArray("\x42\x30");
    QTest::newRow("UTF-32BE") << 7 << QByteArray("\0\0\x30\x42", 4);
    QTest::newRow("UTF-32LE") << 8 << QByteArray("\x42\x30\0\0", 4);
}

void TextDecoderTest::aLetterIsReadInEveryCodeSet()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, content);
    QCOMPARE(decode(content, codeSet), QStringLiteral("あ"));
}

void TextDecoderTest::anEmptyFileIsAnEmptyText()
{
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet) {
        QCOMPARE(decode(QByteArray(), codeSet), QString());
        QCOMPARE(searchableText(nullptr, 0, codeSet), QString());
    }
}

void TextDecoderTest::everyCarriageReturnIsDropped_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    const auto row = [](const char *name, const char *written, const char *read) {
        QTest::newRow(name) << QString::fromUtf8(written) << QString::fromUtf8(read);
    };
    row("CR LF", "a\r\nb\r\n", "a\nb\n");
    row("CR only", "a\rb\r", "ab");
    row("CR CR LF", "a\r\r\nb", "a\nb");
    row("LF CR", "a\n\rb", "a\nb");
    row("only CRs", "\r\r\r", "");
    row("first and last", "\ra\r", "a");
    row("beside Japanese", "あ\rい\r\nう\r", "あい\nう");
    row("none", "a\nb", "a\nb");
}

void TextDecoderTest::everyCarriageReturnIsDropped()
{
    QFETCH(QString, written);
    QFETCH(QString, read);
    for (int codeSet = 1; codeSet < CodeSet::kCount; ++codeSet) {
        const QByteArray content = encode(written, codeSet);
        QCOMPARE(decode(content, codeSet), read);
        QCOMPARE(streamed(content, codeSet), read);
    }
}

void TextDecoderTest::carriageReturnsAreDroppedWherePiecesMeet()
{
    for (int codeSet = 1; codeSet < CodeSet::kCount; ++codeSet) {
        for (int before = kPieceSize - 3; before <= kPieceSize + 1; ++before) {
            for (const QLatin1Char filling : {QLatin1Char('a'), QLatin1Char('\r')}) {
                const QByteArray content =
                    encode(QString(before, filling) + QLatin1String("\r\r\n\rあ"), codeSet);
                QCOMPARE(decode(content, codeSet), streamed(content, codeSet));
            }
        }
    }
}

void TextDecoderTest::aCarriageReturnInsideAUnitStays()
{
    const QString text = QStringLiteral("\u0D0D\u0D0A\u0A0D\u300D");
    for (int codeSet = CodeSet::Utf8; codeSet < CodeSet::kCount; ++codeSet)
        QCOMPARE(decode(encode(text, codeSet), codeSet), text);
}

void TextDecoderTest::aMarkOverridesTheCodeSet_data()
{
    QTest::addColumn<int>("marked");
    for (int marked = CodeSet::Utf8; marked < CodeSet::kCount; ++marked)
        QTest::newRow(qPrintable(CodeSet::name(marked))) << marked;
}

void TextDecoderTest::aMarkOverridesTheCodeSet()
{
    QFETCH(int, marked);
    const QString text = QStringLiteral("検索\n結果");
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet)
        QCOMPARE(decode(mark(marked) + encode(text, marked), codeSet), text);
}

void TextDecoderTest::aMarkInAFileOfFourBytesOrFewerOverridesShiftJis_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    QTest::newRow("UTF-8 mark") << QByteArray("\xEF\xBB\xBF") << QString();
    QTest::newRow("UTF-8 mark and a letter") << QByteArray("\xEF\xBB\xBF"
                                                           "a")
                                             << QStringLiteral("a");
    QTest::newRow("UTF-16BE mark") << QByteArray("\xFE\xFF") << QString();
    QTest::newRow("UTF-16BE mark and a letter")
        << QByteArray("\xFE\xFF\x30\x42") << QStringLiteral("あ");
    QTest::newRow("UTF-16LE mark and half a letter") << QByteArray("\xFF\xFE\x42") << QString();
    QTest::newRow("UTF-16LE mark and a letter")
        << QByteArray("\xFF\xFE\x42\x30") << QStringLiteral("あ");
    QTest::newRow("UTF-32LE mark") << QByteArray("\xFF\xFE\0\0", 4) << QString();
    QTest::newRow("UTF-32BE mark") << QByteArray("\0\0\xFE\xFF", 4) << QString();
}

void TextDecoderTest::aMarkInAFileOfFourBytesOrFewerOverridesShiftJis()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QCOMPARE(decode(content, CodeSet::ShiftJis), text);
    QCOMPARE(streamed(content, CodeSet::ShiftJis), text);
}

void TextDecoderTest::aSecondMarkStays()
{
    const QString text = QStringLiteral("\uFEFFa\uFEFF");
    for (int codeSet = CodeSet::Utf8; codeSet < CodeSet::kCount; ++codeSet)
        QCOMPARE(decode(mark(codeSet) + encode(text, codeSet), codeSet), text);
}

void TextDecoderTest::aMarkBehindPiecesOfAsciiIsTakenForOne()
{
    // What the text stream does depends on the vector code in the toolkit, so
    // that is what counts, at each place around the end of a piece.
    for (const int place : {4096, 8192, kPieceSize, 24576, 2 * kPieceSize}) {
        for (int before = place - 20; before <= place + 20; ++before) {
            const QByteArray content = QByteArray(before, 'a') + mark(CodeSet::Utf8) + "z";
            QCOMPARE(decode(content, CodeSet::Utf8), streamed(content, CodeSet::Utf8));
        }
    }
}

void TextDecoderTest::aSequenceCutOffAtTheEndIsDropped_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("cut");
    QTest::newRow("Shift-JIS") << 1 << QByteArray("\x82");
    QTest::newRow("EUC-JP, one of two") << 2 << QByteArray("\xA4");
    QTest::newRow("EUC-JP, two of three") << 2 << QByteArray("\x8F\xB0");
    QTest::newRow("ISO 2022-JP, half a letter") << 3 << QByteArray("\x1B$B$");
    QTest::newRow("ISO 2022-JP, half a shift") << 3 << QByteArray("\x1B$");
    QTest::newRow("UTF-8, one of three") << 4 << QByteArray("\xE3");
    QTest::newRow("UTF-8, two of three") << 4 << QByteArray("\xE3\x81");
    QTest::newRow("UTF-8, three of four") << 4 << QByteArray("\xF0\x9F\x98");
    QTest::newRow("UTF-16BE") << 5 << QByteArray("\x30");
    QTest::newRow("UTF-16LE") << 6 << QByteArray("\x42");
    QTest::newRow("UTF-32BE") << 7 << QByteArray("\0\0\x30", 3);
    QTest::newRow("UTF-32LE") << 8 << QByteArray("\x42\x30\0", 3);
}

void TextDecoderTest::aSequenceCutOffAtTheEndIsDropped()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, cut);
    const QString text = QStringLiteral("あ\n");
    QCOMPARE(decode(encode(text, codeSet) + cut, codeSet), text);
    QCOMPARE(decode(cut, codeSet), QString());
}

void TextDecoderTest::aSequenceCutOffWherePiecesMeetIsWhole_data()
{
    QTest::addColumn<int>("codeSet");
    for (int codeSet = 1; codeSet < CodeSet::kCount; ++codeSet)
        QTest::newRow(qPrintable(CodeSet::name(codeSet))) << codeSet;
}

void TextDecoderTest::aSequenceCutOffWherePiecesMeetIsWhole()
{
    QFETCH(int, codeSet);
    const QString text = QStringLiteral("あ検ア索");
    const int width = encode(QStringLiteral("a"), codeSet).size();
    for (int offset = 0; offset < 16; ++offset) {
        const QString filling((kPieceSize - offset) / width, QLatin1Char('a'));
        QCOMPARE(decode(encode(filling + text, codeSet), codeSet), filling + text);
    }
}

void TextDecoderTest::shiftStatesAreFollowed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("JIS X 0208-1978") << QByteArray("a\x1B$@$\"0!\x1B(Bb\n");
    QTest::newRow("JIS X 0208-1983") << QByteArray("a\x1B$B$\"0!\x1B(Bb\n");
    QTest::newRow("Roman") << QByteArray("\x1B(J\\~a\x1B(B\\~\n");
    QTest::newRow("half-width katakana") << QByteArray("\x1B(I123\x1B(B123\n");
    QTest::newRow("JIS X 0212") << QByteArray("\x1B$(D0!\"o\x1B(Ba\n");
    QTest::newRow("line ends in two-byte mode") << QByteArray("\x1B$B$\"\n$\"\r\n$\"\r$\"\x1B(B");
    QTest::newRow("line end inside a letter") << QByteArray("\x1B$B$\"$\n\"$\r\n\"\x1B(Ba");
    QTest::newRow("line end in katakana") << QByteArray("\x1B(I12\n12\r\n12");
    QTest::newRow("never shifted back") << QByteArray("\x1B$B$\"$$\n$&");
    QTest::newRow("broken shift") << QByteArray("a\x1B$Xb\x1B(Zc\x1B");
    QTest::newRow("shift out and in") << QByteArray("a\x0E"
                                                    "123\x0F"
                                                    "b");
    QTest::newRow("high bytes") << QByteArray("\x1B$B\xA4\xA2\x1B(B\xB1");
}

void TextDecoderTest::shiftStatesAreFollowed()
{
    QFETCH(QByteArray, content);
    QCOMPARE(decode(content, CodeSet::Iso2022Jp), streamed(content, CodeSet::Iso2022Jp));
    // Cut anywhere, and anywhere where two pieces meet.
    for (int size = 0; size < content.size(); ++size) {
        const QByteArray cut = content.left(size);
        QCOMPARE(decode(cut, CodeSet::Iso2022Jp), streamed(cut, CodeSet::Iso2022Jp));
        const QByteArray shifted = QByteArray(kPieceSize - size, 'x') + content;
        QCOMPARE(decode(shifted, CodeSet::Iso2022Jp), streamed(shifted, CodeSet::Iso2022Jp));
    }
}

void TextDecoderTest::aShiftStateLastsBeyondAPiece()
{
    QByteArray content("\x1B$B");
    while (content.size() < 3 * kPieceSize)
        content += "$\"";
    QCOMPARE(decode(content, CodeSet::Iso2022Jp), QString((content.size() - 3) / 2, QChar(0x3042)));
}

void TextDecoderTest::controlsAreWhatTheCodecMakesOfThem()
{
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet) {
        for (int value = 0; value < 256; ++value) {
            const QByteArray content = "abcdefg" + QByteArray(1, char(value)) + "h";
            QCOMPARE(decode(content, codeSet), streamed(content, codeSet));
        }
    }
}

void TextDecoderTest::defaultIsTheLocaleCodec()
{
    QTextCodec *const before = QTextCodec::codecForLocale();
    for (const int number : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Utf8}) {
        const QByteArray content = encode(QStringLiteral("検索\r\n結果"), number);
        const StreamedText file(content);
        QTextCodec::setCodecForLocale(CodeSet::codec(number));
        const QString text = decode(content, CodeSet::Default);
        const QString expected = file.read(nullptr);
        const int lines = countLines(content.constData(), content.size(), CodeSet::Default);
        QTextCodec::setCodecForLocale(before);
        QCOMPARE(text, QStringLiteral("検索\n結果"));
        QCOMPARE(text, expected);
        QCOMPARE(lines, 2);
    }
}

void TextDecoderTest::unknownNumbersAreDefault()
{
    const QByteArray content("\xE3\x81\x82\r\n\x82\xA0");
    for (const int number : {-2, -1, 9, 1000})
        QCOMPARE(decode(content, number), decode(content, CodeSet::Default));
}

void TextDecoderTest::halvesOfPairsBecomeQuestionMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("searchable");
    const QChar high(0xD83D);
    const QChar low(0xDE00);
    const QString pair = QString(high) + low;
    const QLatin1Char mark('?');
    QTest::newRow("pair") << pair << pair;
    QTest::newRow("high") << QString(high) << QString(mark);
    QTest::newRow("low") << QString(low) << QString(mark);
    QTest::newRow("two highs") << QString(high) + high << QStringLiteral("??");
    QTest::newRow("the wrong way round") << QString(low) + high << QStringLiteral("??");
    QTest::newRow("high before a pair") << high + pair << mark + pair;
    QTest::newRow("low behind a pair") << pair + low << pair + mark;
    QTest::newRow("high before a letter")
        << QString(high) + QLatin1Char('a') << QStringLiteral("?a");
    QTest::newRow("low behind a letter") << QLatin1Char('a') + QString(low) << QStringLiteral("a?");
    QTest::newRow("far back") << QString(5000, mark) + pair + high
                              << QString(5000, mark) + pair + mark;
}

void TextDecoderTest::halvesOfPairsBecomeQuestionMarks()
{
    QFETCH(QString, text);
    QFETCH(QString, searchable);
    for (const int codeSet : {CodeSet::Utf16Be, CodeSet::Utf16Le}) {
        QByteArray content;
        for (const QChar unit : qAsConst(text)) {
            const ushort value = unit.unicode();
            content += char(codeSet == CodeSet::Utf16Be ? value >> 8 : value & 0xFF);
            content += char(codeSet == CodeSet::Utf16Be ? value & 0xFF : value >> 8);
        }
        QCOMPARE(decode(content, codeSet), text);
        QCOMPARE(searchableText(content.constData(), content.size(), codeSet), searchable);
    }
}

void TextDecoderTest::allOtherCharactersSurviveTheSearch()
{
    QString text;
    for (uint character = 0; character <= 0x10FFFF; ++character) {
        if (character == '\r' || (character >= 0xD800 && character <= 0xDFFF))
            continue;
        text += QString::fromUcs4(&character, 1);
    }
    QString searchable = text;
    replaceLoneSurrogates(&searchable);
    QVERIFY(searchable == text);
    const QByteArray content = encode(text, CodeSet::Utf16Le);
    QVERIFY(searchableText(content.constData(), content.size(), CodeSet::Utf16Le) == text);
}

void TextDecoderTest::theMarkBehindTheMarkIsSearchable()
{
    const QByteArray content = mark(CodeSet::Utf8) + mark(CodeSet::Utf8) + "a";
    QCOMPARE(searchableText(content.constData(), content.size(), CodeSet::Utf8),
             QStringLiteral("\uFEFFa"));
}

void TextDecoderTest::linesAreCounted_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("lines");
    const auto row = [](const char *name, int codeSet, const QByteArray &content, int lines) {
        QTest::newRow(name) << codeSet << content << lines;
    };
    row("empty", 1, QByteArray(), 1);
    row("no line feed", 4, "abc", 1);
    row("ends with a line feed", 4, "abc\n", 2);
    row("only line feeds", 1, "\n\n\n", 4);
    row("CR LF", 1, "a\r\nb\r\n", 3);
    row("CR only", 1, "a\rb\rc", 1);
    row("line feed behind half a UTF-8 letter", 4, "\xE3\n\xE3\x81\n\xF0\x9F\x98\n", 4);
    row("line feed inside UTF-16 units", 6, "\x0A\x0A\x0D\x0A\x0A\x30", 1);
    row("line feed unit in UTF-16BE", 5, QByteArray("\0a\0\x0A\0b\0\x0A", 8), 3);
    row("line feed unit in UTF-16LE", 6, QByteArray("a\0\x0A\0b\0\x0A\0", 8), 3);
    row("odd line feed in UTF-16LE", 6, QByteArray("a\0\x0A", 3), 1);
    row("line feed byte across UTF-16LE units", 6, QByteArray("a\x0A\0b", 4), 1);
    row("UTF-32BE", 7, QByteArray("\0\0\0\x0A\0\0\x0A\0", 8), 2);
    row("UTF-32LE", 8, QByteArray("\x0A\0\0\0\0\x0A\0\0", 8), 2);
    row("marked UTF-16LE taken for Shift-JIS", 1, QByteArray("\xFF\xFE\x0A\0", 4), 2);
    row("marked UTF-16BE taken for UTF-8", 4, QByteArray("\xFE\xFF\x0A\x0A\0\x0A", 6), 2);
}

void TextDecoderTest::linesAreCounted()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, content);
    QTEST(countLines(content.constData(), content.size(), codeSet), "lines");
    QTEST(streamed(content, codeSet).split(QLatin1Char('\n')).size(), "lines");
}

void TextDecoderTest::aLineFeedBehindHalfALetterCountsIfTheStreamReadsIt()
{
    // ICU's Shift-JIS lets the line feed stand, the toolkit's own swallows it.
    const QByteArray content("\x82\n\x82\n\xA4\n\x8F\n\x8F\xB0\n");
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet) {
        QCOMPARE(countLines(content.constData(), content.size(), codeSet),
                 streamed(content, codeSet).count(QLatin1Char('\n')) + 1);
    }
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    TextDecoderTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TextDecoderTest.moc"
