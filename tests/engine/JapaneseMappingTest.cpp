#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"

#include <QMap>
#include <QTest>

#include <iconv.h>

#include <array>

/// The Japanese code sets as they are decoded here against an independent
/// table: code page 932 for Shift-JIS, and for EUC-JP the form of it that has
/// the same repertoire. Where the two are known to differ is listed, so that a
/// toolkit with other tables is noticed.
class JapaneseMappingTest : public QObject {
    Q_OBJECT

private slots:
    void shiftJisSingleBytesAreThoseOfCodePage932();
    void shiftJisTwoByteCodesAreThoseOfCodePage932();
    void eucJpSingleBytesAreThoseOfCodePage932();
    void eucJpTwoByteCodesAreThoseOfCodePage932();
    void eucJpKatakanaAreThoseOfCodePage932();
    void eucJpThreeByteCodesAreThoseOfCodePage932();
};

namespace {

/// Text by code; empty where the code stands for nothing.
using Mapping = QMap<QByteArray, QString>;

class Converter {
public:
    explicit Converter(const char *codeSet) : m_converter(::iconv_open("UTF-16LE", codeSet))
    {
        if (reinterpret_cast<qintptr>(m_converter) == -1)
            qFatal("iconv lacks %s", codeSet);
    }
    ~Converter() { ::iconv_close(m_converter); }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    QString convert(QByteArray code) const
    {
        std::array<char, 16> units = {};
        char *in = code.data();
        size_t inLeft = size_t(code.size());
        char *out = units.data();
        size_t outLeft = units.size();
        ::iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
        const size_t result = ::iconv(m_converter, &in, &inLeft, &out, &outLeft);
        if (result == static_cast<size_t>(-1) || inLeft != 0)
            return QString();
        return QString::fromUtf16(reinterpret_cast<const ushort *>(units.data()),
                                  int(units.size() - outLeft) / 2);
    }

private:
    const iconv_t m_converter;
};

QByteArray code(std::initializer_list<int> bytes)
{
    QByteArray result;
    for (const int byte : bytes)
        result += char(byte);
    return result;
}

// Empty unless the whole code is one character.
QString decoded(const QByteArray &code, int codeSet)
{
    const QString text = decodeText(code.constData(), code.size(), codeSet);
    const bool single = text.size() == 1 && text.at(0) != QChar(QChar::ReplacementCharacter);
    return single ? text : QString();
}

QByteArray shown(const QString &text)
{
    if (text.isEmpty())
        return "nothing";
    QByteArray units;
    for (const QChar unit : text)
        units += "U+" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0').toUpper();
    return units;
}

// All codes for which decoding and converter disagree, with what decoding gives;
// they are written to the log by their first byte, or bytes, and first code.
class Comparison {
public:
    Comparison(int codeSet, const char *converter) : m_codeSet(codeSet), m_converter(converter) { }

    void compare(const QByteArray &wanted)
    {
        const QString here = decoded(wanted, m_codeSet);
        const QString there = m_converter.convert(wanted);
        ++m_compared;
        if (here == there)
            return;
        m_differences.insert(wanted, here);
        const QByteArray row = wanted.left(wanted.size() - 1).toHex().toUpper();
        const QByteArray first =
            wanted.toHex().toUpper() + " " + shown(here) + ", elsewhere " + shown(there);
        if (!m_firstByRow.contains(row))
            m_firstByRow.insert(row, first);
        ++m_countByRow[row];
    }

    Mapping differences() const
    {
        qInfo("%d codes compared, %d differ", m_compared, m_differences.size());
        for (auto row = m_firstByRow.begin(); row != m_firstByRow.end(); ++row)
            qInfo("%d in row %s, first %s", m_countByRow.value(row.key()), row.key().constData(),
                  row.value().constData());
        return m_differences;
    }

private:
    const int m_codeSet;
    const Converter m_converter;
    int m_compared = 0;
    Mapping m_differences;
    QMap<QByteArray, QByteArray> m_firstByRow;
    QMap<QByteArray, int> m_countByRow;
};

void compareMappings(const Mapping &differences, const Mapping &known)
{
    for (auto entry = differences.begin(); entry != differences.end(); ++entry) {
        const QByteArray name = entry.key().toHex();
        QVERIFY2(known.contains(entry.key()), name.constData());
        QCOMPARE(QByteArray(name + shown(entry.value())),
                 QByteArray(name + shown(known.value(entry.key()))));
    }
    for (auto entry = known.begin(); entry != known.end(); ++entry) {
        const QByteArray name = entry.key().toHex();
        QVERIFY2(differences.contains(entry.key()), name.constData()); // differs no more
    }
}

QByteArray shiftJisOfRow(int row, int cell)
{
    const int lead = (row - 1) / 2 + (row < 63 ? 0x81 : 0xC1);
    const int trail = row % 2 == 0 ? cell + 0x9E : cell + (cell < 64 ? 0x3F : 0x40);
    return code({lead, trail});
}

void addUnmappedRow(Mapping *known, const QByteArray &lead)
{
    for (int cell = 1; cell <= 94; ++cell)
        known->insert(lead + char(0xA0 + cell), QString());
}

} // namespace

void JapaneseMappingTest::shiftJisSingleBytesAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::ShiftJis, "CP932");
    for (int byte = 0; byte <= 0xFF; ++byte) {
        if (byte != '\r')
            comparison.compare(code({byte}));
    }
    // ICU's table exchanges three controls, as PC code pages do.
    const Mapping known = {{"\x1A", QString(QChar(0x1C))},
                           {"\x1C", QString(QChar(0x7F))},
                           {"\x7F", QString(QChar(0x1A))}};
    compareMappings(comparison.differences(), known);
}

void JapaneseMappingTest::shiftJisTwoByteCodesAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::ShiftJis, "CP932");
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead >= 0xA0 && lead <= 0xDF)
            continue;
        for (int trail = 0x40; trail <= 0xFC; ++trail)
            comparison.compare(code({lead, trail}));
    }
    compareMappings(comparison.differences(), {});
}

void JapaneseMappingTest::eucJpSingleBytesAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::EucJp, "EUC-JP-MS");
    for (int byte = 0; byte <= 0xFF; ++byte) {
        if (byte != '\r')
            comparison.compare(code({byte}));
    }
    compareMappings(comparison.differences(), {});
}

void JapaneseMappingTest::eucJpTwoByteCodesAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::EucJp, "EUC-JP-MS");
    for (int lead = 0xA1; lead <= 0xFE; ++lead) {
        for (int trail = 0xA1; trail <= 0xFE; ++trail)
            comparison.compare(code({lead, trail}));
    }
    Mapping known;
    // The user-defined rows are not mapped here,
    for (const int lead : {0xF5, 0xF6, 0xF7, 0xF8, 0xFD, 0xFE})
        addUnmappedRow(&known, code({lead}));
    // except for four in which code page 932 has NEC's selection of IBM's kanji.
    const Converter codePage932("CP932");
    for (int row = 89; row <= 92; ++row) {
        for (int cell = 1; cell <= 94; ++cell)
            known.insert(code({0xA0 + row, 0xA0 + cell}),
                         codePage932.convert(shiftJisOfRow(row, cell)));
    }
    compareMappings(comparison.differences(), known);
}

void JapaneseMappingTest::eucJpKatakanaAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::EucJp, "EUC-JP-MS");
    for (int trail = 0xA1; trail <= 0xFE; ++trail)
        comparison.compare(code({0x8E, trail}));
    const Mapping known = {{"\x8E\xE0", QString(QChar(0xA2))},
                           {"\x8E\xE1", QString(QChar(0xA3))},
                           {"\x8E\xE2", QString(QChar(0xAC))}};
    compareMappings(comparison.differences(), known);
}

void JapaneseMappingTest::eucJpThreeByteCodesAreThoseOfCodePage932()
{
    Comparison comparison(CodeSet::EucJp, "EUC-JP-MS");
    for (int second = 0xA1; second <= 0xFE; ++second) {
        for (int third = 0xA1; third <= 0xFE; ++third)
            comparison.compare(code({0x8F, second, third}));
    }
    Mapping known = {{"\x8F\xA2\xC3", QString(QChar(0xA6))}}; // the broken bar, full width there
    // IBM's Roman numerals and the sign for a company stand in other places.
    for (int i = 0; i < 10; ++i) {
        known.insert(code({0x8F, 0xF3, 0xA1 + i}), QString(QChar(0x2170 + i)));
        known.insert(code({0x8F, 0xF3, 0xAB + i}), QString(QChar(0x2160 + i)));
        known.insert(code({0x8F, 0xF3, 0xF3 + i}), QString());
    }
    known.insert("\x8F\xF3\xB7", QString(QChar(0x3231)));
    known.insert("\x8F\xF3\xFD", QString());
    known.insert("\x8F\xF3\xFE", QString());
    for (int second = 0xF4; second <= 0xFE; ++second)
        addUnmappedRow(&known, code({0x8F, second}));
    compareMappings(comparison.differences(), known);
}

int main(int argc, char **argv)
{
    qputenv("UNICODEMAP_JP", "cp932"); // read by the codecs when they are made
    QCoreApplication application(argc, argv);
    JapaneseMappingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "JapaneseMappingTest.moc"
