#include "engine/JapaneseTable.h"

#include "engine/CodeSet.h"
#include "engine/JapaneseCodecFacts.h"
#include "engine/JapaneseForms.h"

#include <QTextCodec>

#include <cstring>
#include <memory>

namespace {

bool areEightAscii(const char *bytes)
{
    constexpr quint64 kHighBits = Q_UINT64_C(0x8080808080808080);
    quint64 eightBytes = 0;
    std::memcpy(&eightBytes, bytes, sizeof eightBytes);
    return (eightBytes & kHighBits) == 0;
}

} // namespace

JapaneseTable::JapaneseTable(int codeSet)
{
    clear();
    if (!fill(codeSet))
        clear();
}

/// Only ASCII is known then.
void JapaneseTable::clear()
{
    m_single.fill(kUnknown);
    for (auto &row : m_pairs)
        row.fill(kUnknown);
    for (size_t byte = 0; byte < kFirstHigh; ++byte)
        m_single[byte] = ushort(byte);
}

/// False when the codec reads the characters in a row in another way.
bool JapaneseTable::fill(int codeSet)
{
    QByteArray row;
    for (const JapaneseForms::Form &form : JapaneseForms::of(codeSet).all()) {
        const size_t first = uchar(form.bytes[0]);
        if (first < kFirstHigh || form.length > 2 || QChar::isNonCharacter(form.character))
            continue;
        if (form.length == 1) {
            m_single[first] = form.character;
        } else {
            m_single[first] = kLead;
            m_pairs[first - kFirstHigh][uchar(form.bytes[1])] = form.character;
        }
        row.append(form.bytes, form.length);
    }
    QString text;
    return decode(row.constData(), row.size(), &text)
        && text == CodeSet::codec(codeSet)->toUnicode(row);
}

template <int codeSet> const JapaneseTable *JapaneseTable::tableOf()
{
    static const std::unique_ptr<const JapaneseTable> table(
        JapaneseCodecFacts::keepsSteadyAscii(codeSet) ? new JapaneseTable(codeSet) : nullptr);
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
