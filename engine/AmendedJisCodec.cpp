#include "engine/AmendedJisCodec.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

constexpr char kEscape = '\x1B';
constexpr uchar kFirstByte = 0x21;
constexpr uchar kLastByte = 0x7E;

bool isOfPair(char byte)
{
    return uchar(byte) >= kFirstByte && uchar(byte) <= kLastByte;
}

// Follows which characters the bytes are of, as far as pairs of JIS X 0208 go.
class Position {
public:
    // True when byte ends a pair, the first of which was the byte before.
    bool endsPair(char byte)
    {
        if (byte == kEscape) {
            *this = Position();
            m_escape = 1;
            return false;
        }
        if (m_escape != 0) {
            takeOfEscape(byte);
            return false;
        }
        if (!m_pairs || !isOfPair(byte)) {
            m_half = false;
            return false;
        }
        m_half = !m_half;
        return !m_half;
    }

    bool isHalf() const { return m_half; }

private:
    // ESC $ B and ESC $ @ begin pairs; ESC ( and ESC $ ( take one byte more.
    void takeOfEscape(char byte)
    {
        const bool again = byte == '(' || (byte == '$' && m_escape == 1);
        m_pairs = m_dollar && m_escape == 2 && (byte == 'B' || byte == '@');
        m_dollar = byte == '$';
        m_escape = again ? m_escape + 1 : 0;
    }

    int m_escape = 0; ///< bytes of an escape sequence seen
    bool m_dollar = false;
    bool m_pairs = false;
    bool m_half = false;
};

// What a converter state keeps between two pieces; the toolkit frees it.
struct Kept {
    Position position;
    char half = 0; ///< not given to the inner codec yet; 0: none
    int remaining = 0;
    uint data[3] = {};
};

class InnerState : public QTextCodec::ConverterState {
public:
    InnerState(const QTextCodec::ConverterState *outer, const Kept &kept)
        : ConverterState(outer != nullptr
                             ? outer->flags & QTextCodec::ConversionFlags(~QTextCodec::FreeFunction)
                             : QTextCodec::ConversionFlags())
    {
        remainingChars = kept.remaining;
        std::copy(std::begin(kept.data), std::end(kept.data), state_data);
    }
};

Kept keptIn(const QTextCodec::ConverterState *state)
{
    return state != nullptr && state->d != nullptr ? *static_cast<const Kept *>(state->d) : Kept();
}

void keepIn(QTextCodec::ConverterState *state, Kept kept, const InnerState &inner)
{
    kept.remaining = inner.remainingChars;
    std::copy(std::begin(inner.state_data), std::end(inner.state_data), kept.data);
    if (state->d == nullptr)
        state->d = std::malloc(sizeof(Kept));
    if (state->d == nullptr)
        qFatal("no memory");
    new (state->d) Kept(kept);
    state->invalidChars += inner.invalidChars;
}

} // namespace

AmendedJisCodec::AmendedJisCodec(const QTextCodec &inner, const QTextCodec &shiftJis)
    : m_inner(inner), m_shiftJis(shiftJis)
{
    for (uchar first = kFirstByte; first <= kLastByte; ++first) {
        for (uchar second = kFirstByte; second <= kLastByte; ++second) {
            const ushort character = JapaneseAmendments::ofJisX0208(first, second, shiftJis);
            if (character != 0 && !m_codes.contains(character) && !inner.canEncode(character))
                m_codes.insert(character, QByteArray(1, char(first)) + char(second));
        }
    }
}

AmendedJisCodec::~AmendedJisCodec() = default;

QString AmendedJisCodec::convertToUnicode(const char *bytes, int size, ConverterState *state) const
{
    Kept kept = keptIn(state);
    InnerState inner(state, kept);
    QByteArray joined(bytes, size);
    int at = 0;
    if (kept.half != 0) {
        joined.prepend(kept.half);
        kept.half = 0;
        at = 1; // known to be the first of a pair
    }
    QString text;
    int from = 0;
    const auto flush = [&](int to) {
        if (to > from)
            text += m_inner.toUnicode(joined.constData() + from, to - from, &inner);
        from = to;
    };
    for (; at < joined.size(); ++at) {
        if (!kept.position.endsPair(joined.at(at)))
            continue;
        const ushort character = JapaneseAmendments::ofJisX0208(uchar(joined.at(at - 1)),
                                                                uchar(joined.at(at)), m_shiftJis);
        if (character == 0)
            continue;
        flush(at - 1);
        text += QChar(character);
        from = at + 1;
    }
    if (state != nullptr && kept.position.isHalf() && from < joined.size()) {
        kept.half = joined.at(joined.size() - 1);
        joined.chop(1);
    }
    flush(joined.size());
    if (state != nullptr)
        keepIn(state, kept, inner);
    return text;
}

QByteArray AmendedJisCodec::convertFromUnicode(const QChar *text, int size,
                                               ConverterState *state) const
{
    return JapaneseAmendments::toBytes(m_inner, m_codes, text, size, state, "\x1B$B", "\x1B(B");
}
