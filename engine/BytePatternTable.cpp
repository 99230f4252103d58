#include "engine/BytePatternTable.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>

namespace {

constexpr int kWord = 8;

/// Up to eight bytes, in the order that they have in memory; zeros for what is missing.
std::uint64_t wordOf(const char *bytes, qint64 size)
{
    std::uint64_t word = 0;
    if (size >= kWord)
        std::memcpy(&word, bytes, kWord);
    else if (size > 0)
        std::memcpy(&word, bytes, size_t(size));
    return word;
}

} // namespace

bool BytePatternTable::Place::has(const BytePattern &pattern) const
{
    return at % pattern.alignment == 0 && pattern.value.size() <= size - at
        && pattern.matchesAt(bytes + at);
}

std::uint64_t BytePatternTable::Place::word(int skip) const
{
    return skip < size - at ? wordOf(bytes + at + skip, size - at - skip) : 0;
}

BytePatternTable::Heads::Heads(const Patterns &patterns, const Numbers &numbers, int skip)
{
    if (numbers.empty())
        return;
    int length = kWord;
    m_mask = std::numeric_limits<std::uint64_t>::max();
    for (const int number : numbers) {
        const QByteArray &mask = patterns[size_t(number)].mask;
        length = std::min(length, mask.size() - skip);
        m_mask &= wordOf(mask.constData() + skip, length);
    }
    std::map<std::uint64_t, Numbers> alike;
    for (const int number : numbers) {
        const QByteArray &value = patterns[size_t(number)].value;
        alike[wordOf(value.constData() + skip, length) & m_mask].push_back(number);
    }
    for (const auto &[head, same] : alike)
        addEntries(patterns, head, same, skip + length);
    sortEntries();
}

void BytePatternTable::Heads::addEntries(const Patterns &patterns, std::uint64_t head,
                                         const Numbers &numbers, int skip)
{
    if (numbers.size() > size_t(kMostAlike)) {
        m_entries.push_back({head, -1, int(m_levels.size())});
        m_levels.emplace_back(patterns, numbers, skip);
        return;
    }
    for (const int number : numbers)
        m_entries.push_back({head, number, -1});
}

void BytePatternTable::Heads::sortEntries()
{
    int bits = 1;
    while ((size_t(1) << bits) < m_entries.size())
        ++bits;
    m_shift = 64 - bits;
    std::sort(m_entries.begin(), m_entries.end(),
              [this](const Entry &a, const Entry &b) { return bucket(a.head) < bucket(b.head); });
    m_starts.assign((size_t(1) << bits) + 1, 0);
    for (const Entry &entry : m_entries)
        ++m_starts[bucket(entry.head) + 1];
    for (size_t i = 1; i < m_starts.size(); ++i)
        m_starts[i] += m_starts[i - 1];
}

/// Whether one of the patterns stands at the place; word is what does, behind what is
/// skipped.
bool BytePatternTable::Heads::standsAt(const Patterns &patterns, const Place &place,
                                       std::uint64_t word) const
{
    const size_t found = bucket(word);
    for (std::uint32_t i = m_starts[found]; i < m_starts[found + 1]; ++i) {
        const Entry &entry = m_entries[i];
        if (entry.head != (word & m_mask))
            continue;
        if (entry.pattern >= 0 ? place.has(patterns[size_t(entry.pattern)])
                               : m_levels[size_t(entry.level)].standsAt(patterns, place))
            return true;
    }
    return false;
}

std::vector<std::uint64_t> BytePatternTable::Heads::hashes() const
{
    std::vector<std::uint64_t> all;
    for (const Entry &entry : m_entries)
        all.push_back(hash(entry.head));
    return all;
}

BytePatternTable::Level::Level(const Patterns &patterns, const Numbers &numbers, int skip)
    : m_skip(skip)
{
    Numbers longer;
    Numbers shorter;
    for (const int number : numbers) {
        const int left = patterns[size_t(number)].value.size() - skip;
        (left >= kLongHead ? longer : left > 0 ? shorter : m_whole).push_back(number);
    }
    m_longHeads = Heads(patterns, longer, skip);
    m_shortHeads = Heads(patterns, shorter, skip);
}

bool BytePatternTable::Level::standsAt(const Patterns &patterns, const Place &place) const
{
    const auto stands = [&](int number) {
        return place.has(patterns[size_t(number)]);
    };
    const std::uint64_t word = place.word(m_skip);
    return (!m_longHeads.isEmpty() && m_longHeads.standsAt(patterns, place, word))
        || (!m_shortHeads.isEmpty() && m_shortHeads.standsAt(patterns, place, word))
        || std::any_of(m_whole.cbegin(), m_whole.cend(), stands);
}

void BytePatternTable::HashSet::add(const std::vector<std::uint64_t> &hashes)
{
    for (const std::uint64_t hash : hashes)
        m_bits[size_t(hash >> kUnitShift)] |= std::uint64_t(1) << (hash >> kBitShift & 63);
}

BytePatternTable::BytePatternTable(const QVector<BytePattern> &patterns)
    : m_patterns(patterns.cbegin(), patterns.cend())
{
    Numbers numbers;
    m_step = patterns.isEmpty() ? 1 : patterns.first().alignment;
    for (const BytePattern &pattern : patterns) {
        numbers.push_back(int(numbers.size()));
        m_step = std::min(m_step, pattern.alignment);
    }
    m_all = Level(m_patterns, numbers, 0);
    m_longHashes.add(m_all.longHeads().hashes());
    m_shortHashes.add(m_all.shortHeads().hashes());
}

qint64 BytePatternTable::indexIn(const char *bytes, qint64 size, qint64 from) const
{
    if (isEmpty())
        return -1;
    const qint64 first = (from + m_step - 1) / m_step * m_step;
    return m_all.shortHeads().isEmpty() ? scan<false>(bytes, size, first)
                                        : scan<true>(bytes, size, first);
}

template <bool hasShort>
qint64 BytePatternTable::scan(const char *bytes, qint64 size, qint64 from) const
{
    const Heads &longHeads = m_all.longHeads();
    const Heads &shortHeads = m_all.shortHeads();
    qint64 at = from;
    for (; at + kWord <= size; at += m_step) {
        const std::uint64_t word = wordOf(bytes + at, kWord);
        const bool may = m_longHashes.mayHave(longHeads.hash(word))
            || (hasShort && m_shortHashes.mayHave(shortHeads.hash(word)));
        if (may && m_all.standsAt(m_patterns, {bytes, size, at}))
            return at;
    }
    for (; at < size; at += m_step) {
        if (m_all.standsAt(m_patterns, {bytes, size, at}))
            return at;
    }
    return -1;
}
