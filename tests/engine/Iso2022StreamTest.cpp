#include "engine/Iso2022Stream.h"

#include <QTest>

class Iso2022StreamTest : public QObject {
    Q_OBJECT

private slots:
    void charactersRemainWithoutEscapeSequences_data();
    void charactersRemainWithoutEscapeSequences();
    void longTextIsReadAsShortText_data();
    void longTextIsReadAsShortText();
    void stretchesOfEveryLengthAreRead();
    void whatIsNotMadeOfCharactersIsRefused_data();
    void whatIsNotMadeOfCharactersIsRefused();
};

namespace {

const QVector<JapaneseForms::Designation> &designations()
{
    static const QVector<JapaneseForms::Designation> list = {
        {"\x1B(B", false}, {"\x1B(I", false}, {"\x1B$B", true}, {"\x1B$(D", true}};
    return list;
}

} // namespace

void Iso2022StreamTest::charactersRemainWithoutEscapeSequences_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("characters");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("ASCII") << QByteArray("abc\n") << QByteArray("abc\n");
    QTest::newRow("carriage returns")
        << QByteArray("a\r\nb\rc\r\x1B$B\x46\x7C") << QByteArray("a\nbc\xC6\xFC");
    QTest::newRow("two bytes") << QByteArray("a\x1B$B\x46\x7C\x1B(Bb")
                               << QByteArray("a\xC6\xFC"
                                             "b");
    QTest::newRow("high bits") << QByteArray("\xE1\x1B$B\xC6\x7C\x1B(Bb")
                               << QByteArray("a\xC6\xFC"
                                             "b");
    QTest::newRow("four-byte sequence")
        << QByteArray("\x1B$(D\x30\x21\x1B(B") << QByteArray("\xB0\xA1");
    QTest::newRow("nothing in between")
        << QByteArray("\x1B$B\x1B(B\x1B$B\x46\x7C") << QByteArray("\xC6\xFC");
    QTest::newRow("one-byte kana") << QByteArray("\x1B(I\x31\xB2\x1B(B") << QByteArray("\x31\x32");
}

void Iso2022StreamTest::charactersRemainWithoutEscapeSequences()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, characters);
    QByteArray result;
    QVERIFY(
        Iso2022Stream::extractCharacters(bytes.constData(), bytes.size(), designations(), &result));
    QCOMPARE(result, characters);
}

void Iso2022StreamTest::longTextIsReadAsShortText_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<bool>("twoBytes");
    QTest::newRow("one byte") << QByteArray() << false;
    QTest::newRow("two bytes") << QByteArray("\x1B$B") << true;
}

/// Every byte at every place of a text that is read several bytes at a time.
void Iso2022StreamTest::longTextIsReadAsShortText()
{
    QFETCH(QByteArray, start);
    QFETCH(bool, twoBytes);
    for (int byte = 0; byte < 256; ++byte) {
        const int sevenBits = byte & 0x7F;
        const bool graphic = sevenBits > 0x20 && sevenBits < 0x7F;
        const bool refused = twoBytes ? !graphic : byte == 0x0E || byte == 0x0F || byte == 0x1B;
        for (int at = 0; at < 24; ++at) {
            QByteArray text(24, 'A');
            text[at] = static_cast<char>(byte);
            const QByteArray bytes = start + text;
            QByteArray result;
            QCOMPARE(Iso2022Stream::extractCharacters(bytes.constData(), bytes.size(),
                                                      designations(), &result),
                     !refused);
            if (refused)
                continue;
            QByteArray expected;
            for (const char character : text) {
                if (character != '\r')
                    expected.append(Iso2022Stream::normalised(character, twoBytes));
            }
            QCOMPARE(result, expected);
        }
    }
}

/// Two-byte and one-byte text of all lengths by turns, up to the last byte.
void Iso2022StreamTest::stretchesOfEveryLengthAreRead()
{
    for (int twoByteSize = 0; twoByteSize <= 24; twoByteSize += 2) {
        for (int oneByteSize = 0; oneByteSize <= 20; ++oneByteSize) {
            const QByteArray oneByteText =
                QByteArray("ab\r\ncdefghijklmnopqrstu").left(oneByteSize);
            const QByteArray two = "\x1B$B" + QByteArray(twoByteSize, '\x21');
            const QByteArray one = "\x1B(B" + oneByteText;
            QByteArray expectedOne = oneByteText;
            expectedOne.replace("\r", "");
            const QByteArray expectedTwo(twoByteSize, '\xA1');
            const QByteArray bytes = two + one + two + two + one;
            QByteArray result;
            QVERIFY(Iso2022Stream::extractCharacters(bytes.constData(), bytes.size(),
                                                     designations(), &result));
            QCOMPARE(result, expectedTwo + expectedOne + expectedTwo + expectedTwo + expectedOne);
        }
    }
}

void Iso2022StreamTest::whatIsNotMadeOfCharactersIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("unknown escape sequence") << QByteArray("a\x1B(Zb");
    QTest::newRow("cut escape sequence") << QByteArray("a\x1B$(");
    QTest::newRow("cut behind its first byte") << QByteArray("a\x1B");
    QTest::newRow("shift out") << QByteArray("a\x0Ezz");
    QTest::newRow("shift in") << QByteArray("a\x0Fzz");
    QTest::newRow("half a character") << QByteArray("\x1B$B\x46\x1B(B");
    QTest::newRow("half a character at the end") << QByteArray("\x1B$B\x46");
    QTest::newRow("blank in two-byte text") << QByteArray("\x1B$B\x46 \x1B(B");
    QTest::newRow("delete in two-byte text") << QByteArray("\x1B$B\x46\x7F\x1B(B");
    QTest::newRow("line feed in two-byte text") << QByteArray("\x1B$B\x46\n\x1B(B");
    QTest::newRow("carriage return in two-byte text") << QByteArray("\x1B$B\x46\r\x1B(B");
    QTest::newRow("shift in two-byte text") << QByteArray("\x1B$B\x46\x0E\x1B(B");
}

void Iso2022StreamTest::whatIsNotMadeOfCharactersIsRefused()
{
    QFETCH(QByteArray, bytes);
    QByteArray result;
    QVERIFY(!Iso2022Stream::extractCharacters(bytes.constData(), bytes.size(), designations(),
                                              &result));
}

QTEST_GUILESS_MAIN(Iso2022StreamTest)
#include "Iso2022StreamTest.moc"
