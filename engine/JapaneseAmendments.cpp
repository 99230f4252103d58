#include "engine/JapaneseAmendments.h"

#include <algorithm>

namespace {

constexpr int kNecRow = 13;
constexpr int kFirstIbmRow = 89; // NEC's selection of IBM's kanji
constexpr int kLastIbmRow = 92;
constexpr int kCells = 94;

bool isAmendedRow(int row)
{
    return row == kNecRow || (row >= kFirstIbmRow && row <= kLastIbmRow);
}

// Two rows share a lead byte, and no trail byte is 7F.
QByteArray shiftJisOf(int row, int cell)
{
    const int lead = (row - 1) / 2 + (row < 63 ? 0x81 : 0xC1);
    const int trail = row % 2 == 0 ? cell + 0x9E : cell + (cell < 64 ? 0x3F : 0x40);
    return QByteArray(1, char(lead)) + char(trail);
}

// 0 where the cell is empty.
ushort characterAt(int row, int cell, const QTextCodec &shiftJis)
{
    const QString text = shiftJis.toUnicode(shiftJisOf(row, cell));
    const bool single = text.size() == 1 && text.at(0) != QChar(QChar::ReplacementCharacter);
    return single ? text.at(0).unicode() : ushort(0);
}

} // namespace

QVector<JapaneseAmendments::Amendment> JapaneseAmendments::ofShiftJis()
{
    QVector<Amendment> amendments{{QByteArray(1, '\0'), 0}};
    ushort character = 0xE000; // the first for private use
    for (int lead = 0xF0; lead <= 0xF9; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail != 0x7F)
                amendments.append({QByteArray(1, char(lead)) + char(trail), character++});
        }
    }
    return amendments;
}

QVector<JapaneseAmendments::Amendment> JapaneseAmendments::ofEucJp(const QTextCodec &shiftJis)
{
    QVector<Amendment> amendments;
    for (int row = kNecRow; row <= kLastIbmRow; ++row) {
        for (int cell = 1; isAmendedRow(row) && cell <= kCells; ++cell) {
            if (const ushort character = characterAt(row, cell, shiftJis))
                amendments.append({QByteArray(1, char(0xA0 + row)) + char(0xA0 + cell), character});
        }
    }
    // The signs for cent, pound and not in their narrow forms,
    amendments.append({"\x8E\xE0", 0xA2});
    amendments.append({"\x8E\xE1", 0xA3});
    amendments.append({"\x8E\xE2", 0xAC});
    // the broken bar likewise, and IBM's Roman numerals and sign for a company.
    amendments.append({"\x8F\xA2\xC3", 0xA6});
    for (int i = 0; i < 10; ++i) {
        amendments.append({QByteArray("\x8F\xF3") + char(0xA1 + i), ushort(0x2170 + i)});
        amendments.append({QByteArray("\x8F\xF3") + char(0xAB + i), ushort(0x2160 + i)});
    }
    amendments.append({"\x8F\xF3\xB7", 0x3231});
    // The controls above ASCII; the two that are left out shift.
    for (int byte = 0x80; byte <= 0x9F; ++byte) {
        if (byte != 0x8E && byte != 0x8F)
            amendments.append({QByteArray(1, char(byte)), ushort(byte)});
    }
    return amendments;
}

ushort JapaneseAmendments::ofJisX0208(uchar first, uchar second, const QTextCodec &shiftJis)
{
    const int row = first - 0x20;
    const int cell = second - 0x20;
    if (!isAmendedRow(row) || cell < 1 || cell > kCells)
        return 0;
    return characterAt(row, cell, shiftJis);
}

QByteArray JapaneseAmendments::toBytes(const QTextCodec &inner, const Codes &codes,
                                       const QChar *text, int size,
                                       QTextCodec::ConverterState *state, const QByteArray &shiftIn,
                                       const QByteArray &shiftOut)
{
    QByteArray bytes;
    const QChar *const end = text + size;
    const auto isAmended = [&codes](QChar character) {
        return codes.contains(character.unicode());
    };
    while (text != end) {
        const QChar *const next = std::find_if(text, end, isAmended);
        if (next != text)
            bytes += inner.fromUnicode(text, int(next - text), state);
        if (next == end)
            break;
        bytes += shiftIn;
        for (text = next; text != end && isAmended(*text); ++text)
            bytes += codes.value(text->unicode());
        bytes += shiftOut;
    }
    return bytes;
}
