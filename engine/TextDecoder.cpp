#include "engine/TextDecoder.h"

#include "engine/ByteScan.h"
#include "engine/CodeSet.h"
#include "engine/JapaneseCodecFacts.h"
#include "engine/JapaneseTable.h"

#include <QTextCodec>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

// What the text stream reads at once.
constexpr int kPieceSize = 16384;

// The numbers that the toolkit's codecs carry (IANA's MIBenum).
enum Mib { Utf8Mib = 106, Utf16BeMib = 1013, Utf16LeMib = 1014 };

struct Content {
    const char *bytes;
    int size;

    const char *end() const { return bytes + size; }
};

Content contentOf(const char *bytes, qint64 size)
{
    return {bytes, int(std::min(size, kLargestText))};
}

QTextCodec *codecFor(const Content &content, int codeSet)
{
    QTextCodec *codec = CodeSet::codec(codeSet);
    if (content.size >= 2) {
        const QByteArray firstPiece =
            QByteArray::fromRawData(content.bytes, std::min(content.size, kPieceSize));
        codec = QTextCodec::codecForUtfText(firstPiece, codec);
    }
    return codec != nullptr ? codec : QTextCodec::codecForLocale();
}

bool isUtf16(const QTextCodec *codec)
{
    return codec->mibEnum() == Utf16BeMib || codec->mibEnum() == Utf16LeMib;
}

// CodeSet::Default when it is no Japanese codec of the table. What is known of
// those holds for these very objects: another codec of the same name, such as
// the locale's, may have another mapping.
int japaneseCodeSetOf(const QTextCodec *codec)
{
    for (const int number : {CodeSet::ShiftJis, CodeSet::EucJp, CodeSet::Iso2022Jp}) {
        if (codec == CodeSet::codec(number))
            return number;
    }
    return CodeSet::Default;
}

bool keepsSteadyAscii(const QTextCodec *codec)
{
    return codec->mibEnum() == Utf8Mib
        || JapaneseCodecFacts::keepsSteadyAscii(japaneseCodeSetOf(codec));
}

bool lineFeedsAreBytes(const QTextCodec *codec)
{
    // A line feed byte inside a broken UTF-8 sequence ends the sequence and
    // stands for itself, also where two pieces meet.
    return codec->mibEnum() == Utf8Mib
        || JapaneseCodecFacts::lineFeedsAreBytes(japaneseCodeSetOf(codec));
}

void removeCarriageReturns(QString *text)
{
    int from = text->indexOf(QLatin1Char('\r'));
    if (from == -1)
        return;
    QChar *const begin = text->data();
    QChar *const end = std::remove(begin + from, begin + text->size(), QLatin1Char('\r'));
    text->truncate(int(end - begin));
}

QString decodeAscii(const Content &content)
{
    QString text(content.size, Qt::Uninitialized);
    auto *out = reinterpret_cast<ushort *>(text.data());
    const char *next = content.bytes;
    while (next != content.end()) {
        const auto *carriageReturn =
            static_cast<const char *>(std::memchr(next, '\r', size_t(content.end() - next)));
        const char *stop = carriageReturn != nullptr ? carriageReturn : content.end();
        const auto length = stop - next;
        for (std::ptrdiff_t i = 0; i < length; ++i)
            out[i] = uchar(next[i]);
        out += length;
        next = carriageReturn != nullptr ? stop + 1 : stop;
    }
    text.truncate(int(out - reinterpret_cast<ushort *>(text.data())));
    return text;
}

// Two bytes are one unit whatever they hold; the first unit is not part of the
// text if it is the mark, an odd last byte is none.
QString decodeUtf16(const Content &content, bool bigEndian)
{
    const int units = content.size / 2;
    QString text(units, Qt::Uninitialized);
    if (bigEndian)
        qFromBigEndian<ushort>(content.bytes, units, text.data());
    else
        qFromLittleEndian<ushort>(content.bytes, units, text.data());
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    removeCarriageReturns(&text);
    return text;
}

bool decodeByTable(const Content &content, const QTextCodec *codec, QString *text)
{
    const JapaneseTable *table = JapaneseTable::of(japaneseCodeSetOf(codec));
    if (table == nullptr || !table->decode(content.bytes, content.size, text))
        return false;
    removeCarriageReturns(text);
    return true;
}

QString decodeInPieces(const Content &content, const QTextCodec *codec)
{
    QTextCodec::ConverterState state;
    if (content.size <= kPieceSize) {
        QString text = codec->toUnicode(content.bytes, content.size, &state);
        removeCarriageReturns(&text);
        return text;
    }
    QString text;
    text.reserve(content.size);
    for (const char *next = content.bytes; next != content.end();) {
        const int length = int(std::min<std::ptrdiff_t>(kPieceSize, content.end() - next));
        text += codec->toUnicode(next, length, &state);
        next += length;
    }
    removeCarriageReturns(&text);
    return text;
}

int countUtf16LineFeeds(const Content &content, bool bigEndian)
{
    const int highAt = bigEndian ? 0 : 1;
    int lineFeeds = 0;
    for (int i = 0; i + 1 < content.size; i += 2)
        lineFeeds += int(content.bytes[i + highAt] == 0 && content.bytes[i + 1 - highAt] == '\n');
    return lineFeeds;
}

bool holdsSurrogate(const QString &text)
{
    const auto *units = reinterpret_cast<const ushort *>(text.constData());
    // In blocks, so that the compiler can look at many units at once.
    constexpr int kBlock = 1024;
    for (int begin = 0; begin < text.size(); begin += kBlock) {
        const int end = std::min(begin + kBlock, text.size());
        ushort found = 0;
        for (int i = begin; i < end; ++i)
            found = ushort(found | ushort((units[i] & 0xF800) == 0xD800));
        if (found != 0)
            return true;
    }
    return false;
}

} // namespace

QString decodeText(const char *bytes, qint64 size, int codeSet)
{
    const Content content = contentOf(bytes, size);
    if (content.size == 0)
        return QString();
    const QTextCodec *codec = codecFor(content, codeSet);
    if (isUtf16(codec))
        return decodeUtf16(content, codec->mibEnum() == Utf16BeMib);
    if (keepsSteadyAscii(codec)) {
        const ByteScan::Ascii ascii = ByteScan::asciiOf(content.bytes, content.size);
        if (ascii == ByteScan::Ascii::AllSteady)
            return decodeAscii(content);
        QString text;
        if (ascii == ByteScan::Ascii::SteadyAndHigh && decodeByTable(content, codec, &text))
            return text;
    }
    return decodeInPieces(content, codec);
}

QString searchableText(const char *bytes, qint64 size, int codeSet)
{
    QString text = decodeText(bytes, size, codeSet);
    replaceLoneSurrogates(&text);
    return text;
}

void replaceLoneSurrogates(QString *text)
{
    if (!holdsSurrogate(*text))
        return;
    QChar *const begin = text->data();
    QChar *const end = begin + text->size();
    for (QChar *next = begin; next != end; ++next) {
        if (!next->isSurrogate())
            continue;
        if (next->isHighSurrogate() && next + 1 != end && next[1].isLowSurrogate())
            ++next;
        else
            *next = QLatin1Char('?');
    }
}

int countLines(const char *bytes, qint64 size, int codeSet)
{
    const Content content = contentOf(bytes, size);
    if (content.size == 0)
        return 1;
    const QTextCodec *codec = codecFor(content, codeSet);
    if (isUtf16(codec))
        return countUtf16LineFeeds(content, codec->mibEnum() == Utf16BeMib) + 1;
    if (lineFeedsAreBytes(codec))
        return int(ByteScan::count(content.bytes, content.size, '\n')) + 1;
    return decodeText(bytes, size, codeSet).count(QLatin1Char('\n')) + 1;
}
