#pragma once

#include "engine/BytePattern.h"

#include <QVector>

#include <cstdint>
#include <vector>

/// Looks for many byte strings by one look at each byte of a buffer, however many
/// there are: what stands there is looked up among the patterns' heads, and only
/// patterns with that head are compared.
///
/// 1. All patterns with at least kLongHead bytes have a head of the same length, at
///    most a word of eight bytes; so have all that are shorter. Bits that some pattern
///    leaves out are left out of all heads.
/// 2. That nothing has the head that stands somewhere is mostly told by a bit, in a set
///    that stays in the first-level cache.
/// 3. Of more than kMostAlike patterns with the same head, what is behind the head is
///    looked up in the same way.
///
/// Memory and the time to make it grow with the patterns' number and length alone.
///
/// Immutable; any number of threads may use one object.
class BytePatternTable {
public:
    static constexpr int kLongHead = 4;
    static constexpr int kMostAlike = 8;

    /// Finds nothing.
    BytePatternTable() = default;
    explicit BytePatternTable(const QVector<BytePattern> &patterns);

    bool isEmpty() const { return m_patterns.empty(); }

    /// The first position at or after from where one of the patterns stands whole, or
    /// -1. from is 0 or more; one past the end is allowed.
    qint64 indexIn(const char *bytes, qint64 size, qint64 from) const;

private:
    using Patterns = std::vector<BytePattern>;
    using Numbers = std::vector<int>; // of patterns

    /// Where something may stand.
    struct Place {
        const char *bytes;
        qint64 size;
        qint64 at;

        bool has(const BytePattern &pattern) const;
        std::uint64_t word(int skip) const;
    };

    class Level;

    /// The heads of one length of some patterns, the first bytes of which are skipped.
    class Heads {
    public:
        Heads() = default;
        Heads(const Patterns &patterns, const Numbers &numbers, int skip);

        bool isEmpty() const { return m_entries.empty(); }
        std::uint64_t hash(std::uint64_t word) const
        {
            // The digits of the golden ratio spread the bits of a head over the upper ones.
            return (word & m_mask) * 0x9E3779B97F4A7C15U;
        }
        bool standsAt(const Patterns &patterns, const Place &place, std::uint64_t word) const;
        /// Of each entry.
        std::vector<std::uint64_t> hashes() const;

    private:
        struct Entry {
            std::uint64_t head;
            int pattern; // -1: there are several, see the level
            int level;
        };

        size_t bucket(std::uint64_t head) const { return size_t(hash(head) >> m_shift); }
        void addEntries(const Patterns &patterns, std::uint64_t head, const Numbers &numbers,
                        int skip);
        void sortEntries();

        std::uint64_t m_mask = 0;
        int m_shift = 0;
        std::vector<std::uint32_t> m_starts; // of the buckets among the entries
        std::vector<Entry> m_entries;
        std::vector<Level> m_levels;
    };

    /// Some patterns, the first bytes of which are known to be alike.
    class Level {
    public:
        Level() = default;
        Level(const Patterns &patterns, const Numbers &numbers, int skip);

        bool standsAt(const Patterns &patterns, const Place &place) const;
        const Heads &longHeads() const { return m_longHeads; }
        const Heads &shortHeads() const { return m_shortHeads; }

    private:
        int m_skip = 0;
        Numbers m_whole; // of which nothing is left
        Heads m_longHeads;
        Heads m_shortHeads;
    };

    /// May say that a hash is in it that is not.
    class HashSet {
    public:
        void add(const std::vector<std::uint64_t> &hashes);
        bool mayHave(std::uint64_t hash) const
        {
            return (m_bits[size_t(hash >> kUnitShift)] >> (hash >> kBitShift & 63) & 1) != 0;
        }

    private:
        static constexpr int kBitShift = 64 - 16;
        static constexpr int kUnitShift = kBitShift + 6;

        std::vector<std::uint64_t> m_bits = std::vector<std::uint64_t>(1024);
    };

    template <bool hasShort> qint64 scan(const char *bytes, qint64 size, qint64 from) const;

    Patterns m_patterns;
    Level m_all;
    HashSet m_longHashes;
    HashSet m_shortHashes;
    int m_step = 1; // bytes between two positions that count
};
