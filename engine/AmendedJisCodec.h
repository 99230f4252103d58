#pragma once

#include "engine/JapaneseAmendments.h"

#include <QTextCodec>

/// The toolkit's own ISO-2022-JP codec, which it has where it is built without
/// ICU, amended by NEC's row 13 and IBM's kanji (see JapaneseAmendments), which
/// mails are full of.
class AmendedJisCodec : public QTextCodec {
public:
    /// inner stays in use for all the rest; shiftJis is the toolkit's codec for
    /// that. Like every codec of the toolkit the object lives until the program
    /// ends.
    AmendedJisCodec(const QTextCodec &inner, const QTextCodec &shiftJis);
    ~AmendedJisCodec() override;

    QByteArray name() const override { return m_inner.name(); }
    QList<QByteArray> aliases() const override { return m_inner.aliases(); }
    int mibEnum() const override { return m_inner.mibEnum(); }

protected:
    QString convertToUnicode(const char *bytes, int size, ConverterState *state) const override;
    QByteArray convertFromUnicode(const QChar *text, int size,
                                  ConverterState *state) const override;

private:
    const QTextCodec &m_inner;
    const QTextCodec &m_shiftJis;
    JapaneseAmendments::Codes m_codes; ///< what the toolkit's codec cannot write
};
