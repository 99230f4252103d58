#include "engine/MatchTexts.h"

#include <algorithm>

namespace {

// Longer literals make no search faster.
constexpr int kMaxLength = 64;
// Repetitions beyond this are treated as "and more".
constexpr int kMaxCopies = 8;

const QStringList kEmptyText = {QString()};

// Shorter ones of a long list stand on nearly every line.
constexpr int kMinListedWeight = 2;

/// A character beyond ASCII is as good as two.
int weight(const QString &text)
{
    const auto wide =
        std::count_if(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() >= 0x80; });
    return text.size() + static_cast<int>(wide);
}

bool isTooMuch(const QStringList &texts)
{
    if (texts.size() <= MatchTexts::kMaxTexts)
        return false;
    return texts.size() > MatchTexts::kMaxListed
        || std::any_of(texts.cbegin(), texts.cend(),
                       [](const QString &text) { return weight(text) < kMinListedWeight; });
}

QStringList product(const QStringList &first, const QStringList &second)
{
    QStringList result;
    for (const QString &head : first) {
        for (const QString &tail : second)
            result.append(head + tail);
    }
    if (result.size() > 1)
        result.removeDuplicates();
    return result;
}

/// Every text of the first list with every text of the second behind it; empty
/// when that would be too many.
QStringList joined(const QStringList &first, const QStringList &second)
{
    const bool isTooMany = qint64(first.size()) * second.size() > MatchTexts::kMaxTexts;
    return isTooMany ? QStringList() : product(first, second);
}

/// The same of lists that are exact. A single text before or behind a long list makes
/// each of the list longer, so that this ends with what isShort().
QStringList joinedExactly(const QStringList &first, const QStringList &second)
{
    if (second == kEmptyText)
        return first;
    if (first == kEmptyText)
        return second;
    const bool isOneSingle = first.size() == 1 || second.size() == 1;
    return isOneSingle ? product(first, second) : joined(first, second);
}

/// Without duplicates; empty when that would be too many.
QStringList listed(QStringList texts)
{
    texts.removeDuplicates();
    return isTooMuch(texts) ? QStringList() : texts;
}

bool isShort(const QStringList &texts)
{
    return std::all_of(texts.cbegin(), texts.cend(),
                       [](const QString &text) { return text.size() <= kMaxLength; });
}

QStringList cutToHeads(QStringList texts)
{
    for (QString &text : texts)
        text.truncate(kMaxLength);
    return texts;
}

QStringList cutToTails(QStringList texts)
{
    for (QString &text : texts)
        text = text.right(kMaxLength);
    return texts;
}

/// How much a search for these texts rules out: longer is better, more of them
/// is worse.
int score(const QStringList &texts)
{
    constexpr int LengthWeight = 4;
    constexpr int EnoughLength = 12;
    if (texts.isEmpty())
        return 0;
    int shortest = EnoughLength;
    for (const QString &text : texts)
        shortest = std::min(shortest, weight(text));
    const int fewness = std::max(MatchTexts::kMaxTexts - texts.size(), 0);
    return shortest == 0 ? 0 : LengthWeight * shortest + fewness;
}

/// Without the texts that contain another one of the list. Not of a long list, in
/// which that would take longer than looking for all of them.
QStringList withoutContaining(const QStringList &texts)
{
    if (texts.size() > MatchTexts::kMaxTexts)
        return texts;
    QStringList result;
    for (const QString &text : texts) {
        const bool containsOther =
            std::any_of(texts.cbegin(), texts.cend(), [&text](const QString &other) {
                return other.size() < text.size() && text.contains(other);
            });
        if (!containsOther)
            result.append(text);
    }
    return result;
}

} // namespace

MatchTexts MatchTexts::exactly(const QStringList &texts)
{
    MatchTexts result;
    result.m_exact = true;
    result.m_texts = texts;
    return result;
}

MatchTexts MatchTexts::anything()
{
    MatchTexts result;
    result.m_heads = kEmptyText;
    result.m_tails = kEmptyText;
    return result;
}

MatchTexts::Rated MatchTexts::rated(const QStringList &texts)
{
    return {texts, score(texts)};
}

MatchTexts::Rated MatchTexts::better(const Rated &first, const Rated &second)
{
    return second.score > first.score ? second : first;
}

MatchTexts MatchTexts::loosened() const
{
    if (!m_exact)
        return *this;
    MatchTexts result;
    result.m_heads = cutToHeads(m_texts);
    result.m_tails = cutToTails(m_texts);
    result.m_inside = rated(m_texts);
    return result;
}

MatchTexts MatchTexts::followedBy(const MatchTexts &next) const
{
    if (m_exact && next.m_exact) {
        const QStringList texts = joinedExactly(m_texts, next.m_texts);
        if (!texts.isEmpty() && isShort(texts))
            return exactly(texts);
    }
    const MatchTexts first = loosened();
    const MatchTexts second = next.loosened();
    const QStringList longHeads = m_exact ? joined(m_texts, second.m_heads) : QStringList();
    const QStringList longTails =
        next.m_exact ? joined(first.m_tails, next.m_texts) : QStringList();

    MatchTexts result;
    result.m_heads = longHeads.isEmpty() ? first.m_heads : cutToHeads(longHeads);
    result.m_tails = longTails.isEmpty() ? second.m_tails : cutToTails(longTails);
    result.m_inside = better(better(first.m_inside, second.m_inside),
                             rated(joined(first.m_tails, second.m_heads)));
    return result;
}

MatchTexts MatchTexts::orElse(const MatchTexts &other) const
{
    return anyOf({*this, other});
}

MatchTexts MatchTexts::anyOf(const QVector<MatchTexts> &alternatives)
{
    if (alternatives.size() == 1)
        return alternatives.first();
    QStringList all;
    for (const MatchTexts &alternative : alternatives) {
        if (!alternative.m_exact)
            return loosenedAnyOf(alternatives);
        all += alternative.m_texts;
    }
    const QStringList texts = listed(all);
    return texts.isEmpty() ? loosenedAnyOf(alternatives) : exactly(texts);
}

MatchTexts MatchTexts::loosenedAnyOf(const QVector<MatchTexts> &alternatives)
{
    QStringList heads;
    QStringList tails;
    QStringList inside;
    bool isInsideKnown = true;
    for (const MatchTexts &alternative : alternatives) {
        const MatchTexts loose = alternative.loosened();
        heads += loose.m_heads;
        tails += loose.m_tails;
        const QStringList required = loose.required();
        isInsideKnown = isInsideKnown && !required.isEmpty();
        inside += required;
    }
    heads = listed(heads);
    tails = listed(tails);
    MatchTexts result = anything();
    if (!heads.isEmpty())
        result.m_heads = heads;
    if (!tails.isEmpty())
        result.m_tails = tails;
    if (isInsideKnown)
        result.m_inside = rated(listed(inside));
    return result;
}

MatchTexts MatchTexts::repeatedExactly(int count) const
{
    MatchTexts result = exactly(kEmptyText);
    for (int i = 0; i < count; ++i)
        result = result.followedBy(*this);
    return result;
}

MatchTexts MatchTexts::repeated(int minimum, int maximum) const
{
    if (minimum == 1 && maximum == 1)
        return *this;
    if (minimum == 0)
        return maximum == 1 ? orElse(exactly(kEmptyText)) : anything();
    const int copies = std::min(minimum, kMaxCopies);
    MatchTexts once = repeatedExactly(copies);
    if (maximum == copies)
        return once;
    // More copies may follow: the ends stay what they are, and what the first
    // copies contain is still there.
    return once.loosened();
}

QStringList MatchTexts::required() const
{
    const MatchTexts all = loosened();
    const Rated best = better(better(all.m_inside, rated(all.m_heads)), rated(all.m_tails));
    return best.score == 0 ? QStringList() : withoutContaining(best.texts);
}
