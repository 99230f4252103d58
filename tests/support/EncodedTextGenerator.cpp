#include "tests/support/EncodedTextGenerator.h"

#include <QTextCodec>

#include <array>

namespace {

struct Range {
    ushort first;
    ushort last;
};

constexpr std::array<Range, 10> kScripts = {{
    {0x0020, 0x007E}, // ASCII
    {0x0020, 0x007E},
    {0x0020, 0x007E},
    {0x3041, 0x3093}, // hiragana
    {0x30A1, 0x30F6}, // katakana
    {0x4E00, 0x9FA0}, // kanji
    {0xFF61, 0xFF9F}, // half-width katakana
    {0x00A0, 0x04FF}, // accents, Greek, Cyrillic
    {0x2010, 0x266F}, // symbols
    {0x0001, 0x001F}, // controls
}};

// Units with the bytes 0A or 0D in them, marks, noncharacters, joiners and the
// characters on which Japanese tables disagree.
constexpr std::array<ushort, 22> kOddities = {
    0x0000, 0x000C, 0x001A, 0x001B, 0x001C, 0x007F, 0x0A0D, 0x0D0A, 0x0A0A, 0x0D0D, 0x0A00,
    0x0D00, 0x200D, 0x2028, 0xFEFF, 0xFFFE, 0xFFFF, 0xFFFD, 0xFF5E, 0x301C, 0x2460, 0x00A5};

const std::array<QByteArray, 50> &allFragments()
{
    static const std::array<QByteArray, 50> fragments = {
        // ISO 2022-JP: half-width katakana, Roman, ASCII, the two-byte sets
        QByteArray("\x1B(I"), QByteArray("\x1B(J"), QByteArray("\x1B(B"), QByteArray("\x1B$@"),
        QByteArray("\x1B$B"), QByteArray("\x1B$(D"), QByteArray("\x1B"), QByteArray("\x1B$"),
        QByteArray("\x0E"), QByteArray("\x0F"), QByteArray("$\"$$"), QByteArray("F|K\\"),
        // EUC-JP
        QByteArray("\xA4\xA2"), QByteArray("\xA4"), QByteArray("\x8E\xB1"), QByteArray("\x8E"),
        QByteArray("\x8F\xB0\xA1"), QByteArray("\x8F\xB0"), QByteArray("\x8F"),
        // Shift-JIS
        QByteArray("\x82\xA0"), QByteArray("\x82"), QByteArray("\x81\x5C"), QByteArray("\xB1"),
        QByteArray("\xFC\x4B"), QByteArray("\xFD"), QByteArray("\x80"), QByteArray("\xA0"),
        // UTF-8
        QByteArray("\xE3\x81\x82"), QByteArray("\xE3\x81"), QByteArray("\xE3"),
        QByteArray("\xF0\x9F\x98\x80"), QByteArray("\xF0\x9F\x98"), QByteArray("\xF0"),
        QByteArray("\xED\xA0\x80"), QByteArray("\xC0\x80"), QByteArray("\xF4\x90\x80\x80"),
        QByteArray("\xFB\xBF\xBF\xBF\xBF"),
        // UTF-16 and UTF-32
        QByteArray("\xD8\x3D", 2), QByteArray("\x3D\xD8", 2), QByteArray("\0", 1),
        QByteArray("\0\0\0", 3), QByteArray("\0\x0A", 2), QByteArray("\x0D\0", 2),
        // line ends and what Japanese codecs make of ASCII
        QByteArray("\r"), QByteArray("\n"), QByteArray("\r\n"), QByteArray("\r\r\n"),
        QByteArray("\x1A\x1C\x7F"), QByteArray("\\~"), QByteArray("abc")};
    return fragments;
}

} // namespace

QChar EncodedTextGenerator::character()
{
    if (oneIn(20))
        return QChar(kOddities[size_t(number(int(kOddities.size())))]);
    const Range &script = kScripts[size_t(number(int(kScripts.size())))];
    return QChar(ushort(script.first + number(script.last - script.first + 1)));
}

QString EncodedTextGenerator::lineEnd(int style)
{
    static const std::array<QString, 4> ends = {QStringLiteral("\r"), QStringLiteral("\n"),
                                                QStringLiteral("\r\n"), QString()};
    return ends[size_t(style < 4 ? style : number(4))];
}

QString EncodedTextGenerator::text(int length)
{
    const int style = number(5);
    const bool asciiOnly = oneIn(4);
    QString text;
    while (text.size() < length) {
        if (oneIn(12))
            text += lineEnd(style);
        else if (asciiOnly)
            text += QChar(ushort(0x20 + number(0x5F)));
        else if (oneIn(30))
            text += QString::fromUcs4(std::array<uint, 1>{uint(0x1F300 + number(0x300))}.data(), 1);
        else
            text += character();
    }
    return text;
}

QString EncodedTextGenerator::units(int length)
{
    QString text;
    for (int i = 0; i < length; ++i)
        text += oneIn(3) ? QChar(ushort(0xD800 + number(0x800))) : character();
    return text;
}

QByteArray EncodedTextGenerator::encoded(const QString &text, QTextCodec *codec) const
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec->fromUnicode(text.constData(), text.size(), &state);
}

QByteArray EncodedTextGenerator::randomBytes(int size)
{
    // Few values make sequences meet that all values seldom do.
    const int first = oneIn(2) ? 0 : number(256);
    const int values = oneIn(2) ? 256 : 1 + number(16);
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes += char(first + number(values));
    return bytes;
}

QByteArray EncodedTextGenerator::broken(QByteArray content)
{
    for (int damages = 1 + number(4); damages > 0 && !content.isEmpty(); --damages) {
        const int at = number(content.size());
        switch (number(3)) {
        case 0:
            content[at] = char(number(256));
            break;
        case 1:
            content.remove(at, 1 + number(3));
            break;
        default:
            content.insert(at, fragments(1));
            break;
        }
    }
    return content;
}

QByteArray EncodedTextGenerator::fragments(int count)
{
    QByteArray content;
    for (int i = 0; i < count; ++i) {
        if (oneIn(20))
            content += mark();
        else
            content += allFragments()[size_t(number(int(allFragments().size())))];
    }
    return content;
}

QByteArray EncodedTextGenerator::mark()
{
    static const std::array<QByteArray, 5> marks = {
        QByteArray("\xEF\xBB\xBF"), QByteArray("\xFE\xFF"), QByteArray("\xFF\xFE"),
        QByteArray("\0\0\xFE\xFF", 4), QByteArray("\xFF\xFE\0\0", 4)};
    return marks[size_t(number(int(marks.size())))];
}
