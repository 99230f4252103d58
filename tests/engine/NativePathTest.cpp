#include "engine/NativePath.h"

#include <QRandomGenerator>
#include <QTest>

/// File names as Unix holds them.
class NativePathTest : public QObject {
    Q_OBJECT

private slots:
    void validNamesAreShownAsTheirText_data();
    void validNamesAreShownAsTheirText();
    void everyCharacterIsShownAsItselfAndComesBack();
    void bytesOutsideValidSequencesBecomeLoneSurrogates_data();
    void bytesOutsideValidSequencesBecomeLoneSurrogates();
    void eachOfThe256BytesComesBack();
    void eachPairOfBytesComesBack();
    void randomBytesComeBack();
    void aByteOrderMarkIsPartOfTheName();
    void twoNamesAreNeverShownAsTheSameText();
    void onlyTheGivenNumberOfBytesIsRead();
    void anEmptyNameIsAnEmptyText();
    void aPairOfSurrogatesIsOneCharacter();
    void aLoneSurrogateThatStandsForNoByteDoesNotBecomeOne();
};

void NativePathTest::validNamesAreShownAsTheirText_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << QByteArray("readme.txt") << QStringLiteral("readme.txt");
    QTest::newRow("Japanese") << QByteArray("\xE6\x97\xA5\xE6\x9C\xAC") << QStringLiteral("日本");
    QTest::newRow("accented") << QByteArray("\xC3\xA9t\xC3\xA9") << QStringLiteral("été");
    QTest::newRow("outside the basic plane")
        << QByteArray("\xF0\xA0\xAE\xB7.txt") << QStringLiteral("𠮷.txt");
    QTest::newRow("line feed") << QByteArray("two\nlines") << QStringLiteral("two\nlines");
    QTest::newRow("line feed in a Japanese name")
        << QByteArray("\xE6\x97\xA5\n\xE6\x9C\xAC") << QStringLiteral("日\n本");
    QTest::newRow("control characters")
        << QByteArray("\x01\r\t\x7F") << QStringLiteral("\x01\r\t\x7F");
    QTest::newRow("backslash") << QByteArray("a\\b") << QStringLiteral("a\\b");
    QTest::newRow("path") << QByteArray("/home/\xE3\x81\x82/") << QStringLiteral("/home/あ/");
    QTest::newRow("letter and combining mark")
        << QByteArray("\xE3\x81\x8B\xE3\x82\x99") << QStringLiteral("か\u3099");
}

void NativePathTest::validNamesAreShownAsTheirText()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QCOMPARE(NativePath::fromNative(name), text);
    QCOMPARE(NativePath::toNative(text), name);
}

/// UTF-8 by its definition, so that the toolkit's own converter is not both
/// the rule and the judge.
static QByteArray utf8(uint code)
{
    if (code < 0x80)
        return QByteArray(1, static_cast<char>(code));
    QByteArray bytes;
    int continuations = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const uint leads[] = {0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(leads[continuations] | (code >> (6 * continuations)));
    while (continuations-- > 0)
        bytes += static_cast<char>(0x80 | ((code >> (6 * continuations)) & 0x3F));
    return bytes;
}

static QString utf16(uint code)
{
    if (!QChar::requiresSurrogates(code))
        return QChar(code);
    return QString(QChar(QChar::highSurrogate(code))) + QChar(QChar::lowSurrogate(code));
}

void NativePathTest::everyCharacterIsShownAsItselfAndComesBack()
{
    for (uint code = 1; code <= 0x10FFFF; ++code) {
        if (QChar::isSurrogate(code))
            continue;
        const QByteArray name = utf8(code);
        const QString text = NativePath::fromNative(name);
        const QString expected = utf16(code);
        if (text != expected || NativePath::toNative(text) != name)
            QFAIL(qPrintable(QStringLiteral("U+%1").arg(code, 4, 16)));
    }
}

void NativePathTest::bytesOutsideValidSequencesBecomeLoneSurrogates_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    const auto escape = [](std::initializer_list<int> bytes) {
        QString text;
        for (const int byte : bytes)
            text += QChar(0xDC00 + byte);
        return text;
    };
    const QString x = QStringLiteral("x");
    QTest::newRow("Latin-1 letter")
        << QByteArray("caf\xE9.txt")
        << QStringLiteral("caf") + escape({0xE9}) + QStringLiteral(".txt");
    QTest::newRow("Shift-JIS name") << QByteArray("\x83\x65\x83\x58\x83\x67")
                                    << escape({0x83}) + QLatin1Char('e') + escape({0x83})
            + QLatin1Char('X') + escape({0x83}) + QLatin1Char('g');
    QTest::newRow("lone continuation") << QByteArray("\x80x") << escape({0x80}) + x;
    QTest::newRow("cut at the end") << QByteArray("x\xE6\x97") << x + escape({0xE6, 0x97});
    QTest::newRow("cut in the middle") << QByteArray("\xE6\x97x") << escape({0xE6, 0x97}) + x;
    QTest::newRow("four bytes cut")
        << QByteArray("\xF0\xA0\xAEx") << escape({0xF0, 0xA0, 0xAE}) + x;
    QTest::newRow("overlong, two bytes") << QByteArray("\xC0\xAF") << escape({0xC0, 0xAF});
    QTest::newRow("overlong, three bytes")
        << QByteArray("\xE0\x9F\xBF") << escape({0xE0, 0x9F, 0xBF});
    QTest::newRow("overlong, four bytes")
        << QByteArray("\xF0\x8F\xBF\xBF") << escape({0xF0, 0x8F, 0xBF, 0xBF});
    QTest::newRow("encoded high surrogate")
        << QByteArray("\xED\xA0\x80") << escape({0xED, 0xA0, 0x80});
    QTest::newRow("encoded low surrogate")
        << QByteArray("\xED\xB2\x80") << escape({0xED, 0xB2, 0x80});
    QTest::newRow("encoded pair of surrogates")
        << QByteArray("\xED\xA1\x82\xED\xBE\xB7") << escape({0xED, 0xA1, 0x82, 0xED, 0xBE, 0xB7});
    QTest::newRow("beyond the last character")
        << QByteArray("\xF4\x90\x80\x80") << escape({0xF4, 0x90, 0x80, 0x80});
    QTest::newRow("no lead byte") << QByteArray("\xF5\x80\xFF") << escape({0xF5, 0x80, 0xFF});
    QTest::newRow("after a character of two code units")
        << QByteArray("\xF0\xA0\xAE\xB7\xAE") << QStringLiteral("𠮷") + escape({0xAE});
    QTest::newRow("before a valid character")
        << QByteArray("\xE3\xE3\x81\x82") << escape({0xE3}) + QStringLiteral("あ");
    QTest::newRow("all of it") << QByteArray("\xFF\xFE\x80") << escape({0xFF, 0xFE, 0x80});
}

void NativePathTest::bytesOutsideValidSequencesBecomeLoneSurrogates()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QCOMPARE(NativePath::fromNative(name), text);
    QCOMPARE(NativePath::toNative(text), name);
}

void NativePathTest::eachOfThe256BytesComesBack()
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        const QByteArray name = QByteArray("a") + static_cast<char>(byte) + "b";
        QCOMPARE(NativePath::toNative(NativePath::fromNative(name)), name);
        all += static_cast<char>(byte);
    }
    QCOMPARE(NativePath::toNative(NativePath::fromNative(all)), all);
}

void NativePathTest::eachPairOfBytesComesBack()
{
    for (int pair = 0; pair < 0x10000; ++pair) {
        QByteArray name(1, static_cast<char>(pair >> 8));
        name += static_cast<char>(pair & 0xFF);
        if (NativePath::toNative(NativePath::fromNative(name)) != name)
            QFAIL(name.toHex().constData());
    }
}

/// Bytes that sit at the edges of what is valid come more often.
static QByteArray randomName(QRandomGenerator &random)
{
    static const uchar edges[] = {0x2F, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBB, 0xBE, 0xBF,
                                  0xC1, 0xC2, 0xDF, 0xE0, 0xED, 0xEF, 0xF0, 0xF4, 0xF5, 0xFF};
    QByteArray name;
    for (int length = random.bounded(12); length > 0; --length) {
        const int byte = random.bounded(4) == 0 ? random.bounded(1, 256)
                                                : edges[random.bounded(int(sizeof edges))];
        name += static_cast<char>(byte);
    }
    return name;
}

void NativePathTest::randomBytesComeBack()
{
    QRandomGenerator random(31);
    for (int i = 0; i < 200000; ++i) {
        const QByteArray name = randomName(random);
        if (NativePath::toNative(NativePath::fromNative(name)) != name)
            QFAIL(name.toHex().constData());
    }
}

void NativePathTest::aByteOrderMarkIsPartOfTheName()
{
    const QByteArray mark("\xEF\xBB\xBF");
    QCOMPARE(NativePath::fromNative(mark), QString(QChar(0xFEFF)));
    QCOMPARE(NativePath::fromNative(mark + "a.txt"), QChar(0xFEFF) + QStringLiteral("a.txt"));
    QCOMPARE(NativePath::fromNative("\x80" + mark + "a"),
             QString(QChar(0xDC80)) + QChar(0xFEFF) + QLatin1Char('a'));
    const QByteArray twice = mark + mark + "\xFF" + mark;
    QCOMPARE(NativePath::toNative(NativePath::fromNative(twice)), twice);
}

void NativePathTest::twoNamesAreNeverShownAsTheSameText()
{
    QRandomGenerator random(32);
    QHash<QString, QByteArray> names;
    for (int i = 0; i < 50000; ++i) {
        const QByteArray name = randomName(random);
        const QString text = NativePath::fromNative(name);
        const auto known = names.constFind(text);
        if (known != names.constEnd())
            QCOMPARE(known.value(), name);
        names.insert(text, name);
    }
}

void NativePathTest::onlyTheGivenNumberOfBytesIsRead()
{
    QCOMPARE(NativePath::fromNative("abcdef", 3), QStringLiteral("abc"));
    QCOMPARE(NativePath::fromNative("\xE3\x81\x82", 2), QString(QChar(0xDCE3)) + QChar(0xDC81));
    QCOMPARE(NativePath::fromNative("a\0b", 3), QStringLiteral("a") + QChar(0) + QLatin1Char('b'));
}

void NativePathTest::anEmptyNameIsAnEmptyText()
{
    QCOMPARE(NativePath::fromNative(QByteArray()), QString());
    QCOMPARE(NativePath::fromNative("", 0), QString());
    QCOMPARE(NativePath::toNative(QString()), QByteArray());
}

void NativePathTest::aPairOfSurrogatesIsOneCharacter()
{
    // Its second half is a code that alone would stand for the byte 0x80.
    const QString pair = QString(QChar(0xD842)) + QChar(0xDC80);
    QCOMPARE(NativePath::toNative(pair), QByteArray("\xF0\xA0\xA2\x80"));
    QCOMPARE(NativePath::fromNative(NativePath::toNative(pair)), pair);
}

void NativePathTest::aLoneSurrogateThatStandsForNoByteDoesNotBecomeOne()
{
    // Such a text comes from no name; what it becomes names no other file by
    // a raw byte.
    for (const int code : {0xD800, 0xDBFF, 0xDC00, 0xDC7F, 0xDD00, 0xDFFF}) {
        const QChar unit(code);
        const QByteArray name = NativePath::toNative(QString(unit));
        QVERIFY(!name.isEmpty());
        QVERIFY(name != QByteArray(1, static_cast<char>(code & 0xFF)));
        QVERIFY(!NativePath::fromNative(name).contains(unit));
        QCOMPARE(NativePath::toNative(NativePath::fromNative(name)), name);
    }
}

QTEST_GUILESS_MAIN(NativePathTest)
#include "NativePathTest.moc"
