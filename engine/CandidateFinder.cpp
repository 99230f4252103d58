#include "engine/CandidateFinder.h"

#include "engine/ByteFrequency.h"
#include "engine/CaseFolding.h"
#include "engine/CodeSet.h"
#include "engine/EncodedLiteral.h"

#include <algorithm>
#include <cstring>

namespace {

using UnitPlace = SearchKernels::UnitPair::Place;

// Several literals take turns on pieces of this many code units, so that one
// that is nowhere does not read the whole text at each step to another's hit.
// The pieces grow while nothing is found.
constexpr qint64 kFirstPieceSize = 64;
constexpr qint64 kLastPieceSize = 4096;

constexpr int kUnitSize = 2; // bytes

bool endsPair(const char16_t *text, qint64 at)
{
    return at > 0 && QChar::isLowSurrogate(text[at]) && QChar::isHighSurrogate(text[at - 1]);
}

/// What QString compares, ignoring case, for the unit at the position: the
/// second half of a pair stands for the whole pair.
uint foldedAt(const char16_t *text, qint64 at)
{
    if (endsPair(text, at))
        return QChar::toCaseFolded(QChar::surrogateToUcs4(text[at - 1], text[at]));
    return QChar::toCaseFolded(uint(text[at]));
}

/// The code units that can stand in the text where the literal has this one.
QVector<char16_t> variantsAt(const char16_t *literal, qint64 at, Qt::CaseSensitivity sensitivity)
{
    const char16_t unit = literal[at];
    if (sensitivity == Qt::CaseSensitive)
        return {unit};
    const bool pair = endsPair(literal, at);
    const uint codePoint = pair ? QChar::surrogateToUcs4(literal[at - 1], unit) : uint(unit);
    QVector<char16_t> result;
    for (const uint variant : CaseFolding::variants(codePoint)) {
        if (!pair && !QChar::requiresSurrogates(variant))
            result.append(static_cast<char16_t>(variant));
        else if (pair && QChar::requiresSurrogates(variant)
                 && QChar::highSurrogate(variant) == literal[at - 1])
            result.append(QChar::lowSurrogate(variant));
    }
    return result;
}

/// In 10,000 units of text, about.
int frequency(char16_t unit)
{
    constexpr int OfKana = 100;
    constexpr int OfOthers = 5;
    if (unit < 0x80)
        return ByteFrequency::of(static_cast<uchar>(unit));
    return unit >= 0x3000 && unit < 0x3100 ? OfKana : OfOthers;
}

struct RankedPlace {
    UnitPlace place;
    int frequency = 0;
};

RankedPlace rank(qint64 at, QVector<char16_t> variants)
{
    RankedPlace result;
    result.place.offset = at;
    for (const char16_t variant : qAsConst(variants))
        result.frequency += frequency(variant);
    while (variants.size() != 1 && variants.size() != 2
           && variants.size() < SearchKernels::UnitPair::MaxVariants)
        variants.append(variants.first());
    result.place.variantCount = variants.size();
    std::copy(variants.cbegin(), variants.cend(), result.place.variants);
    return result;
}

EncodedLiteral encoded(const QString &text, Qt::CaseSensitivity sensitivity)
{
    const bool isLittle = QSysInfo::ByteOrder == QSysInfo::LittleEndian;
    return EncodedLiteral::encode(text, sensitivity,
                                  isLittle ? CodeSet::Utf16Le : CodeSet::Utf16Be);
}

/// A beginning of the text of which the needle leaves nothing out; Unknown if there is none.
EncodedLiteral encodedStart(const QString &text, Qt::CaseSensitivity sensitivity)
{
    for (const int length : {16, 8, 4, 2}) {
        QString start = text.left(length);
        if (start.at(start.size() - 1).isHighSurrogate())
            start.chop(1);
        EncodedLiteral result = encoded(start, sensitivity);
        const bool isWhole = result.needle.value.size() == start.size() * kUnitSize;
        if (result.answer == EncodedLiteral::Searchable && isWhole)
            return result;
    }
    return {};
}

qint64 indexIn(const ByteSearch &search, QStringView text, qint64 from)
{
    const auto *bytes = reinterpret_cast<const char *>(text.utf16());
    const qint64 found = search.indexIn(bytes, text.size() * kUnitSize, from * kUnitSize);
    return found < 0 ? -1 : found / kUnitSize;
}

} // namespace

CandidateFinder::CandidateFinder(const QString &keyword1, bool regExp,
                                 Qt::CaseSensitivity sensitivity,
                                 const SearchKernels::Table &kernels)
    : CandidateFinder(RequiredLiteral(keyword1, regExp, sensitivity), kernels)
{
}

CandidateFinder::CandidateFinder(const RequiredLiteral &required,
                                 const SearchKernels::Table &kernels)
    : m_kernels(&kernels)
{
    m_usable = required.neverMatches() || !required.alternatives().isEmpty();
    if (required.isList())
        m_list = listOf(required);
    if (m_list)
        return;
    for (const QString &text : required.alternatives())
        add(text, required.caseSensitivity());
}

std::optional<CandidateFinder::List> CandidateFinder::listOf(const RequiredLiteral &required)
{
    QVector<BytePattern> needles;
    QVector<BytePattern> strays;
    for (const QString &text : required.alternatives()) {
        const EncodedLiteral encoded = encodedStart(text, required.caseSensitivity());
        if (encoded.answer != EncodedLiteral::Searchable)
            return std::nullopt;
        needles.append(encoded.needle);
        strays += encoded.strays;
    }
    // A single character in a pattern may agree with this one, as a text does not.
    if (required.caseSensitivity() == Qt::CaseInsensitive)
        strays += encoded(QString(QChar(0x130)), Qt::CaseSensitive).needle;
    BytePattern::removeDuplicates(&needles);
    BytePattern::removeDuplicates(&strays);
    return List{ByteSearch(needles), ByteSearch(strays), ByteSearch(needles + strays)};
}

void CandidateFinder::add(const QString &text, Qt::CaseSensitivity sensitivity)
{
    Literal literal;
    literal.text = text;
    const auto *units = reinterpret_cast<const char16_t *>(text.utf16());
    QVector<RankedPlace> places;
    for (int i = 0; i < text.size(); ++i) {
        const QVector<char16_t> variants = variantsAt(units, i, sensitivity);
        if (variants.size() <= SearchKernels::UnitPair::MaxVariants)
            places.append(rank(i, variants));
        if (sensitivity == Qt::CaseInsensitive)
            literal.folded.append(foldedAt(units, i));
    }
    if (places.isEmpty()) {
        m_usable = false;
        return;
    }
    std::stable_sort(places.begin(), places.end(), [](const RankedPlace &a, const RankedPlace &b) {
        return a.frequency < b.frequency;
    });
    literal.pair.first = places.first().place;
    literal.pair.second = places.value(1, places.first()).place;
    m_literals.append(literal);
}

qint64 CandidateFinder::nextStart(QStringView line, qint64 from) const
{
    return indexIn(m_list->needles, line, from);
}

bool CandidateFinder::mayMatchAnywhere(QStringView line) const
{
    return indexIn(m_list->strays, line, 0) >= 0;
}

qint64 CandidateFinder::next(QStringView text, qint64 from) const
{
    if (m_list)
        return indexIn(m_list->all, text, from);
    const char16_t *const units = text.utf16();
    qint64 piece = m_literals.size() > 1 ? kFirstPieceSize : text.size();
    qint64 start = from;
    while (start < text.size() && !m_literals.isEmpty()) {
        qint64 end = std::min<qint64>(start + piece, text.size());
        qint64 found = -1;
        for (const Literal &literal : m_literals) {
            const qint64 last = std::min<qint64>(end, text.size() - literal.text.size() + 1);
            const qint64 at = find(literal, units, start, last);
            if (at < last)
                found = end = at;
        }
        if (found >= 0)
            return found;
        start = end;
        piece = std::min(piece * 2, kLastPieceSize);
    }
    return -1;
}

qint64 CandidateFinder::find(const Literal &literal, const char16_t *text, qint64 from,
                             qint64 end) const
{
    const auto matchesAt = [&literal, text](qint64 at) {
        const auto length = static_cast<size_t>(literal.text.size());
        if (literal.folded.isEmpty())
            return std::memcmp(text + at, literal.text.utf16(), length * sizeof(char16_t)) == 0;
        for (int i = 0; i < literal.folded.size(); ++i) {
            if (foldedAt(text + at, i) != literal.folded.at(i))
                return false;
        }
        return true;
    };
    qint64 at = from;
    while (at < end) {
        at = m_kernels->findUnitPair(text, at, end, literal.pair);
        if (at < end && matchesAt(at))
            return at;
        ++at;
    }
    return end;
}
