#include "engine/AmendedCodec.h"

#include "engine/CodeSet.h"

namespace {

constexpr ushort kBroken = QChar::ReplacementCharacter;
constexpr uchar kSingleShiftTwo = 0x8E;
constexpr uchar kSingleShiftThree = 0x8F;
constexpr int kLongest = 3;

bool isBetween(uchar byte, uchar first, uchar last)
{
    return byte >= first && byte <= last;
}

} // namespace

AmendedCodec::AmendedCodec(int codeSet, const QTextCodec &inner, const QTextCodec &shiftJis)
    : m_euc(codeSet == CodeSet::EucJp), m_inner(inner)
{
    m_singles.fill(kBroken);
    for (Row &row : m_pairs)
        row.fill(kBroken);
    for (auto &row : m_triples)
        row.fill(kBroken);
    readInner();
    const QVector<JapaneseAmendments::Amendment> amendments =
        m_euc ? JapaneseAmendments::ofEucJp(shiftJis) : JapaneseAmendments::ofShiftJis();
    for (const JapaneseAmendments::Amendment &amendment : amendments) {
        setCharacter(amendment.code, amendment.character);
        // What has a code of one or two bytes keeps it. Codes behind a shift are
        // other forms, which are read and not written.
        const uchar first = uchar(amendment.code.at(0));
        if (m_euc && (first == kSingleShiftTwo || first == kSingleShiftThree))
            continue;
        const QChar character(amendment.character);
        const QByteArray written = inner.fromUnicode(QString(character));
        const bool known = inner.canEncode(character) && written.size() <= 2
            && inner.toUnicode(written) == QString(character);
        if (!known && !m_codes.contains(amendment.character))
            m_codes.insert(amendment.character, amendment.code);
    }
}

AmendedCodec::~AmendedCodec() = default;

void AmendedCodec::setCharacter(const QByteArray &code, ushort character)
{
    const auto byte = [&code](int index) {
        return size_t(uchar(code.at(index)));
    };
    if (code.size() == 1)
        m_singles[byte(0)] = character;
    else if (code.size() == 2)
        m_pairs[byte(0) - kHalf][byte(1)] = character;
    else
        m_triples[byte(1) - kHalf][byte(2) - kHalf] = character;
}

void AmendedCodec::readInner()
{
    const auto read = [this](const QByteArray &code) {
        const QString text = m_inner.toUnicode(code);
        if (text.size() == 1)
            setCharacter(code, text.at(0).unicode());
    };
    for (int first = 0; first <= 0xFF; ++first) {
        const int length = lengthFrom(uchar(first));
        const QByteArray lead(1, char(first));
        if (length == 1)
            read(lead);
        for (int second = 0; length > 1 && second <= 0xFF; ++second) {
            if (!isTrail(uchar(second), uchar(first)))
                continue;
            if (length == 2)
                read(lead + char(second));
            for (int third = 0xA1; length == kLongest && third <= 0xFE; ++third)
                read(lead + char(second) + char(third));
        }
    }
}

int AmendedCodec::lengthFrom(uchar first) const
{
    if (!m_euc)
        return isBetween(first, 0x81, 0x9F) || isBetween(first, 0xE0, 0xFC) ? 2 : 1;
    if (first == kSingleShiftThree)
        return kLongest;
    return first == kSingleShiftTwo || isBetween(first, 0xA1, 0xFE) ? 2 : 1;
}

bool AmendedCodec::isTrail(uchar byte, uchar first) const
{
    if (!m_euc)
        return isBetween(byte, 0x40, 0xFC) && byte != 0x7F;
    return isBetween(byte, 0xA1, first == kSingleShiftTwo ? 0xE4 : 0xFE);
}

bool AmendedCodec::isReadAgain(uchar byte) const
{
    return !m_euc || (byte != 0xA0 && byte != 0xFF);
}

ushort AmendedCodec::character(const uchar *code, int length) const
{
    if (length == 1)
        return m_singles[code[0]];
    if (length == 2)
        return m_pairs[code[0] - kHalf][code[1]];
    return m_triples[code[1] - kHalf][code[2] - kHalf];
}

/// Reads one character; returns its length, or 0 when bytes end within it.
int AmendedCodec::takeOne(const uchar *bytes, int size, ushort *unit) const
{
    const int length = lengthFrom(bytes[0]);
    for (int i = 1; i < length; ++i) {
        if (i >= size)
            return 0;
        if (isTrail(bytes[i], bytes[0]))
            continue;
        *unit = kBroken;
        return i == 1 && !isReadAgain(bytes[i]) ? 2 : 1;
    }
    *unit = character(bytes, length);
    return length;
}

QString AmendedCodec::convertToUnicode(const char *bytes, int size, ConverterState *state) const
{
    QByteArray joined;
    if (state != nullptr && state->remainingChars > 0) {
        for (int i = 0; i < state->remainingChars; ++i)
            joined += char(state->state_data[i]);
        joined.append(bytes, size);
        bytes = joined.constData();
        size = joined.size();
    }
    const bool nulls = state != nullptr && (state->flags & ConvertInvalidToNull);
    QString text(size, Qt::Uninitialized);
    QChar *out = text.data();
    int broken = 0;
    int at = 0;
    while (at < size) {
        ushort unit = kBroken;
        const int taken = takeOne(reinterpret_cast<const uchar *>(bytes) + at, size - at, &unit);
        if (taken == 0)
            break;
        broken += unit == kBroken ? 1 : 0;
        *out++ = QChar(unit == kBroken && nulls ? ushort(0) : unit);
        at += taken;
    }
    text.truncate(int(out - text.data()));
    if (state != nullptr) {
        state->invalidChars += broken;
        state->remainingChars = size - at;
        for (int i = at; i < size; ++i)
            state->state_data[i - at] = uchar(bytes[i]);
    }
    return text;
}

QByteArray AmendedCodec::convertFromUnicode(const QChar *text, int size,
                                            ConverterState *state) const
{
    return JapaneseAmendments::toBytes(m_inner, m_codes, text, size, state);
}
