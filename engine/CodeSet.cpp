#include "engine/CodeSet.h"

#include "engine/AmendedCodec.h"
#include "engine/AmendedJisCodec.h"

#include <QTextCodec>

#include <array>

namespace {

constexpr int kFirstLineEnd = CodeSet::kCount;
constexpr int kLineEndCount = 3;

// The code sets by number, then the line ends.
constexpr std::array<const char *, kFirstLineEnd + kLineEndCount> kNames = {
    "Default",  "Shift-JIS", "EUC-JP",   "ISO 2022-JP", "UTF-8", "UTF-16BE",
    "UTF-16LE", "UTF-32BE",  "UTF-32LE", "CR",          "LF",    "CRLF",
};

// Where the toolkit is built without ICU its own codecs lack the circled numbers,
// among others; a codec that has them is left as it is. The toolkit owns what is
// made here, as it does all codecs.
void amendJapanese(std::array<QTextCodec *, CodeSet::kCount> *codecs)
{
    QTextCodec *const shiftJis = (*codecs)[CodeSet::ShiftJis];
    QTextCodec *&eucJp = (*codecs)[CodeSet::EucJp];
    QTextCodec *&jis = (*codecs)[CodeSet::Iso2022Jp];
    const QString circledOne(QChar(0x2460));
    if (shiftJis == nullptr || eucJp == nullptr || eucJp->toUnicode("\xAD\xA1") == circledOne)
        return;
    (*codecs)[CodeSet::ShiftJis] = new AmendedCodec(CodeSet::ShiftJis, *shiftJis, *shiftJis);
    eucJp = new AmendedCodec(CodeSet::EucJp, *eucJp, *shiftJis);
    if (jis != nullptr)
        jis = new AmendedJisCodec(*jis, *shiftJis);
}

std::array<QTextCodec *, CodeSet::kCount> lookUpCodecs()
{
    std::array<QTextCodec *, CodeSet::kCount> codecs = {};
    for (int number = CodeSet::Default + 1; number < CodeSet::kCount; ++number)
        codecs[size_t(number)] = QTextCodec::codecForName(kNames[size_t(number)]);
    amendJapanese(&codecs);
    return codecs;
}

} // namespace

QString CodeSet::name(int number)
{
    if (number < 0 || number >= kCount)
        return QString();
    return QLatin1String(kNames[size_t(number)]);
}

QString CodeSet::lineEndName(int lineEnd)
{
    if (lineEnd < 0 || lineEnd >= kLineEndCount)
        return QString();
    return QLatin1String(kNames[size_t(kFirstLineEnd) + size_t(lineEnd)]);
}

QTextCodec *CodeSet::codec(int number)
{
    static const std::array<QTextCodec *, kCount> codecs = lookUpCodecs();
    if (number < 0 || number >= kCount)
        return nullptr;
    return codecs[size_t(number)];
}
