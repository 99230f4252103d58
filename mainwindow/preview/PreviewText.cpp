#include "mainwindow/preview/PreviewText.h"

#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"

#include <QBuffer>
#include <QSet>
#include <QTextCodec>
#include <QTextStream>
#include <QVector>
#include <QtEndian>

#include <algorithm>

namespace {

QTextCodec *codecOf(int codeSet)
{
    QTextCodec *codec = CodeSet::codec(codeSet);
    return codec != nullptr ? codec : QTextCodec::codecForLocale();
}

constexpr QLatin1Char kReturn('\r');
constexpr QLatin1Char kLineFeed('\n');

/// A character that ends a line of a document but none of a search, and one that
/// does not.
struct StandIn {
    ushort meant;
    ushort shown;
};
constexpr StandIn kStandIns[] = {
    {QChar::ParagraphSeparator, 0xFDD3}, {0xFDD0, 0xFDD4}, {0xFDD1, 0xFDD5}};
/// Where the line separator stands in itself.
constexpr QChar kShownLineSeparator(0xFDD2);

// The numbers that the toolkit's codecs carry (IANA's MIBenum).
enum Mib { Utf8Mib = 106, FirstUtf16Mib = 1013, Utf32BeMib = 1018, Utf32LeMib = 1019 };

bool hasMark(const QTextCodec *codec)
{
    const int mib = codec->mibEnum();
    return mib == Utf8Mib || (mib >= FirstUtf16Mib && mib <= Utf32LeMib);
}

/// In place of the toolkit's codec, which puts four bytes of whatever is in the
/// memory behind the text for every pair of surrogates.
QByteArray encodeUtf32(const QString &text, bool bigEndian)
{
    const QVector<uint> characters = text.toUcs4();
    QByteArray bytes(characters.size() * int(sizeof(quint32)), Qt::Uninitialized);
    char *next = bytes.data();
    for (const uint character : characters) {
        if (bigEndian)
            qToBigEndian<quint32>(character, next);
        else
            qToLittleEndian<quint32>(character, next);
        next += sizeof(quint32);
    }
    return bytes;
}

QByteArray encodeBy(const QTextCodec *codec, const QString &text)
{
    const int mib = codec->mibEnum();
    if (mib == Utf32BeMib || mib == Utf32LeMib)
        return encodeUtf32(text, mib == Utf32BeMib);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->fromUnicode(text.constData(), text.size(), &state);
}

/// The character comes back when it stands alone.
bool isHeld(const QTextCodec *codec, const QString &character)
{
    const QByteArray bytes = encodeBy(codec, character);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->toUnicode(bytes.constData(), bytes.size(), &state) == character;
}

int lengthOfCharacter(const QString &text, int at)
{
    const bool pair =
        text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
    return pair ? 2 : 1;
}

} // namespace

QString PreviewText::decode(const QByteArray &bytes, int codeSet)
{
    // Without that byte no code set has a carriage return, and the two ways of
    // reading are the same.
    if (!bytes.contains('\r'))
        return decodeText(bytes.constData(), bytes.size(), codeSet);
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QTextStream stream(&buffer);
    if (QTextCodec *codec = CodeSet::codec(codeSet))
        stream.setCodec(codec);
    return stream.readAll();
}

void PreviewText::takeReturns(const QString &text, Form *form)
{
    form->loneReturns = false;
    bool lone = false;
    bool pairs = false;
    for (int at = text.indexOf(kReturn); at >= 0 && !(lone && pairs);
         at = text.indexOf(kReturn, at + 1)) {
        const bool pair = at + 1 < text.size() && text.at(at + 1) == kLineFeed;
        (pair ? pairs : lone) = true;
    }
    if (!lone)
        return;
    form->loneReturns = pairs || text.contains(kLineFeed);
    if (!form->loneReturns)
        form->lineEnd = CodeSet::Cr;
    else
        form->lineEnd = pairs ? CodeSet::CrLf : CodeSet::Lf;
}

QString PreviewText::forDocument(QString text, const Form &form)
{
    if (text.contains(kReturn)) {
        text.replace(QStringLiteral("\r\n"), QString(kLineFeed));
        if (form.loneReturns)
            text.replace(QChar(QChar::LineSeparator), kShownLineSeparator);
        text.replace(kReturn, form.loneReturns ? QChar(QChar::LineSeparator) : kLineFeed);
    }
    for (const StandIn &standIn : kStandIns)
        text.replace(QChar(standIn.meant), QChar(standIn.shown));
    return text;
}

QString PreviewText::fromDocument(QString text, const Form &form)
{
    text.replace(QChar(QChar::ParagraphSeparator), kLineFeed);
    for (const StandIn &standIn : kStandIns)
        text.replace(QChar(standIn.shown), QChar(standIn.meant));
    if (form.loneReturns) {
        text.replace(QChar(QChar::LineSeparator), kReturn);
        text.replace(kShownLineSeparator, QChar(QChar::LineSeparator));
    }
    return text;
}

QString PreviewText::asEdited(const QString &text, const Form &form)
{
    return fromDocument(forDocument(text, form), form);
}

int PreviewText::rowOf(const QString &text, int column, int tabWidth)
{
    const int width = std::max(tabWidth, 1);
    int row = 0;
    qint64 passed = 0; // columns
    for (int at = 0; at < text.size(); ++at) {
        const ushort unit = text.at(at).unicode();
        if (unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator || unit == '\n') {
            row = at + 1;
            continue;
        }
        if (passed + 1 >= column)
            break;
        if (unit == '\t')
            passed += width - passed % width;
        else
            passed += unit < 128 ? 1 : 2;
    }
    return row;
}

QByteArray PreviewText::encode(QString text, const Form &form)
{
    if (form.lineEnd == CodeSet::CrLf)
        text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
    else if (form.lineEnd == CodeSet::Cr)
        text.replace(QLatin1Char('\n'), QLatin1Char('\r'));
    const QTextCodec *codec = codecOf(form.codeSet);
    if (form.bom && hasMark(codec))
        text.prepend(QChar(QChar::ByteOrderMark));
    return encodeBy(codec, text);
}

bool PreviewText::survives(const QByteArray &bytes, const Form &form)
{
    return encode(asEdited(decode(bytes, form.codeSet), form), form) == bytes;
}

bool PreviewText::losesCharacters(const QString &text, const Form &form)
{
    return asEdited(decode(encode(text, form), form.codeSet), form) != text;
}

QString PreviewText::lostCharacters(const QString &text, int codeSet, int most)
{
    const QTextCodec *codec = codecOf(codeSet);
    QString lost;
    QSet<QString> seen;
    int count = 0;
    for (int at = 0; at < text.size() && count < most;) {
        const int length = lengthOfCharacter(text, at);
        const QString character = text.mid(at, length);
        at += length;
        const int before = seen.size();
        seen.insert(character);
        if (seen.size() == before || isHeld(codec, character))
            continue;
        lost += character;
        ++count;
    }
    return lost;
}
