#include "engine/LineDecoder.h"

#include "engine/ByteOrderMark.h"
#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"
#include "tests/engine_support/SearchCaseGenerator.h"
#include "tests/support/TestLength.h"

#include <QTest>

#include <cstring>
#include <vector>

/// Every line against the same line of the file that was decoded as a whole.
class LineDecoderTest : public QObject {
    Q_OBJECT

private slots:
    void aLineIsThatOfTheWholeText_data();
    void aLineIsThatOfTheWholeText();
    void whatDependsOnTheRestOfTheFileIsNotDecoded_data();
    void whatDependsOnTheRestOfTheFileIsNotDecoded();
    void someCodeSetsHaveNoLinesOfTheirOwn_data();
    void someCodeSetsHaveNoLinesOfTheirOwn();
    void generatedTextsHaveTheSameLines();
};

namespace {

struct Line {
    QString text;
    bool decoded = false;
};

/// Splits the bytes as the units of the code set stand.
std::vector<Line> linesOf(const QByteArray &bytes, int codeSet)
{
    LineDecoder decoder;
    std::vector<Line> lines;
    if (!decoder.begin(bytes.constData(), bytes.size(), codeSet))
        return lines;
    const bool wide = codeSet == CodeSet::Utf16Be || codeSet == CodeSet::Utf16Le;
    const int unit = wide ? 2 : 1;
    const QByteArray lineFeed = !wide ? QByteArray("\n")
        : codeSet == CodeSet::Utf16Be ? QByteArray("\0\n", 2)
                                      : QByteArray("\n\0", 2);
    int start = 0;
    for (int at = 0; at <= bytes.size(); at += unit) {
        const bool end = at + unit > bytes.size();
        if (!end && std::memcmp(bytes.constData() + at, lineFeed.constData(), size_t(unit)) != 0)
            continue;
        Line line;
        line.decoded = decoder.decode(bytes.constData() + start, at - start, &line.text);
        lines.push_back(line);
        start = at + unit;
        if (end)
            break;
    }
    return lines;
}

} // namespace

void LineDecoderTest::aLineIsThatOfTheWholeText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    QTest::newRow("ASCII") << QByteArray("one line\r") << int(CodeSet::Utf8);
    QTest::newRow("UTF-8") << QByteArray("\xE6\xBC\xA2 \xF0\xA0\xAE\xB7") << int(CodeSet::Utf8);
    QTest::newRow("Shift-JIS") << QByteArray("\x8A\xBF\xB1x") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << QByteArray("\xB4\xC1x") << int(CodeSet::EucJp);
    QTest::newRow("UTF-16LE") << QByteArray("\x22\x6Fx\0", 4) << int(CodeSet::Utf16Le);
    QTest::newRow("UTF-16BE") << QByteArray("\x6F\x22\0x", 4) << int(CodeSet::Utf16Be);
    QTest::newRow("half a pair") << QByteArray("\x42\xD8x\0", 4) << int(CodeSet::Utf16Le);
    QTest::newRow("an odd byte") << QByteArray("x\0y", 3) << int(CodeSet::Utf16Le);
}

void LineDecoderTest::aLineIsThatOfTheWholeText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    const std::vector<Line> lines = linesOf(bytes, codeSet);
    QCOMPARE(lines.size(), size_t(1));
    QVERIFY(lines.front().decoded);
    QCOMPARE(lines.front().text, searchableText(bytes.constData(), bytes.size(), codeSet));
}

void LineDecoderTest::whatDependsOnTheRestOfTheFileIsNotDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    const int utf8 = CodeSet::Utf8;
    QTest::newRow("a mark inside the file") << QByteArray("a\xEF\xBB\xBF") << utf8;
    QTest::newRow("a cut sequence") << QByteArray("a\xE6\xBC") << utf8;
    QTest::newRow("a byte that leads nothing") << QByteArray("\x80") << utf8;
    QTest::newRow("an overlong form") << QByteArray("\xC1\x81") << utf8;
    QTest::newRow("a longer overlong form") << QByteArray("\xE0\x81\x81") << utf8;
    QTest::newRow("half a pair") << QByteArray("\xED\xA0\x80") << utf8;
    QTest::newRow("beyond the last code point") << QByteArray("\xF4\x90\x80\x80") << utf8;
    QTest::newRow("a cut character in Shift-JIS") << QByteArray("\x8A") << int(CodeSet::ShiftJis);
    QTest::newRow("a broken character in EUC-JP") << QByteArray("\xB4x") << int(CodeSet::EucJp);
}

void LineDecoderTest::whatDependsOnTheRestOfTheFileIsNotDecoded()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    const std::vector<Line> lines = linesOf(bytes, codeSet);
    QCOMPARE(lines.size(), size_t(1));
    QVERIFY(!lines.front().decoded);
}

void LineDecoderTest::someCodeSetsHaveNoLinesOfTheirOwn_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("codeSet");
    QTest::newRow("default") << QByteArray("a") << int(CodeSet::Default);
    QTest::newRow("ISO 2022-JP") << QByteArray("a") << int(CodeSet::Iso2022Jp);
    QTest::newRow("UTF-32") << QByteArray("a\0\0\0", 4) << int(CodeSet::Utf32Le);
    QTest::newRow("a shift in EUC-JP") << QByteArray("a\x0E\xB1") << int(CodeSet::EucJp);
    QTest::newRow("no code set") << QByteArray("a") << 99;
}

void LineDecoderTest::someCodeSetsHaveNoLinesOfTheirOwn()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, codeSet);
    LineDecoder decoder;
    QVERIFY(!decoder.begin(bytes.constData(), bytes.size(), codeSet));
}

void LineDecoderTest::generatedTextsHaveTheSameLines()
{
    SearchCaseGenerator generator(20241001);
    int compared = 0;
    for (int i = 0; i < TestLength::rounds(5000, 300000); ++i) {
        const SearchCase made = generator.next();
        const char *bytes = made.content.constData();
        qint64 size = made.content.size();
        int codeSet = made.codeSet;
        ByteOrderMark::skip(&bytes, &size, &codeSet);
        const std::vector<Line> lines = linesOf(QByteArray(bytes, int(size)), codeSet);
        const QStringList expected =
            searchableText(made.content.constData(), made.content.size(), made.codeSet)
                .split(QLatin1Char('\n'));
        if (!lines.empty() && lines.size() != size_t(expected.size()))
            QFAIL(qPrintable(made.describe()));
        for (size_t line = 0; line < lines.size(); ++line) {
            if (!lines[line].decoded)
                continue;
            if (lines[line].text != expected.at(int(line)))
                QFAIL(qPrintable(made.describe()));
            ++compared;
        }
    }
    QVERIFY2(compared > 5000, qPrintable(QString::number(compared)));
}

int main(int argc, char *argv[])
{
    // As the programs do before they use a codec.
    qputenv("UNICODEMAP_JP", "cp932");
    QCoreApplication application(argc, argv);
    LineDecoderTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "LineDecoderTest.moc"
