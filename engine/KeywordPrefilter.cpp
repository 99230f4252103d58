#include "engine/KeywordPrefilter.h"

#include "engine/CodeForms.h"
#include "engine/EncodedLiteral.h"
#include "engine/Iso2022Stream.h"
#include "engine/JapaneseForms.h"

#include <QChar>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

/// A byte-order mark at the start of a file.
struct Mark {
    const char *bytes;
    int size;
    CodeSet::Number codeSet;
};

// In the order in which the decoder looks for them.
constexpr Mark kMarks[] = {
    {"\x00\x00\xFE\xFF", 4, CodeSet::Utf32Be}, {"\xFF\xFE\x00\x00", 4, CodeSet::Utf32Le},
    {"\xFE\xFF", 2, CodeSet::Utf16Be},         {"\xFF\xFE", 2, CodeSet::Utf16Le},
    {"\xEF\xBB\xBF", 3, CodeSet::Utf8},
};

const Mark *markAt(const char *bytes, qint64 size)
{
    for (const Mark &mark : kMarks) {
        if (size >= mark.size
            && std::memcmp(bytes, mark.bytes, static_cast<size_t>(mark.size)) == 0)
            return &mark;
    }
    return nullptr;
}

bool isUnit(const char *at, char16_t value, int unitSize, bool bigEndian)
{
    for (int i = 0; i < unitSize; ++i) {
        const int shift = 8 * (bigEndian ? unitSize - 1 - i : i);
        const int expected = shift < 16 ? (value >> shift) & 0xFF : 0;
        if (static_cast<uchar>(at[i]) != expected)
            return false;
    }
    return true;
}

/// A CR unit with another unit than LF behind it.
bool hasLoneCarriageReturn(const char *bytes, qint64 size, int unitSize, bool bigEndian)
{
    const char *const end = bytes + size;
    const char *at = bytes;
    while (at != end) {
        at = static_cast<const char *>(std::memchr(at, '\r', static_cast<size_t>(end - at)));
        if (at == nullptr)
            return false;
        const char *const unit = at - (at - bytes) % unitSize;
        if (end - unit >= 2 * unitSize && isUnit(unit, '\r', unitSize, bigEndian)
            && !isUnit(unit + unitSize, '\n', unitSize, bigEndian))
            return true;
        ++at;
    }
    return false;
}

/// A UTF-32 unit above the last code point. It decodes to the halves of a pair
/// that are computed without a check: the first may be any character.
bool hasImpossibleUnit(const char *bytes, qint64 size, bool bigEndian)
{
    for (qint64 at = 0; at + 4 <= size; at += 4) {
        const quint32 unit = bigEndian ? qFromBigEndian<quint32>(bytes + at)
                                       : qFromLittleEndian<quint32>(bytes + at);
        if (unit > QChar::LastValidCodePoint)
            return true;
    }
    return false;
}

bool hasHighByte(const BytePattern &pattern)
{
    const auto isHigh = [](char byte) {
        return (byte & 0x80) != 0;
    };
    return std::any_of(pattern.value.cbegin(), pattern.value.cend(), isHigh);
}

} // namespace

KeywordPrefilter::KeywordPrefilter(const QString &keyword1, bool regExp,
                                   Qt::CaseSensitivity sensitivity)
    : m_required(keyword1, regExp, sensitivity)
{
}

bool KeywordPrefilter::mayMatch(const char *bytes, qint64 size, int codeSet) const
{
    if (m_required.neverMatches())
        return false;
    if (m_required.alternatives().isEmpty())
        return true;
    if (const Mark *const mark = markAt(bytes, size)) {
        codeSet = mark->codeSet;
        bytes += mark->size;
        size -= mark->size;
    }
    const Plan &way = plan(codeSet);
    if (way.answer != Plan::Search)
        return way.answer == Plan::PassAll;
    if (codeSet == CodeSet::Iso2022Jp)
        return mayMatchIso2022(way, bytes, size);
    if (CodeForms::unitSize(codeSet) == 1)
        return mayMatchBytes(way, bytes, size);
    return mayMatchUnits(way, bytes, size, codeSet);
}

const KeywordPrefilter::Plan &KeywordPrefilter::plan(int codeSet) const
{
    const bool known = codeSet >= 0 && codeSet < CodeSet::kCount;
    const int number = known ? codeSet : static_cast<int>(CodeSet::Default);
    Plan &plan = m_plans[static_cast<size_t>(number)];
    std::call_once(plan.prepared, [this, &plan, number] { prepare(&plan, number); });
    return plan;
}

void KeywordPrefilter::prepare(Plan *plan, int codeSet) const
{
    if (CodeSet::codec(codeSet) == nullptr)
        return; // the locale's codec decodes
    QVector<BytePattern> needles;
    QVector<BytePattern> strays;
    if (codeSet == CodeSet::Utf8) // dropped when nothing but whole blocks of ASCII came before
        strays.append(BytePattern::exact("\xEF\xBB\xBF"));
    for (const QString &literal : m_required.alternatives()) {
        const EncodedLiteral encoded =
            EncodedLiteral::encode(literal, m_required.caseSensitivity(), codeSet);
        if (encoded.answer == EncodedLiteral::Unknown)
            return;
        if (encoded.answer == EncodedLiteral::Impossible)
            continue;
        needles.append(encoded.needle);
        strays += encoded.strays;
    }
    plan->answer = needles.isEmpty() ? Plan::PassNone : Plan::Search;
    plan->needles = ByteSearch(needles);
    plan->strays = ByteSearch(strays);
    plan->straysAreHigh = std::all_of(strays.cbegin(), strays.cend(), hasHighByte);
}

bool KeywordPrefilter::mayMatchBytes(const Plan &plan, const char *bytes, qint64 size) const
{
    if (plan.needles.isIn(bytes, size))
        return true;
    const SearchKernels::ByteSurvey survey =
        SearchKernels::best().survey(reinterpret_cast<const uchar *>(bytes), size);
    if (survey.loneCarriageReturn)
        return true;
    return (survey.highByte || !plan.straysAreHigh) && plan.strays.isIn(bytes, size);
}

bool KeywordPrefilter::mayMatchUnits(const Plan &plan, const char *bytes, qint64 size,
                                     int codeSet) const
{
    const bool bigEndian = codeSet == CodeSet::Utf16Be || codeSet == CodeSet::Utf32Be;
    const int unitSize = CodeForms::unitSize(codeSet);
    return plan.needles.isIn(bytes, size) || plan.strays.isIn(bytes, size)
        || hasLoneCarriageReturn(bytes, size, unitSize, bigEndian)
        || (unitSize == 4 && hasImpossibleUnit(bytes, size, bigEndian));
}

bool KeywordPrefilter::mayMatchIso2022(const Plan &plan, const char *bytes, qint64 size) const
{
    if (size > std::numeric_limits<int>::max())
        return true;
    QByteArray characters;
    if (!Iso2022Stream::extractCharacters(
            bytes, size, JapaneseForms::of(CodeSet::Iso2022Jp).designations(), &characters))
        return true;
    return plan.needles.isIn(characters.constData(), characters.size())
        || plan.strays.isIn(characters.constData(), characters.size());
}
