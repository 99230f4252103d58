#include "engine/MatchTexts.h"

#include <algorithm>

namespace {

// Longer literals make no search faster.
constexpr int kMaxLength = 64;
// Repetitions beyond this are treated as "and more".
constexpr int kMaxCopies = 8;

const QStringList kEmptyText = {QString()};

/// Every text of the first list with every text of the second behind it; empty
/// when that would be too many.
QStringList joined(const QStringList &first, const QStringList &second)
{
    QStringList result;
    if (first.size() * second.size() > MatchTexts::kMaxTexts)
        return result;
    for (const QString &head : first) {
        for (const QString &tail : second)
            result.append(head + tail);
    }
    result.removeDuplicates();
    return result;
}

QStringList united(const QStringList &first, const QStringList &second)
{
    QStringList result = first + second;
    result.removeDuplicates();
    if (result.size() > MatchTexts::kMaxTexts)
        result.clear();
    return result;
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
/// is worse, and a character beyond ASCII is as good as two.
int score(const QStringList &texts)
{
    constexpr int LengthWeight = 4;
    constexpr int EnoughLength = 12;
    if (texts.isEmpty())
        return 0;
    int shortest = EnoughLength;
    for (const QString &text : texts) {
        const auto wide =
            std::count_if(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() >= 0x80; });
        shortest = std::min(shortest, text.size() + static_cast<int>(wide));
    }
    return shortest == 0 ? 0 : LengthWeight * shortest + MatchTexts::kMaxTexts - texts.size();
}

QStringList better(const QStringList &first, const QStringList &second)
{
    return score(second) > score(first) ? second : first;
}

/// Without the texts that contain another one of the list.
QStringList withoutContaining(const QStringList &texts)
{
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

MatchTexts MatchTexts::loosened() const
{
    if (!m_exact)
        return *this;
    MatchTexts result;
    result.m_heads = cutToHeads(m_texts);
    result.m_tails = cutToTails(m_texts);
    result.m_inside = m_texts;
    return result;
}

MatchTexts MatchTexts::followedBy(const MatchTexts &next) const
{
    if (m_exact && next.m_exact) {
        const QStringList texts = joined(m_texts, next.m_texts);
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
    result.m_inside =
        better(better(first.m_inside, second.m_inside), joined(first.m_tails, second.m_heads));
    return result;
}

MatchTexts MatchTexts::orElse(const MatchTexts &other) const
{
    if (m_exact && other.m_exact) {
        const QStringList texts = united(m_texts, other.m_texts);
        if (!texts.isEmpty())
            return exactly(texts);
    }
    const MatchTexts first = loosened();
    const MatchTexts second = other.loosened();
    MatchTexts result = anything();
    const QStringList heads = united(first.m_heads, second.m_heads);
    const QStringList tails = united(first.m_tails, second.m_tails);
    if (!heads.isEmpty())
        result.m_heads = heads;
    if (!tails.isEmpty())
        result.m_tails = tails;
    const QStringList firstInside = first.required();
    const QStringList secondInside = second.required();
    if (!firstInside.isEmpty() && !secondInside.isEmpty())
        result.m_inside = united(firstInside, secondInside);
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
    const QStringList best = better(better(all.m_inside, all.m_heads), all.m_tails);
    return score(best) == 0 ? QStringList() : withoutContaining(best);
}
