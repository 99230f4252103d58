#pragma once

#include "engine/JapaneseAmendments.h"

#include <QTextCodec>

#include <array>

/// The toolkit's own Shift-JIS and EUC-JP codecs, which it has where it is built
/// without ICU, amended so that a text is the same on every platform:
///
///  1. Codes that they do not know (see JapaneseAmendments) give their
///     character, and the character is written as that code.
///  2. A broken character gives one U+FFFD, and what breaks it off is read
///     again; in EUC-JP not A0 and FF, which nothing begins with. Where the third
///     byte of three breaks it off, the second is read again, too.
///
/// The controls 1A, 1C and 7F of Shift-JIS stay what the toolkit makes of them:
/// ICU exchanges them, its own codec does not.
class AmendedCodec : public QTextCodec {
public:
    /// inner for CodeSet::ShiftJis or EucJp stays in use for what is not amended;
    /// shiftJis is the toolkit's codec for that. Like every codec of the toolkit
    /// the object lives until the program ends.
    AmendedCodec(int codeSet, const QTextCodec &inner, const QTextCodec &shiftJis);
    ~AmendedCodec() override;

    QByteArray name() const override { return m_inner.name(); }
    QList<QByteArray> aliases() const override { return m_inner.aliases(); }
    int mibEnum() const override { return m_inner.mibEnum(); }

protected:
    QString convertToUnicode(const char *bytes, int size, ConverterState *state) const override;
    QByteArray convertFromUnicode(const QChar *text, int size,
                                  ConverterState *state) const override;

private:
    static constexpr size_t kHalf = 0x80;
    using Row = std::array<ushort, 2 * kHalf>;

    void setCharacter(const QByteArray &code, ushort character);
    void readInner();
    int lengthFrom(uchar first) const;
    bool isTrail(uchar byte, uchar first) const;
    bool isReadAgain(uchar byte) const;
    ushort character(const uchar *code, int length) const;
    int takeOne(const uchar *bytes, int size, ushort *unit) const;

    const bool m_euc;
    const QTextCodec &m_inner;
    Row m_singles;
    std::array<Row, kHalf> m_pairs; ///< by first byte, from 80 on
    std::array<std::array<ushort, kHalf>, kHalf> m_triples; ///< after 8F, both from 80 on
    JapaneseAmendments::Codes m_codes; ///< what the toolkit's codec cannot write
};
