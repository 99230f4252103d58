#include "engine/HitString.h"
#include "engine/NativePath.h"
#include "fuzz/FuzzInput.h"
#include "view/ResultLine.h"

namespace {

bool isOneParagraph(const QString &text)
{
    for (const ushort code : {ushort('\n'), ushort('\r'), ushort(0x2028), ushort(0x2029),
                              ushort(0xFDD0), ushort(0xFDD1)}) {
        if (text.contains(QChar(code)))
            return false;
    }
    return true;
}

} // namespace

/// Any bytes as the name of a file, as a line of one, and as a line of the
/// result that somebody edited.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const int lineNumber = 1 + 255 * input.number(256) + input.number(256);
    const QByteArray name = input.rest();

    const QString shown = NativePath::fromNative(name);
    require(NativePath::toNative(shown) == name, "a name comes back byte by byte");
    const QString fileLine = ResultLine::onOneLine(QStringLiteral("::") + shown);
    require(isOneParagraph(fileLine), "a file line is one line of the view");
    require(NativePath::toNative(ResultLine::pathOf(fileLine)) == name,
            "the name that a file line shows is the file's");

    const QString hit = HitString::format(lineNumber, 3, shown);
    require(isOneParagraph(ResultLine::onOneLine(hit)), "a hit is one line of the view");
    const ResultLine::Place place = ResultLine::placeOf(ResultLine::onOneLine(hit));
    require(place.line == lineNumber && place.column == 3, "a hit says where it is");

    ResultLine::placeOf(shown);
    ResultLine::pathOf(shown);
    if (ResultLine::kind(shown) != ResultLine::Kind::None)
        require(isOneParagraph(ResultLine::onOneLine(shown)), "such a line is one of the view");
    return 0;
}
