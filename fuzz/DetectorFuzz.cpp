#include "engine/FileCodeSet.h"
#include "fuzz/FuzzInput.h"
#include "tests/engine_support/PlainDetection.h"

/// The detector of code sets against its rule written plainly.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const int distance = input.number(4);
    const QByteArray sample = input.rest();
    const int detectSize = distance == 0 ? 2048 : sample.size() - 2 + distance;
    require(Detected::byEngine(sample, detectSize) == PlainDetection::detect(sample, detectSize),
            "the detector's answer is that of the plain rule");

    DetectionSettings settings;
    settings.detectSize = detectSize;
    int lineEnd = -1;
    bool bom = false;
    const int codeSet = codeSetOfContent(sample.constData(), sample.size(), sample.size(), settings,
                                         &lineEnd, &bom);
    require(codeSet == kFileRefused || (codeSet >= 1 && codeSet <= 8), "a code set is 1 to 8");
    require(lineEnd >= 0 && lineEnd <= 2, "a line end is 0 to 2");
    return 0;
}
