#include "engine/EncodedLiteral.h"

#include "engine/CaseFolding.h"
#include "engine/CodeForms.h"

#include <algorithm>

namespace {

// More strays would cost more than they find.
constexpr int kMaxStrays = 8;
// A longer needle rules out no more files.
constexpr int kMaxNeedleSize = 64;
// Two forms that differ in more bits than this share too many with others when
// the bits are masked out.
constexpr int kMaxMaskedBits = 4;

/// One character of the literal in the code set.
struct Position {
    bool known = false;
    BytePattern usual; // empty value: no file has the character
    QVector<BytePattern> strays;
};

int differingBits(const QByteArray &a, const QByteArray &b)
{
    int bits = 0;
    for (int i = 0; i < a.size(); ++i)
        bits += qPopulationCount(static_cast<quint8>(a.at(i) ^ b.at(i)));
    return bits;
}

BytePattern patternOf(const QByteArray &form, int codeSet)
{
    BytePattern pattern = BytePattern::exact(form);
    pattern.alignment = CodeForms::unitSize(codeSet);
    return pattern;
}

/// Lets the pattern agree with form as well.
void mergeInto(BytePattern *pattern, const QByteArray &form)
{
    for (int i = 0; i < form.size(); ++i) {
        const char differing = static_cast<char>(pattern->value.at(i) ^ form.at(i));
        pattern->mask[i] = static_cast<char>(pattern->mask.at(i) & ~differing);
        pattern->value[i] = static_cast<char>(pattern->value.at(i) & ~differing);
    }
}

/// The characters that match, the one that is searched for in most files first,
/// then its upper case.
QVector<uint> matchingCharacters(uint codePoint, Qt::CaseSensitivity sensitivity)
{
    if (sensitivity == Qt::CaseSensitive)
        return {codePoint};
    QVector<uint> result = CaseFolding::variants(codePoint);
    const uint folded = QChar::toCaseFolded(codePoint);
    const uint upper = QChar::toUpper(folded);
    const auto rank = [=](uint variant) {
        return variant == folded ? 0 : variant == upper ? 1 : 2;
    };
    std::stable_sort(result.begin(), result.end(),
                     [&rank](uint a, uint b) { return rank(a) < rank(b); });
    return result;
}

Position encodeCharacter(uint codePoint, Qt::CaseSensitivity sensitivity, int codeSet)
{
    Position position;
    QVector<QByteArray> merged;
    for (const uint character : matchingCharacters(codePoint, sensitivity)) {
        const CodeForms forms = CodeForms::of(character, codeSet);
        if (!forms.known)
            return {};
        bool usual = merged.size() < 2; // the first form of each case
        for (const QByteArray &form : forms.forms) {
            if (merged.isEmpty()) {
                position.usual = patternOf(form, codeSet);
                merged.append(form);
            } else if (usual && form.size() == merged.first().size()
                       && differingBits(form, merged.first()) <= kMaxMaskedBits) {
                mergeInto(&position.usual, form);
                merged.append(form);
            } else {
                position.strays.append(patternOf(form, codeSet));
            }
            usual = false;
        }
    }
    position.known = position.strays.size() <= kMaxStrays;
    return position;
}

/// A stretch of positions that can be searched for together.
struct Run {
    int first = 0;
    int count = 0;
    int size = 0; // bytes
    int strayCount = 0;

    void add(const Position &position)
    {
        ++count;
        size += position.usual.value.size();
        strayCount += position.strays.size();
    }
    bool hasRoomFor(const Position &position) const
    {
        return strayCount + position.strays.size() <= kMaxStrays
            && (count == 0 || size + position.usual.value.size() <= kMaxNeedleSize);
    }
    bool isBetterThan(const Run &other) const
    {
        return size > other.size || (size == other.size && strayCount < other.strayCount);
    }
};

Run bestRun(const QVector<Position> &positions)
{
    Run best;
    Run run;
    for (int i = 0; i < positions.size(); ++i) {
        const Position &position = positions.at(i);
        if (!position.known) {
            run = {i + 1};
            continue;
        }
        if (!run.hasRoomFor(position))
            run = {i};
        run.add(position);
        if (run.isBetterThan(best))
            best = run;
    }
    return best;
}

QVector<Position> encodeCharacters(const QString &literal, Qt::CaseSensitivity sensitivity,
                                   int codeSet)
{
    QVector<Position> positions;
    const QVector<uint> characters = literal.toUcs4();
    for (const uint character : characters)
        positions.append(encodeCharacter(character, sensitivity, codeSet));
    return positions;
}

} // namespace

EncodedLiteral EncodedLiteral::encode(const QString &literal, Qt::CaseSensitivity sensitivity,
                                      int codeSet)
{
    EncodedLiteral result;
    if (CodeForms::unitSize(codeSet) == 0)
        return result;
    const QVector<Position> positions = encodeCharacters(literal, sensitivity, codeSet);
    for (const Position &position : positions) {
        if (position.known && position.usual.value.isEmpty()) {
            result.answer = Impossible;
            return result;
        }
    }
    const Run run = bestRun(positions);
    if (run.count == 0)
        return result;
    result.answer = Searchable;
    result.needle.alignment = CodeForms::unitSize(codeSet);
    for (int i = run.first; i < run.first + run.count; ++i) {
        const Position &position = positions.at(i);
        result.needle.value += position.usual.value;
        result.needle.mask += position.usual.mask;
        result.strays += position.strays;
    }
    return result;
}
