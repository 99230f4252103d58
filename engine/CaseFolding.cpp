#include "engine/CaseFolding.h"

#include <QChar>

#include <algorithm>
#include <tuple>
#include <vector>

namespace {

// No character above the first two planes has a case.
constexpr uint kEndOfCasedPlanes = 0x20000;

struct Folding {
    uint folded;
    uint codePoint;
};

bool foldsToLess(const Folding &a, const Folding &b)
{
    return std::tie(a.folded, a.codePoint) < std::tie(b.folded, b.codePoint);
}

/// The characters that fold to another one.
std::vector<Folding> collectFoldings()
{
    std::vector<Folding> foldings;
    for (uint codePoint = 0; codePoint < kEndOfCasedPlanes; ++codePoint) {
        const uint folded = QChar::toCaseFolded(codePoint);
        if (folded != codePoint)
            foldings.push_back({folded, codePoint});
    }
    std::sort(foldings.begin(), foldings.end(), foldsToLess);
    return foldings;
}

} // namespace

QVector<uint> CaseFolding::variants(uint codePoint)
{
    static const std::vector<Folding> foldings = collectFoldings();
    const uint folded = QChar::toCaseFolded(codePoint);
    QVector<uint> result = {folded};
    auto next =
        std::lower_bound(foldings.cbegin(), foldings.cend(), Folding{folded, 0}, foldsToLess);
    for (; next != foldings.cend() && next->folded == folded; ++next)
        result.append(next->codePoint);
    std::sort(result.begin(), result.end());
    return result;
}
