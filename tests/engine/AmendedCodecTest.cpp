#include "engine/AmendedCodec.h"

#include "engine/CodeSet.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QTest>

/// That a text is the same whether the toolkit has ICU's codecs or its own: what
/// every code of the Japanese code sets stands for is the same everywhere, and
/// the amended codecs agree with ICU's on whatever bytes where there are those.
class AmendedCodecTest : public QObject {
    Q_OBJECT

private slots:
    void everyCodeStandsForTheSameOnEveryPlatform_data();
    void everyCodeStandsForTheSameOnEveryPlatform();
    void codesThatSomeToolkitsLackAreRead_data();
    void codesThatSomeToolkitsLackAreRead();
    void codesThatSomeToolkitsLackAreWritten_data();
    void codesThatSomeToolkitsLackAreWritten();
    void brokenCharactersAreOneReplacement_data();
    void brokenCharactersAreOneReplacement();
    void anyBytesAreReadAsByTheCodecInUse_data();
    void anyBytesAreReadAsByTheCodecInUse();
    void everyCharacterIsWrittenAsByTheCodecInUse_data();
    void everyCharacterIsWrittenAsByTheCodecInUse();
    void aTextInPiecesIsTheSame_data();
    void aTextInPiecesIsTheSame();
    void whatCannotBeWrittenIsCounted();
};

namespace {

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray result;
    for (const int value : values)
        result += char(value);
    return result;
}

const QTextCodec &toolkits(const char *name)
{
    return *QTextCodec::codecForName(name);
}

// Null for a code that is no single character.
QChar characterOf(int codeSet, const QByteArray &code)
{
    const QString text = CodeSet::codec(codeSet)->toUnicode(code);
    return text.size() == 1 && text.at(0) != QChar(QChar::ReplacementCharacter) ? text.at(0)
                                                                                : QChar();
}

// All codes of two bytes, and those of three that begin with a shift.
QVector<QByteArray> codesOf(int codeSet)
{
    QVector<QByteArray> codes;
    const int from = codeSet == CodeSet::Iso2022Jp ? 0x21 : 0x81;
    const int to = codeSet == CodeSet::Iso2022Jp ? 0x7E : 0xFE;
    for (int first = from; first <= to; ++first) {
        if (codeSet == CodeSet::ShiftJis && ((first >= 0xA0 && first <= 0xDF) || first > 0xFC))
            continue;
        for (int second = codeSet == CodeSet::ShiftJis ? 0x40 : from; second <= to; ++second) {
            const QByteArray code = bytes({first, second});
            if (codeSet == CodeSet::Iso2022Jp)
                codes.append("\x1B$B" + code + "\x1B(B");
            else
                codes.append(code);
            if (codeSet == CodeSet::EucJp)
                codes.append('\x8F' + code);
        }
    }
    return codes;
}

void addCodeSets()
{
    QTest::addColumn<int>("codeSet");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis);
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp);
}

QByteArray randomBytes(QRandomGenerator *random)
{
    QByteArray result;
    const int size = 1 + random->bounded(8);
    for (int i = 0; i < size; ++i) {
        switch (random->bounded(4)) {
        case 0:
            result += char(random->bounded(0x100));
            break;
        case 1:
            result += char(0x80 + random->bounded(0x21));
            break;
        case 2:
            result += char(0xA0 + random->bounded(0x60));
            break;
        default:
            result += char(0x30 + random->bounded(0x60));
        }
        if (uchar(result.back()) < 0x80)
            result.back() = 'a'; // some controls differ in Shift-JIS
    }
    return result;
}

QString inPieces(const QTextCodec &codec, const QByteArray &content, int size)
{
    QTextCodec::ConverterState state;
    QString text;
    for (int at = 0; at < content.size(); at += size)
        text += codec.toUnicode(content.constData() + at, qMin(size, content.size() - at), &state);
    return text;
}

} // namespace

void AmendedCodecTest::everyCodeStandsForTheSameOnEveryPlatform_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<int>("known");
    QTest::addColumn<QByteArray>("digest");
    QTest::newRow("Shift-JIS") << int(CodeSet::ShiftJis) << 9604
                               << QByteArray("2dc875d802df19807be5188fd71bdde20f3f1a31");
    QTest::newRow("EUC-JP") << int(CodeSet::EucJp) << 16274
                            << QByteArray("0ff616f51ea217916de4967c411b92be96f0da64");
    QTest::newRow("ISO-2022-JP") << int(CodeSet::Iso2022Jp) << 7336
                                 << QByteArray("434d036e0dce43bed9f56c4d75a4c1846983cc4b");
}

void AmendedCodecTest::everyCodeStandsForTheSameOnEveryPlatform()
{
    QFETCH(int, codeSet);
    QFETCH(int, known);
    QFETCH(QByteArray, digest);
    QString characters;
    int count = 0;
    for (const QByteArray &code : codesOf(codeSet)) {
        characters += characterOf(codeSet, code);
        count += characters.back().isNull() ? 0 : 1;
    }
    QCOMPARE(count, known);
    QCOMPARE(QCryptographicHash::hash(characters.toUtf8(), QCryptographicHash::Sha1).toHex(),
             digest);
}

void AmendedCodecTest::codesThatSomeToolkitsLackAreRead_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QString>("text");
    const int shiftJis = CodeSet::ShiftJis;
    const int eucJp = CodeSet::EucJp;
    const int jis = CodeSet::Iso2022Jp;
    QTest::newRow("NUL") << shiftJis << QByteArray("a\0b", 3) << QString::fromLatin1("a\0b", 3);
    QTest::newRow("first user-defined")
        << shiftJis << bytes({0xF0, 0x40}) << QString(QChar(0xE000));
    QTest::newRow("last user-defined") << shiftJis << bytes({0xF9, 0xFC}) << QString(QChar(0xE757));
    QTest::newRow("circled one") << eucJp << bytes({0xAD, 0xA1}) << QStringLiteral("①");
    QTest::newRow("IBM's first kanji") << eucJp << bytes({0xF9, 0xA1}) << QStringLiteral("纊");
    QTest::newRow("last of IBM's rows") << eucJp << bytes({0xFC, 0xFE}) << QString(QChar(0xFF02));
    QTest::newRow("narrow cent") << eucJp << bytes({0x8E, 0xE0}) << QString(QChar(0xA2));
    QTest::newRow("broken bar") << eucJp << bytes({0x8F, 0xA2, 0xC3}) << QString(QChar(0xA6));
    QTest::newRow("small roman one") << eucJp << bytes({0x8F, 0xF3, 0xA1}) << QStringLiteral("ⅰ");
    QTest::newRow("sign for a company")
        << eucJp << bytes({0x8F, 0xF3, 0xB7}) << QStringLiteral("㈱");
    QTest::newRow("control") << eucJp << bytes({0x85}) << QString(QChar(0x85));
    QTest::newRow("mail") << jis << QByteArray("a\x1B$B-!F|-\"\x1B(Bb\n")
                          << QStringLiteral("a①日②b\n");
    QTest::newRow("mail with IBM's kanji")
        << jis << QByteArray("\x1B$@y!\x1B(B") << QStringLiteral("纊");
}

void AmendedCodecTest::codesThatSomeToolkitsLackAreRead()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, code);
    QFETCH(QString, text);
    QCOMPARE(CodeSet::codec(codeSet)->toUnicode(code), text);
    for (int size = 1; size < code.size(); ++size)
        QCOMPARE(inPieces(*CodeSet::codec(codeSet), code, size), text);
}

void AmendedCodecTest::codesThatSomeToolkitsLackAreWritten_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("code");
    QTest::newRow("user-defined") << int(CodeSet::ShiftJis) << QString(QChar(0xE757))
                                  << bytes({0xF9, 0xFC});
    QTest::newRow("between others") << int(CodeSet::EucJp) << QStringLiteral("あ①②a")
                                    << bytes({0xA4, 0xA2, 0xAD, 0xA1, 0xAD, 0xA2, 'a'});
    QTest::newRow("small roman one")
        << int(CodeSet::EucJp) << QStringLiteral("ⅰ") << bytes({0xFC, 0xF1});
    QTest::newRow("one that stands in an older row, too")
        << int(CodeSet::EucJp) << QStringLiteral("≒") << bytes({0xA2, 0xE2});
}

void AmendedCodecTest::codesThatSomeToolkitsLackAreWritten()
{
    QFETCH(int, codeSet);
    QFETCH(QString, text);
    QFETCH(QByteArray, code);
    QVERIFY(CodeSet::codec(codeSet)->canEncode(text));
    QCOMPARE(CodeSet::codec(codeSet)->fromUnicode(text), code);
}

void AmendedCodecTest::brokenCharactersAreOneReplacement_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    const QString broken(QChar(QChar::ReplacementCharacter));
    const int shiftJis = CodeSet::ShiftJis;
    const int eucJp = CodeSet::EucJp;
    const auto after = [&broken](const char *rest) -> QString {
        return broken + QLatin1String(rest);
    };
    QTest::newRow("line feed") << shiftJis << bytes({0x81, '\n', 'a'}) << after("\na");
    QTest::newRow("digit") << shiftJis << bytes({0x81, '0'}) << after("0");
    QTest::newRow("no trail byte") << shiftJis << bytes({0x81, 0xFD, 'a'}) << broken + after("a");
    QTest::newRow("empty place") << shiftJis << bytes({0x85, 0x40, 'a'}) << after("a");
    QTest::newRow("line feed after a lead") << eucJp << bytes({0xA4, '\n'}) << after("\n");
    QTest::newRow("letter after a shift") << eucJp << bytes({0x8E, 'a'}) << after("a");
    QTest::newRow("lead after a shift") << eucJp << bytes({0x8E, 0xE5, 'a'}) << broken + after("a");
    QTest::newRow("third byte") << eucJp << bytes({0x8F, 0xA2, 'a'}) << broken + after("a");
    QTest::newRow("what nothing begins with") << eucJp << bytes({0xA4, 0xFF, 'a'}) << after("a");
}

void AmendedCodecTest::brokenCharactersAreOneReplacement()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, content);
    QFETCH(QString, text);
    QCOMPARE(CodeSet::codec(codeSet)->toUnicode(content), text);
}

void AmendedCodecTest::anyBytesAreReadAsByTheCodecInUse_data()
{
    addCodeSets();
}

void AmendedCodecTest::anyBytesAreReadAsByTheCodecInUse()
{
    QFETCH(int, codeSet);
    const QTextCodec &used = *CodeSet::codec(codeSet);
    // Made last: a codec is found by its name as soon as it is made.
    const QTextCodec &shiftJis = toolkits("Shift-JIS");
    const QTextCodec &inner = codeSet == CodeSet::ShiftJis ? shiftJis : toolkits("EUC-JP");
    const QTextCodec &amended = *new AmendedCodec(codeSet, inner, shiftJis);
    QRandomGenerator random(1);
    for (int i = 0; i < 20000; ++i) {
        const QByteArray content = randomBytes(&random);
        QTextCodec::ConverterState state;
        const QString wanted = used.toUnicode(content.constData(), content.size(), &state);
        const QString text = inPieces(amended, content, 1 + random.bounded(content.size()));
        QVERIFY2(text == wanted, content.toHex().constData());
    }
}

void AmendedCodecTest::everyCharacterIsWrittenAsByTheCodecInUse_data()
{
    addCodeSets();
}

void AmendedCodecTest::everyCharacterIsWrittenAsByTheCodecInUse()
{
    QFETCH(int, codeSet);
    const QTextCodec &used = *CodeSet::codec(codeSet);
    const QTextCodec &shiftJis = toolkits("Shift-JIS");
    const QTextCodec &inner = codeSet == CodeSet::ShiftJis ? shiftJis : toolkits("EUC-JP");
    const QTextCodec &amended = *new AmendedCodec(codeSet, inner, shiftJis);
    for (int value = 0x80; value <= 0xFFFF; ++value) {
        const QChar character{ushort(value)};
        if (character.isSurrogate())
            continue;
        QCOMPARE(amended.fromUnicode(QString(character)), used.fromUnicode(QString(character)));
        QCOMPARE(amended.canEncode(character), used.canEncode(character));
    }
}

void AmendedCodecTest::aTextInPiecesIsTheSame_data()
{
    QTest::addColumn<int>("codeSet");
    QTest::addColumn<QByteArray>("content");
    const QString text = QStringLiteral("日本①②の語x㈱。\n纊a ⅰ");
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp})
        QTest::newRow(qPrintable(CodeSet::name(codeSet)))
            << codeSet << CodeSet::codec(codeSet)->fromUnicode(text);
    QTest::newRow("ISO-2022-JP") << int(CodeSet::Iso2022Jp)
                                 << QByteArray("a\x1B$BF|K\\-!-\"$N\x1B(Jx\x1B$@-j!#\x1B(B\n"
                                               "\x1B$By!F\x1B(B-!\x1B$B-");
}

void AmendedCodecTest::aTextInPiecesIsTheSame()
{
    QFETCH(int, codeSet);
    QFETCH(QByteArray, content);
    const QTextCodec &codec = *CodeSet::codec(codeSet);
    const QString text = inPieces(codec, content, content.size());
    QVERIFY(text.contains(QStringLiteral("①②")));
    for (int size = 1; size <= content.size(); ++size)
        QCOMPARE(inPieces(codec, content, size), text);
}

void AmendedCodecTest::whatCannotBeWrittenIsCounted()
{
    for (const int codeSet : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp}) {
        const QString text = QStringLiteral("①あ\u0E01②");
        QTextCodec::ConverterState state;
        CodeSet::codec(codeSet)->fromUnicode(text.constData(), text.size(), &state);
        QCOMPARE(state.invalidChars, 1);
    }
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    AmendedCodecTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AmendedCodecTest.moc"
