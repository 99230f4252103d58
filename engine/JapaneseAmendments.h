#pragma once

#include <QByteArray>
#include <QHash>
#include <QTextCodec>
#include <QVector>

/// Codes in everyday use which the toolkit's own codecs do not know, or read as
/// another character than the codecs of ICU do: the circled numbers and units of
/// NEC's row 13, IBM's kanji and the user-defined rows of Shift-JIS.
namespace JapaneseAmendments {

struct Amendment {
    QByteArray code;
    ushort character;
};

QVector<Amendment> ofShiftJis();

/// NEC's and IBM's rows stand where Shift-JIS has them, so shiftJis, the
/// toolkit's codec, tells their characters. Where a character has several codes
/// the one to be written comes first.
QVector<Amendment> ofEucJp(const QTextCodec &shiftJis);

/// The character of a code of two bytes in 21 to 7E; 0 where nothing is amended.
ushort ofJisX0208(uchar first, uchar second, const QTextCodec &shiftJis);

/// Characters that inner cannot write, and their codes.
using Codes = QHash<ushort, QByteArray>;

/// text (size UTF-16 code units) as bytes: by codes what they have, each run of it
/// between shiftIn and shiftOut, and by inner, with state, all the rest.
QByteArray toBytes(const QTextCodec &inner, const Codes &codes, const QChar *text, int size,
                   QTextCodec::ConverterState *state, const QByteArray &shiftIn = {},
                   const QByteArray &shiftOut = {});

} // namespace JapaneseAmendments
