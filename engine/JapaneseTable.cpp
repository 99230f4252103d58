#include "engine/JapaneseTable.h"

#include "engine/CodeSet.h"
#include "engine/JapaneseCodecFacts.h"

#include <QTextCodec>
#include <QVector>

#include <cstring>
#include <memory>

namespace {

struct Code {
    QByteArray bytes;
    QChar character;
};

// What the codec writes for each character of the basic plane: one or two bytes
// of which the first is not ASCII. A line feed, which is never part of a
// character, keeps the codes apart.
QVector<Code> writtenCodes(const QTextCodec &codec)
{
    QString characters;
    QString text;
    for (int value = 0x80; value <= 0xFFFF; ++value) {
        const QChar character{ushort(value)};
        if (character.isSurrogate())
            continue;
        characters += character;
        text += character;
        text += QLatin1Char('\n');
    }
    const QList<QByteArray> written = codec.fromUnicode(text).split('\n');
    QVector<Code> codes;
    if (written.size() != characters.size() + 1)
        return codes;
    for (int i = 0; i < characters.size(); ++i) {
        const QByteArray &bytes = written.at(i);
        if ((bytes.size() == 1 || bytes.size() == 2) && uchar(bytes.at(0)) >= 0x80)
            codes.append({bytes, characters.at(i)});
    }
    return codes;
}

// Those that the codec reads as it wrote them. The others are best fits, or what
// it writes in place of a character that it cannot write.
QVector<Code> codesReadBack(const QTextCodec &codec, const QVector<Code> &written)
{
    constexpr int kLongestLine = 3;
    QByteArray bytes;
    // At once: an appended expression asks for its own size, no more, each time.
    bytes.reserve(written.size() * kLongestLine);
    for (const Code &code : written)
        bytes += code.bytes + '\n';
    const QStringList read = codec.toUnicode(bytes).split(QLatin1Char('\n'));
    QVector<Code> codes;
    if (read.size() != written.size() + 1)
        return codes;
    for (int i = 0; i < written.size(); ++i) {
        if (read.at(i) == QString(written.at(i).character))
            codes.append(written.at(i));
    }
    return codes;
}

bool areReadInARow(const QTextCodec &codec, const QVector<Code> &codes)
{
    QByteArray bytes;
    QString characters;
    for (const Code &code : codes) {
        bytes += code.bytes;
        characters += code.character;
    }
    return codec.toUnicode(bytes) == characters;
}

bool areEightAscii(const char *bytes)
{
    constexpr quint64 kHighBits = Q_UINT64_C(0x8080808080808080);
    quint64 eightBytes = 0;
    std::memcpy(&eightBytes, bytes, sizeof eightBytes);
    return (eightBytes & kHighBits) == 0;
}

} // namespace

JapaneseTable::JapaneseTable(const QTextCodec &codec)
{
    m_single.fill(kUnknown);
    for (auto &row : m_pairs)
        row.fill(kUnknown);
    for (size_t byte = 0; byte < kFirstHigh; ++byte)
        m_single[byte] = ushort(byte);
    fill(codec);
}

void JapaneseTable::fill(const QTextCodec &codec)
{
    const QVector<Code> codes = codesReadBack(codec, writtenCodes(codec));
    if (!areReadInARow(codec, codes))
        return;
    for (const Code &code : codes) {
        const size_t first = uchar(code.bytes.at(0));
        if (code.bytes.size() == 1) {
            m_single[first] = code.character.unicode();
        } else {
            m_single[first] = kLead;
            m_pairs[first - kFirstHigh][uchar(code.bytes.at(1))] = code.character.unicode();
        }
    }
}

template <int codeSet> const JapaneseTable *JapaneseTable::tableOf()
{
    static const std::unique_ptr<const JapaneseTable> table(
        JapaneseCodecFacts::keepsSteadyAscii(codeSet) ? new JapaneseTable(*CodeSet::codec(codeSet))
                                                      : nullptr);
    return table.get();
}

const JapaneseTable *JapaneseTable::of(int codeSet)
{
    switch (codeSet) {
    case CodeSet::ShiftJis:
        return tableOf<CodeSet::ShiftJis>();
    case CodeSet::EucJp:
        return tableOf<CodeSet::EucJp>();
    default:
        return nullptr;
    }
}

bool JapaneseTable::decode(const char *bytes, int size, QString *text) const
{
    constexpr int kEight = 8;
    const char *const end = bytes + size;
    text->resize(size);
    auto *const begin = reinterpret_cast<ushort *>(text->data());
    ushort *out = begin;
    for (const char *next = bytes; next != end;) {
        if (end - next >= kEight && areEightAscii(next)) {
            for (int i = 0; i < kEight; ++i)
                out[i] = uchar(next[i]);
            next += kEight;
            out += kEight;
            continue;
        }
        const size_t first = uchar(*next++);
        ushort unit = m_single[first];
        if (unit == kLead && next != end)
            unit = m_pairs[first - kFirstHigh][uchar(*next++)];
        if (unit == kUnknown || unit == kLead)
            return false;
        *out++ = unit;
    }
    text->truncate(int(out - begin));
    return true;
}
