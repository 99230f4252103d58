#include "engine/KeywordPrefilter.h"

#include "engine/ByteOrderMark.h"
#include "engine/CodeForms.h"
#include "engine/EncodedLiteral.h"
#include "engine/Iso2022Stream.h"
#include "engine/JapaneseForms.h"
#include "engine/LoneCarriageReturn.h"

#include <QChar>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace {

/// A UTF-32 unit above the last code point. It decodes to the halves of a pair
/// that are computed without a check: the first may be any character.
bool hasImpossibleUnit(const char *bytes, qint64 size, bool bigEndian)
{
    // The highest byte of a unit is 0 and the second at most 10: the sum reaches
    // 80 from 11 on. No branch and no exchange of bytes in the loop, so that it
    // looks at several units at once.
    const quint32 highest = bigEndian ? 0x000000FF : 0xFF000000;
    const quint32 second = bigEndian ? 0x0000FF00 : 0x00FF0000;
    const quint32 upTo80 = second / 0xFF * (0x80 - 0x11);
    quint32 joined = 0;
    for (qint64 at = 0; at + 4 <= size; at += 4) {
        const auto unit = qFromLittleEndian<quint32>(bytes + at);
        joined |= unit | ((unit & second) + upTo80);
    }
    return (joined & (highest | second / 0xFF * 0x80)) != 0;
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
    : KeywordPrefilter(RequiredLiteral(keyword1, regExp, sensitivity))
{
}

KeywordPrefilter::KeywordPrefilter(const RequiredLiteral &required) : m_required(required)
{
}

bool KeywordPrefilter::mayMatch(const char *bytes, qint64 size, int codeSet) const
{
    if (m_required.neverMatches())
        return false;
    if (m_required.alternatives().isEmpty())
        return true;
    ByteOrderMark::skip(&bytes, &size, &codeSet);
    const Plan &way = plan(codeSet);
    if (way.answer != Plan::Search)
        return way.answer == Plan::PassAll;
    if (codeSet == CodeSet::Iso2022Jp)
        return mayMatchIso2022(way, bytes, size);
    if (CodeForms::unitSize(codeSet) == 1)
        return mayMatchBytes(way, bytes, size);
    return mayMatchUnits(way, bytes, size, codeSet);
}

const ByteSearch *KeywordPrefilter::lineSearch(int codeSet, bool highBytes) const
{
    static const ByteSearch nothing;
    if (m_required.neverMatches())
        return &nothing;
    if (m_required.alternatives().isEmpty())
        return nullptr;
    const Plan &way = plan(codeSet);
    if (way.answer == Plan::PassAll)
        return nullptr;
    return highBytes || !way.straysAreHigh ? &way.all : &way.needles;
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
    BytePattern::removeDuplicates(&needles);
    BytePattern::removeDuplicates(&strays);
    plan->answer = needles.isEmpty() ? Plan::PassNone : Plan::Search;
    plan->needles = ByteSearch(needles);
    plan->strays = ByteSearch(strays);
    plan->all = ByteSearch(needles + strays);
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
        || LoneCarriageReturn::isIn(bytes, size, unitSize, bigEndian)
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
