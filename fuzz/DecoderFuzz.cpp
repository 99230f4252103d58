#include "engine/CodeSet.h"
#include "engine/TextDecoder.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/FileText.h"

/// The decoders against the toolkit's own text stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int kPieceSize = 16384;
    FuzzInput input(data, size);
    const int codeSet = input.number(CodeSet::kCount);
    // With a number here, what follows lies across the end of a decoder's piece.
    const int before = input.number(64);
    QByteArray content(before == 0 ? 0 : kPieceSize - before, 'a');
    content += input.rest();

    const QString expected = FileText::read(content, CodeSet::codec(codeSet));
    require(searchableText(content.constData(), content.size(), codeSet) == expected,
            "the text is that of the toolkit's stream");
    QString decoded = decodeText(content.constData(), content.size(), codeSet);
    replaceLoneSurrogates(&decoded);
    require(decoded == expected, "the decoded text, passed through UTF-8, is that of the stream");
    require(countLines(content.constData(), content.size(), codeSet)
                == FileText::lines(expected).size(),
            "the lines are counted as they are");
    return 0;
}
