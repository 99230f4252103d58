#include "engine/CodeSet.h"
#include "engine/NativePath.h"
#include "fuzz/FuzzInput.h"
#include "tests/engine_support/SearchCaseGenerator.h"

namespace {

int flagsOf(int number)
{
    return ((number & 1) != 0 ? SearchCondition::RegExpFlag : 0)
        | ((number & 2) != 0 ? SearchCondition::WordFlag : 0)
        | ((number & 4) != 0 ? SearchCondition::IgnoreCaseFlag : 0);
}

} // namespace

/// The shortcuts of a search against the plain path, which decodes everything
/// and visits every line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    SearchCase made;
    made.condition.flg = flagsOf(input.number(8));
    made.codeSet = input.number(CodeSet::kCount);
    made.condition.plusline = input.number(4);
    input.line(); // lets a person read and write the inputs
    const QByteArray keywords[] = {input.line(), input.line(), input.line()};
    made.condition.keyword1 = NativePath::fromNative(keywords[0]);
    made.condition.keyword2 = NativePath::fromNative(keywords[1]);
    made.condition.keyword3 = NativePath::fromNative(keywords[2]);
    made.content = input.rest();
    if (made.condition.regExp()) {
        for (const QByteArray &keyword : keywords)
            made.content.truncate(affordableText(keyword));
    }
    require(made.hits() == made.plainHits(), "the hits are those of the plain path");
    return 0;
}
