#include "engine/JapaneseCodecFacts.h"

#include "engine/ByteScan.h"
#include "engine/CodeSet.h"

#include <QTest>
#include <QTextCodec>

class JapaneseCodecFactsTest : public QObject {
    Q_OBJECT

private slots:
    void steadyAsciiIsKeptByTheJapaneseCodecs();
    void whatIsNotSteadyIsWhatACodecChanges();
    void lineFeedsOfIso2022JpAreNeverTakenForBytes();
    void lineFeedsAreBytesOnlyWhereEveryBeginningLetsThemThrough_data();
    void lineFeedsAreBytesOnlyWhereEveryBeginningLetsThemThrough();
    void nothingIsKnownOfOtherCodeSets();
};

namespace {

bool isSteady(char byte)
{
    return ByteScan::asciiOf(&byte, 1) == ByteScan::Ascii::AllSteady;
}

QString decodeInTwoPieces(const QTextCodec &codec, const QByteArray &bytes, int firstSize)
{
    QTextCodec::ConverterState state;
    const QString first = codec.toUnicode(bytes.constData(), firstSize, &state);
    return first + codec.toUnicode(bytes.constData() + firstSize, bytes.size() - firstSize, &state);
}

// Every beginning of one or two bytes on its own, cut into two pieces at each place.
bool letsLineFeedsThrough(const QTextCodec &codec)
{
    for (int first = 0x80; first <= 0xFF; ++first) {
        for (int second = 0; second <= 0x100; ++second) {
            QByteArray bytes(1, char(first));
            if (second <= 0xFF)
                bytes += char(second);
            bytes += "\n";
            for (int cut = 0; cut < bytes.size(); ++cut) {
                const QString text = decodeInTwoPieces(codec, bytes, cut);
                if (text.count(QLatin1Char('\n')) != bytes.count('\n'))
                    return false;
            }
        }
    }
    return true;
}

} // namespace

void JapaneseCodecFactsTest::steadyAsciiIsKeptByTheJapaneseCodecs()
{
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp}) {
        QVERIFY(JapaneseCodecFacts::keepsSteadyAscii(codeSet));
        for (int value = 0; value < 0x80; ++value) {
            const char byte = char(value);
            if (isSteady(byte))
                QCOMPARE(CodeSet::codec(codeSet)->toUnicode(&byte, 1), QString(QLatin1Char(byte)));
        }
    }
}

void JapaneseCodecFactsTest::whatIsNotSteadyIsWhatACodecChanges()
{
    // On some platform each of them is changed; no other byte may be on any.
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp}) {
        for (int value = 0; value < 0x80; ++value) {
            const char byte = char(value);
            if (CodeSet::codec(codeSet)->toUnicode(&byte, 1) != QString(QLatin1Char(byte)))
                QVERIFY(!isSteady(byte));
        }
    }
}

void JapaneseCodecFactsTest::lineFeedsOfIso2022JpAreNeverTakenForBytes()
{
    QVERIFY(!JapaneseCodecFacts::lineFeedsAreBytes(CodeSet::Iso2022Jp));
}

void JapaneseCodecFactsTest::lineFeedsAreBytesOnlyWhereEveryBeginningLetsThemThrough_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp);
}

void JapaneseCodecFactsTest::lineFeedsAreBytesOnlyWhereEveryBeginningLetsThemThrough()
{
    QFETCH(int, codeSet);
    QCOMPARE(JapaneseCodecFacts::lineFeedsAreBytes(codeSet),
             letsLineFeedsThrough(*CodeSet::codec(codeSet)));
}

void JapaneseCodecFactsTest::nothingIsKnownOfOtherCodeSets()
{
    for (const int codeSet : {-1, 0, 4, 5, 6, 7, 8, 9}) {
        QVERIFY(!JapaneseCodecFacts::keepsSteadyAscii(codeSet));
        QVERIFY(!JapaneseCodecFacts::lineFeedsAreBytes(codeSet));
    }
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    JapaneseCodecFactsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "JapaneseCodecFactsTest.moc"
