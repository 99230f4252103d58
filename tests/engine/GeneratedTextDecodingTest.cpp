#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"
#include "tests/support/EncodedTextGenerator.h"
#include "tests/support/StreamedText.h"
#include "tests/support/TestLength.h"

#include <QTest>
#include <QTextCodec>

#include <algorithm>

/// Decoding compared with the toolkit's text stream on generated contents, each
/// taken for every code set in turn.
class GeneratedTextDecodingTest : public QObject {
    Q_OBJECT

private slots:
    void textsAreReadAsTheStreamReadsThem();
    void textsWithMarksAreReadAsTheStreamReadsThem();
    void brokenTextsAreReadAsTheStreamReadsThem();
    void cutTextsAreReadAsTheStreamReadsThem();
    void randomBytesAreReadAsTheStreamReadsThem();
    void difficultSequencesAreReadAsTheStreamReadsThem();
    void largeTextsAreReadAsTheStreamReadsThem();
    void sequencesBetweenPiecesAreReadAsTheStreamReadsThem();
    void textPassedThroughUtf8IsTheSearchableText();

private:
    QTextCodec *anyCodec();
    QByteArray smallText();
    void compare(const QByteArray &content);

    EncodedTextGenerator m_random{20240817};
    StreamedText m_file;
};

namespace {

// What the stream reads at once.
constexpr int kPieceSize = 16384;

QString roundTrip(const QString &text)
{
    const QString path = QStringLiteral("/folder/name\n");
    const QByteArray utf8 = (path + text).toUtf8();
    return QString::fromUtf8(utf8.constData(), utf8.size()).mid(path.size());
}

QByteArray describe(const QByteArray &content, int codeSet, const QString &got,
                    const QString &expected)
{
    const auto limit = std::min(got.size(), expected.size());
    const auto at =
        std::mismatch(got.begin(), got.begin() + limit, expected.begin()).first - got.begin();
    return "code set " + QByteArray::number(codeSet) + ", " + QByteArray::number(content.size())
        + " bytes " + content.left(200).toHex(' ') + ", difference at unit "
        + QByteArray::number(int(at)) + ": " + got.mid(int(at), 10).toUtf8().toHex(' ') + " for "
        + expected.mid(int(at), 10).toUtf8().toHex(' ');
}

} // namespace

QTextCodec *GeneratedTextDecodingTest::anyCodec()
{
    return CodeSet::codec(1 + m_random.number(CodeSet::kCount - 1));
}

QByteArray GeneratedTextDecodingTest::smallText()
{
    return m_random.encoded(m_random.text(m_random.number(120)), anyCodec());
}

void GeneratedTextDecodingTest::compare(const QByteArray &content)
{
    m_file.setContent(content);
    for (int codeSet = 0; codeSet < CodeSet::kCount; ++codeSet) {
        QTextCodec *codec = codeSet == 0 ? nullptr : CodeSet::codec(codeSet);
        const QString expected = m_file.read(codec);
        const QString text = decodeText(content.constData(), content.size(), codeSet);
        QVERIFY2(text == expected, describe(content, codeSet, text, expected).constData());
        const QString searchable = searchableText(content.constData(), content.size(), codeSet);
        QVERIFY2(searchable == roundTrip(expected),
                 describe(content, codeSet, searchable, roundTrip(expected)).constData());
        const int lines = countLines(content.constData(), content.size(), codeSet);
        QCOMPARE(lines, expected.split(QLatin1Char('\n')).size());
    }
}

void GeneratedTextDecodingTest::textsAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(4000, 32000) && !QTest::currentTestFailed(); ++i)
        compare(smallText());
}

void GeneratedTextDecodingTest::textsWithMarksAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(2000, 16000) && !QTest::currentTestFailed(); ++i)
        compare(m_random.mark() + smallText());
}

void GeneratedTextDecodingTest::brokenTextsAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(5000, 40000) && !QTest::currentTestFailed(); ++i)
        compare(m_random.broken(smallText()));
}

void GeneratedTextDecodingTest::cutTextsAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(2000, 16000) && !QTest::currentTestFailed(); ++i) {
        const QByteArray content = smallText();
        const int first = m_random.number(4);
        compare(content.mid(first, content.size() - first - m_random.number(4)));
    }
}

void GeneratedTextDecodingTest::randomBytesAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(4000, 32000) && !QTest::currentTestFailed(); ++i)
        compare(m_random.randomBytes(m_random.number(60)));
}

void GeneratedTextDecodingTest::difficultSequencesAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(4000, 32000) && !QTest::currentTestFailed(); ++i)
        compare(m_random.fragments(m_random.number(30)));
}

void GeneratedTextDecodingTest::largeTextsAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(160, 1280) && !QTest::currentTestFailed(); ++i) {
        const int size = kPieceSize * (1 + m_random.number(3)) - 4 + m_random.number(9);
        QByteArray content = m_random.encoded(m_random.text(size), anyCodec()).left(size);
        if (m_random.oneIn(3))
            content.prepend(m_random.mark());
        compare(m_random.oneIn(3) ? m_random.broken(content) : content);
    }
}

void GeneratedTextDecodingTest::sequencesBetweenPiecesAreReadAsTheStreamReadsThem()
{
    for (int i = 0; i < TestLength::rounds(600, 4800) && !QTest::currentTestFailed(); ++i) {
        QByteArray content;
        for (int pieces = 1 + m_random.number(2); pieces > 0; --pieces) {
            const int end = content.size() / kPieceSize * kPieceSize + kPieceSize;
            const QByteArray middle = m_random.fragments(1 + m_random.number(3));
            const QByteArray filling = m_random.oneIn(2)
                ? QByteArray(kPieceSize, 'a')
                : m_random.encoded(m_random.text(kPieceSize), anyCodec());
            const int gap = end - m_random.number(middle.size() + 1) - content.size();
            content += filling.left(gap).leftJustified(gap, 'b') + middle;
        }
        compare(content + m_random.fragments(m_random.number(4)));
    }
}

void GeneratedTextDecodingTest::textPassedThroughUtf8IsTheSearchableText()
{
    for (int i = 0; i < TestLength::rounds(20000, 200000); ++i) {
        const QString text = m_random.units(m_random.number(i % 50 == 0 ? 3000 : 30));
        QString searchable = text;
        replaceLoneSurrogates(&searchable);
        QCOMPARE(searchable, roundTrip(text));
    }
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    GeneratedTextDecodingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "GeneratedTextDecodingTest.moc"
