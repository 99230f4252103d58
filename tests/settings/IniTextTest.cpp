#include "settings/IniText.h"

#include "tests/support/ScratchFolder.h"

#include <QPoint>
#include <QSettings>
#include <QSize>
#include <QTest>

#include <random>

using IniText::Charset;

// The ini reader and writer of Qt is the measure: files go both ways between it
// and this program.
class IniTextTest : public QObject {
    Q_OBJECT

private slots:
    void keysAreSpelledAsQtSpellsThem_data();
    void keysAreSpelledAsQtSpellsThem();
    void aKeyTypedInUtf8IsReadAsTyped();
    void aBrokenPercentEscapeIsPlainText();
    void valuesAreSpelledAsQtSpellsThem_data();
    void valuesAreSpelledAsQtSpellsThem();
    void charactersBeyondTheBasicPlaneSurviveInUtf8();
    void aLoneSurrogateSurvives();
    void aByteOrderMarkInATextSurvives();
    void aDigitAfterANumericEscapeIsNotReadAsPartOfIt();
    void anEmptyListIsNotAListOfOneEmptyText();
    void aSerialisedObjectStaysAText();
    void aTextWithBareCommasIsOneText();
    void anUnfinishedEscapeOrQuoteIsHarmless_data();
    void anUnfinishedEscapeOrQuoteIsHarmless();
    void whatIsWrittenIsReadByQtAsItWas_data();
    void whatIsWrittenIsReadByQtAsItWas();
    void whatQtWritesIsReadAsItWas_data();
    void whatQtWritesIsReadAsItWas();
    void valuesTypedByHandAreReadAsQtReadsThem_data();
    void valuesTypedByHandAreReadAsQtReadsThem();

private:
    QString newPath();
    // Many at a time: each file that Qt writes waits for the disk.
    QByteArrayList spelledByQt(const QVariantList &values, Charset charset);
    QVariantList readByQt(const QByteArrayList &values, Charset charset);
    QVariant randomValue(bool beyondBasicPlane);
    QString randomText(bool beyondBasicPlane);
    QByteArray randomTyping();
    int random(int below);

    ScratchFolder m_folder;
    // Qt remembers files by name; a fresh name is read for sure.
    int m_files = 0;
    std::mt19937 m_random{20240917};
};

namespace {

void addCharsets()
{
    QTest::addColumn<Charset>("charset");
    QTest::newRow("Latin-1 with escapes") << Charset::Latin1;
    QTest::newRow("UTF-8") << Charset::Utf8;
}

// However a setting is asked for.
bool sameWhenRead(const QVariant &one, const QVariant &other)
{
    return one.toStringList() == other.toStringList() && one.toString() == other.toString()
        && one.toPoint() == other.toPoint() && one.toSize() == other.toSize()
        && one.toByteArray() == other.toByteArray() && one.toInt() == other.toInt()
        && one.toBool() == other.toBool();
}

bool comesBackAs(QVariant read, const QVariant &written)
{
    // An empty list is written as an invalid value, which converts to no list.
    if (written.userType() == QMetaType::QStringList)
        return read.toStringList() == written.toStringList();
    read.convert(written.userType());
    return read == written;
}

// In the order of the numbers also when sorted.
QString keyOf(int number)
{
    return QStringLiteral("key%1").arg(number, 5, 10, QLatin1Char('0'));
}

} // namespace

Q_DECLARE_METATYPE(IniText::Charset)

QString IniTextTest::newPath()
{
    return m_folder.filePath(QStringLiteral("%1.ini").arg(++m_files));
}

QByteArrayList IniTextTest::spelledByQt(const QVariantList &values, Charset charset)
{
    const QString path = newPath();
    {
        QSettings file(path, QSettings::IniFormat);
        if (charset == Charset::Utf8)
            file.setIniCodec("UTF-8");
        for (int i = 0; i < values.size(); ++i)
            file.setValue(keyOf(i), values.at(i));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QByteArrayList();
    QByteArrayList lines = file.readAll().split('\n');
    lines.removeFirst();
    lines.removeLast();
    for (QByteArray &line : lines)
        line.remove(0, line.indexOf('=') + 1);
    return lines;
}

QVariantList IniTextTest::readByQt(const QByteArrayList &values, Charset charset)
{
    QByteArray bytes = "[General]\n";
    for (int i = 0; i < values.size(); ++i)
        bytes += keyOf(i).toLatin1() + '=' + values.at(i) + '\n';
    QSettings file(m_folder.write(QStringLiteral("%1.ini").arg(++m_files), bytes),
                   QSettings::IniFormat);
    if (charset == Charset::Utf8)
        file.setIniCodec("UTF-8");
    QVariantList read;
    for (int i = 0; i < values.size(); ++i)
        read.append(file.value(keyOf(i), QStringLiteral("no such key")));
    return read;
}

int IniTextTest::random(int below)
{
    return std::uniform_int_distribution<int>(0, below - 1)(m_random);
}

QString IniTextTest::randomText(bool beyondBasicPlane)
{
    static const QString special =
        QStringLiteral(" \t\n\r\\\",;=@()[]%'?x0a1f\a\b\f\vé漢字ソ表能ﾃ\u00a0\u3000\u007f\u0085");
    QString text;
    const int length = random(8);
    for (int i = 0; i < length; ++i) {
        const int kind = random(10);
        if (kind < 7)
            text += special.at(random(special.size()));
        else if (kind < 8)
            text += QChar(static_cast<ushort>(1 + random(0x1f)));
        else if (beyondBasicPlane && kind < 9)
            text += QString::fromUcs4(U"\U00020BB7", 1);
        else
            text += QChar(static_cast<ushort>(0x20 + random(0xd7e0)));
    }
    return text;
}

QVariant IniTextTest::randomValue(bool beyondBasicPlane)
{
    QByteArray bytes;
    QStringList list;
    switch (random(8)) {
    case 0:
        return QPoint(random(5000) - 2500, random(5000) - 2500);
    case 1:
        return QSize(random(5000) - 1, random(5000) - 1);
    case 2:
        return random(2) == 1;
    case 3:
        return random(2000000) - 1000000;
    case 4:
        for (int i = random(12); i > 0; --i)
            bytes += static_cast<char>(random(256));
        return bytes;
    case 5:
        for (int i = random(4); i > 0; --i)
            list += randomText(beyondBasicPlane);
        return list;
    default:
        return randomText(beyondBasicPlane);
    }
}

void IniTextTest::keysAreSpelledAsQtSpellsThem_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("spelled");
    QTest::newRow("plain") << QStringLiteral("grep_pointSize-1.0")
                           << QByteArray("grep_pointSize-1.0");
    QTest::newRow("slash") << QStringLiteral("a/b") << QByteArray("a\\b");
    QTest::newRow("blank and percent") << QStringLiteral("a b%") << QByteArray("a%20b%25");
    QTest::newRow("Latin-1") << QStringLiteral("é") << QByteArray("%E9");
    QTest::newRow("Japanese") << QStringLiteral("日本") << QByteArray("%U65E5%U672C");
    QTest::newRow("low code beyond Latin-1") << QStringLiteral("ā") << QByteArray("%U0101");
    QTest::newRow("control") << QStringLiteral("\t") << QByteArray("%09");
}

void IniTextTest::keysAreSpelledAsQtSpellsThem()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, spelled);
    QCOMPARE(IniText::escapedKey(key), spelled);
    QCOMPARE(IniText::unescapedKey(spelled, Charset::Latin1), key);
    QCOMPARE(IniText::unescapedKey(spelled, Charset::Utf8), key);

    const QString path = newPath();
    QSettings file(path, QSettings::IniFormat);
    // Behind a section, as a slash would make one.
    file.setValue(QStringLiteral("section/") + key, 1);
    file.sync();
    QFile written(path);
    QVERIFY(written.open(QIODevice::ReadOnly | QIODevice::Text));
    QCOMPARE(written.readAll(), "[section]\n" + spelled + "=1\n");
}

void IniTextTest::aKeyTypedInUtf8IsReadAsTyped()
{
    QCOMPARE(IniText::unescapedKey("日本", Charset::Utf8), QStringLiteral("日本"));
    QCOMPARE(IniText::unescapedKey("a%E9日", Charset::Utf8), QStringLiteral("aé日"));
    QCOMPARE(IniText::unescapedKey("\xe9", Charset::Latin1), QStringLiteral("é"));
}

void IniTextTest::aBrokenPercentEscapeIsPlainText()
{
    for (const char *text : {"%", "%4", "%zz", "%U", "%U12", "%U12zz", "a%"}) {
        QCOMPARE(IniText::unescapedKey(text, Charset::Utf8), QString::fromLatin1(text));
        QCOMPARE(IniText::unescapedKey(text, Charset::Latin1), QString::fromLatin1(text));
    }
}

void IniTextTest::valuesAreSpelledAsQtSpellsThem_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("spelled");
    QTest::addColumn<QByteArray>("spelledInUtf8");
    const auto row = [](const char *name, const QVariant &value, const QByteArray &spelled,
                        const QByteArray &spelledInUtf8 = QByteArray()) {
        QTest::newRow(name) << value << spelled
                            << (spelledInUtf8.isNull() ? spelled : spelledInUtf8);
    };
    row("point", QPoint(3, -4), "@Point(3 -4)");
    row("size", QSize(800, 300), "@Size(800 300)");
    row("true", true, "true");
    row("false", false, "false");
    row("number", -12, "-12");
    row("empty text", QString(), "");
    row("plain text", QStringLiteral("a b"), "a b");
    row("Japanese", QStringLiteral("検索"), "\\x691c\\x7d22", "検索");
    row("comma", QStringLiteral("a,b"), "\"a,b\"");
    row("semicolon", QStringLiteral("a;b"), "\"a;b\"");
    row("equals sign", QStringLiteral("a=b"), "\"a=b\"");
    row("blank in front", QStringLiteral(" a"), "\" a\"");
    row("blank behind", QStringLiteral("a "), "\"a \"");
    row("quote and backslash", QStringLiteral("\"\\"), "\\\"\\\\");
    row("line ends", QStringLiteral("a\r\nb\t"), "a\\r\\nb\\t");
    row("at sign", QStringLiteral("@file"), "@@file");
    row("NUL", QString(QChar(QChar::Null)).append(QLatin1Char('z')), "@String(\\0z)");
    row("bytes", QByteArray("\0\xff\x80z", 4), "@ByteArray(\\0\\xff\\x80z)");
    row("empty bytes", QByteArray(), "@ByteArray()");
    row("empty list", QStringList(), "@Invalid()");
    row("list of one", QStringList(QStringLiteral("a")), "a");
    row("list",
        QStringList({QStringLiteral("a"), QString(), QStringLiteral("@b"), QStringLiteral("c,d")}),
        "a, , @@b, \"c,d\"");
}

void IniTextTest::valuesAreSpelledAsQtSpellsThem()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, spelled);
    QFETCH(QByteArray, spelledInUtf8);
    QCOMPARE(IniText::escapedValue(value, Charset::Latin1), spelled);
    QCOMPARE(IniText::escapedValue(value, Charset::Utf8), spelledInUtf8);
    QCOMPARE(spelledByQt({value}, Charset::Latin1), QByteArrayList{spelled});
    QCOMPARE(spelledByQt({value}, Charset::Utf8), QByteArrayList{spelledInUtf8});
}

void IniTextTest::charactersBeyondTheBasicPlaneSurviveInUtf8()
{
    const QString text = QStringLiteral("𠮷野家😀");
    QCOMPARE(IniText::escapedValue(text, Charset::Utf8), text.toUtf8());
    QCOMPARE(IniText::unescapedText(text.toUtf8(), Charset::Utf8), text);
    QCOMPARE(readByQt({text.toUtf8()}, Charset::Utf8), QVariantList{text});
}

void IniTextTest::aLoneSurrogateSurvives()
{
    for (const ushort code : {ushort(0xd842), ushort(0xdfb7)}) {
        const QString text = QLatin1Char('a') + QString(QChar(code)) + QLatin1Char('b');
        const QByteArray spelled = IniText::escapedValue(text, Charset::Utf8);
        QCOMPARE(IniText::unescapedText(spelled, Charset::Utf8), text);
        QCOMPARE(readByQt({spelled}, Charset::Utf8), QVariantList{text});
    }
}

void IniTextTest::aByteOrderMarkInATextSurvives()
{
    const QString text = QString(QChar(0xfeff)) + QLatin1Char('a');
    const QByteArray spelled = IniText::escapedValue(text, Charset::Utf8);
    QCOMPARE(IniText::unescapedText(spelled, Charset::Utf8), text);
    QCOMPARE(readByQt({spelled}, Charset::Utf8), QVariantList{text});
}

void IniTextTest::aDigitAfterANumericEscapeIsNotReadAsPartOfIt()
{
    QCOMPARE(IniText::escapedValue(QStringLiteral("漢fz"), Charset::Latin1),
             QByteArray("\\x6f22\\x66z"));
    QCOMPARE(IniText::unescapedText("\\x6f22\\x66z", Charset::Latin1), QStringLiteral("漢fz"));
}

void IniTextTest::anEmptyListIsNotAListOfOneEmptyText()
{
    const QByteArray none = IniText::escapedValue(QStringList(), Charset::Utf8);
    QCOMPARE(IniText::unescapedValue(none, Charset::Utf8).toStringList(), QStringList());
    const QStringList one{QString()};
    const QByteArray empty = IniText::escapedValue(one, Charset::Utf8);
    QCOMPARE(IniText::unescapedValue(empty, Charset::Utf8).toStringList(), one);
}

void IniTextTest::aSerialisedObjectStaysAText()
{
    // A list of 2147483647 elements, were it believed.
    const QByteArray bomb = QByteArrayLiteral("@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)");
    const QVariant value = IniText::unescapedValue(bomb, Charset::Latin1);
    QCOMPARE(value.userType(), static_cast<int>(QMetaType::QString));
    QVERIFY(value.toString().startsWith(QLatin1String("@Variant(")));
    QCOMPARE(IniText::unescapedValue("@DateTime(\\0)", Charset::Latin1).userType(),
             static_cast<int>(QMetaType::QString));
}

void IniTextTest::aTextWithBareCommasIsOneText()
{
    QCOMPARE(IniText::unescapedText(" a, b ,c ", Charset::Utf8), QStringLiteral("a, b ,c"));
    QCOMPARE(IniText::unescapedText("@@a, b", Charset::Utf8), QStringLiteral("@a, b"));
    QCOMPARE(IniText::unescapedText("\"a,b\"", Charset::Utf8), QStringLiteral("a,b"));
}

void IniTextTest::anUnfinishedEscapeOrQuoteIsHarmless_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("backslash") << QByteArray("a\\") << QStringLiteral("a");
    QTest::newRow("hex") << QByteArray("a\\x") << QStringLiteral("a");
    QTest::newRow("hex without digits") << QByteArray("a\\xz") << QStringLiteral("az");
    QTest::newRow("octal") << QByteArray("a\\101") << QStringLiteral("aA");
    QTest::newRow("many digits") << QByteArray("\\x123456789abcdef41") << QString(QChar(0xef41));
    QTest::newRow("unknown") << QByteArray("a\\qb") << QStringLiteral("ab");
    QTest::newRow("quote") << QByteArray("\"a b ") << QStringLiteral("a b ");
    QTest::newRow("NUL byte") << QByteArray("a\0b", 3)
                              << QStringLiteral("a") + QChar(QChar::Null) + QLatin1Char('b');
    QTest::newRow("not UTF-8") << QByteArray("a\xff") << QStringLiteral("a\ufffd");
    QTest::newRow("nothing") << QByteArray() << QString();
}

void IniTextTest::anUnfinishedEscapeOrQuoteIsHarmless()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(IniText::unescapedText(bytes, Charset::Utf8), text);
    QCOMPARE(IniText::unescapedValue(bytes, Charset::Utf8).toString(), text);
}

void IniTextTest::whatIsWrittenIsReadByQtAsItWas_data()
{
    addCharsets();
}

void IniTextTest::whatIsWrittenIsReadByQtAsItWas()
{
    QFETCH(Charset, charset);
    QVariantList values;
    QByteArrayList spelled;
    for (int i = 0; i < 3000; ++i) {
        values.append(randomValue(true));
        spelled.append(IniText::escapedValue(values.last(), charset));
        QVERIFY2(!spelled.last().contains('\n') && !spelled.last().contains('\r'),
                 spelled.last().constData());
    }
    const QVariantList theirs = readByQt(spelled, charset);
    for (int i = 0; i < values.size(); ++i) {
        QVERIFY2(comesBackAs(theirs.at(i), values.at(i)), spelled.at(i).constData());
        QVERIFY2(comesBackAs(IniText::unescapedValue(spelled.at(i), charset), values.at(i)),
                 spelled.at(i).constData());
    }
}

void IniTextTest::whatQtWritesIsReadAsItWas_data()
{
    addCharsets();
}

void IniTextTest::whatQtWritesIsReadAsItWas()
{
    QFETCH(Charset, charset);
    QVariantList values;
    // Qt's own UTF-8 form has no characters beyond the basic plane.
    for (int i = 0; i < 3000; ++i)
        values.append(randomValue(charset == Charset::Latin1));
    const QByteArrayList spelled = spelledByQt(values, charset);
    QCOMPARE(spelled.size(), values.size());
    for (int i = 0; i < values.size(); ++i) {
        QCOMPARE(IniText::escapedValue(values.at(i), charset), spelled.at(i));
        QVERIFY2(comesBackAs(IniText::unescapedValue(spelled.at(i), charset), values.at(i)),
                 spelled.at(i).constData());
    }
}

void IniTextTest::valuesTypedByHandAreReadAsQtReadsThem_data()
{
    addCharsets();
}

QByteArray IniTextTest::randomTyping()
{
    static const QByteArrayList pieces{"a",          "b c",         " ",          "\t",
                                       ",",          ", ",          "\"",         "\\\"",
                                       "\\\\",       "\\x41",       "\\x",        "\\101",
                                       "\\n",        "\\q",         "=",          "@",
                                       "@@",         "@Point(1 2)", "@Size(3 4)", "@ByteArray(x)",
                                       "@Invalid()", "@String(s)",  "(",          "漢字",
                                       "[",          "]",           "%41"};
    QByteArray typed;
    for (int n = random(7); n > 0; --n)
        typed += pieces.at(random(pieces.size()));
    // A quote that is not closed goes on over the line end for Qt.
    bool open = false;
    for (int at = 0; at < typed.size(); ++at) {
        if (typed.at(at) == '\\')
            ++at;
        else if (typed.at(at) == '"')
            open = !open;
    }
    return open ? typed + '"' : typed;
}

void IniTextTest::valuesTypedByHandAreReadAsQtReadsThem()
{
    QFETCH(Charset, charset);
    QByteArrayList typed;
    for (int i = 0; i < 20000; ++i)
        typed.append(randomTyping());
    const QVariantList theirs = readByQt(typed, charset);
    for (int i = 0; i < typed.size(); ++i) {
        const QVariant ours = IniText::unescapedValue(typed.at(i), charset);
        QVERIFY2(sameWhenRead(ours, theirs.at(i)), typed.at(i).constData());
        QVERIFY2(ours.isValid() == theirs.at(i).isValid(), typed.at(i).constData());
    }
}

QTEST_GUILESS_MAIN(IniTextTest)
#include "IniTextTest.moc"
