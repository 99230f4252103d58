#include "engine/BytePattern.h"

#include <algorithm>
#include <set>
#include <tuple>

BytePattern BytePattern::exact(const QByteArray &bytes)
{
    BytePattern pattern;
    pattern.value = bytes;
    pattern.mask = QByteArray(bytes.size(), '\xFF');
    return pattern;
}

BytePattern BytePattern::asciiCaseInsensitive(const QByteArray &bytes)
{
    constexpr char CaseBit = 0x20;
    BytePattern pattern = exact(bytes.toLower());
    for (int i = 0; i < bytes.size(); ++i) {
        const char byte = pattern.value.at(i);
        if (byte < 'a' || byte > 'z')
            pattern.value[i] = bytes.at(i); // toLower() folds Latin-1 too
        else
            pattern.mask[i] = static_cast<char>(~CaseBit);
        pattern.value[i] = static_cast<char>(pattern.value.at(i) & pattern.mask.at(i));
    }
    return pattern;
}

void BytePattern::removeDuplicates(QVector<BytePattern> *patterns)
{
    std::set<std::tuple<QByteArray, QByteArray, int>> seen;
    const auto isKnown = [&seen](const BytePattern &pattern) {
        return !seen.emplace(pattern.value, pattern.mask, pattern.alignment).second;
    };
    patterns->erase(std::remove_if(patterns->begin(), patterns->end(), isKnown), patterns->end());
}
