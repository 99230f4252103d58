#pragma once

#include "engine/ScalarKernels.h"

/// The loops of SearchKernels with vectors. Isa names one instruction set: its
/// vector type, its width in bytes and the few operations used here. Everything
/// is local to the including file, see SearchKernels.h.
namespace {

template <class Isa> class VectorKernels {
public:
    static std::int64_t findBytePair(const std::uint8_t *bytes, std::int64_t from, std::int64_t end,
                                     const SearchKernels::BytePair &pair)
    {
        if (end - from < Isa::Width)
            return ScalarKernels::findPair(bytes, from, end, pair);
        if (pair.first.mask == 0xFF && pair.second.mask == 0xFF)
            return find(bytes, from, end, BytesEqual<false>(pair.first),
                        BytesEqual<false>(pair.second));
        return find(bytes, from, end, BytesEqual<true>(pair.first), BytesEqual<true>(pair.second));
    }

    static std::int64_t findUnitPair(const char16_t *text, std::int64_t from, std::int64_t end,
                                     const SearchKernels::UnitPair &pair)
    {
        if (end - from < Isa::Width / 2)
            return ScalarKernels::findPair(text, from, end, pair);
        switch (pair.first.variantCount) {
        case 1:
            return findUnits<1>(text, from, end, pair);
        case 2:
            return findUnits<2>(text, from, end, pair);
        default:
            return findUnits<4>(text, from, end, pair);
        }
    }

    /// Most files hold no CR at all, which one look at each byte tells.
    static SearchKernels::ByteSurvey survey(const std::uint8_t *bytes, std::int64_t size)
    {
        const Vector carriageReturn = Isa::splat8('\r');
        Vector all = Isa::splat8(0);
        Vector returns = Isa::splat8(0);
        std::int64_t at = 0;
        for (; at + 2 * Isa::Width <= size; at += 2 * Isa::Width) {
            const Vector low = Isa::load(bytes + at);
            const Vector high = Isa::load(bytes + at + Isa::Width);
            all = Isa::either(all, Isa::either(low, high));
            returns = Isa::either(
                returns,
                Isa::either(Isa::equal8(low, carriageReturn), Isa::equal8(high, carriageReturn)));
        }
        SearchKernels::ByteSurvey result;
        result.highByte = Isa::highBits(all) != 0;
        result.loneCarriageReturn =
            Isa::highBits(returns) != 0 && hasLoneCarriageReturn(bytes, at, size);
        ScalarKernels::extendSurvey(bytes, at, size, result);
        return result;
    }

private:
    using Vector = typename Isa::Vector;

    /// Looks at the CR of [0, end), which another byte may follow.
    static bool hasLoneCarriageReturn(const std::uint8_t *bytes, std::int64_t end,
                                      std::int64_t size)
    {
        const Vector carriageReturn = Isa::splat8('\r');
        const Vector lineFeed = Isa::splat8('\n');
        Vector lone = Isa::splat8(0);
        std::int64_t at = 0;
        for (; at + Isa::Width <= end && at + Isa::Width + 1 <= size; at += Isa::Width) {
            const Vector here = Isa::load(bytes + at);
            const Vector next = Isa::load(bytes + at + 1);
            lone = Isa::either(
                lone, Isa::butNot(Isa::equal8(here, carriageReturn), Isa::equal8(next, lineFeed)));
        }
        SearchKernels::ByteSurvey rest;
        ScalarKernels::extendSurvey(bytes, at, size, rest);
        return Isa::highBits(lone) != 0 || rest.loneCarriageReturn;
    }

    template <bool Masked> class BytesEqual {
    public:
        explicit BytesEqual(const SearchKernels::BytePair::Place &place)
            : m_offset(place.offset)
            , m_mask(Isa::splat8(place.mask))
            , m_value(Isa::splat8(place.value))
        {
        }
        Vector operator()(const std::uint8_t *at) const
        {
            const Vector bytes = Isa::load(at + m_offset);
            if constexpr (Masked)
                return Isa::equal8(Isa::both(bytes, m_mask), m_value);
            else
                return Isa::equal8(bytes, m_value);
        }

    private:
        std::int64_t m_offset;
        Vector m_mask;
        Vector m_value;
    };

    template <int Count> class UnitsEqual {
    public:
        explicit UnitsEqual(const SearchKernels::UnitPair::Place &place) : m_offset(place.offset)
        {
            for (int i = 0; i < Count; ++i)
                m_values[i] = Isa::splat16(place.variants[i]);
        }
        Vector operator()(const char16_t *at) const
        {
            const Vector units = Isa::load(at + m_offset);
            Vector result = Isa::equal16(units, m_values[0]);
            for (int i = 1; i < Count; ++i)
                result = Isa::either(result, Isa::equal16(units, m_values[i]));
            return result;
        }

    private:
        std::int64_t m_offset;
        Vector m_values[Count];
    };

    template <int FirstCount>
    static std::int64_t findUnits(const char16_t *text, std::int64_t from, std::int64_t end,
                                  const SearchKernels::UnitPair &pair)
    {
        const UnitsEqual<FirstCount> first(pair.first);
        switch (pair.second.variantCount) {
        case 1:
            return find(text, from, end, first, UnitsEqual<1>(pair.second));
        case 2:
            return find(text, from, end, first, UnitsEqual<2>(pair.second));
        default:
            return find(text, from, end, first, UnitsEqual<4>(pair.second));
        }
    }

    /// The range holds at least one vector, so the last, incomplete step can be
    /// a whole one that begins earlier, with positions that are known not to
    /// agree.
    template <class Unit, class First, class Second>
    static std::int64_t find(const Unit *units, std::int64_t from, std::int64_t end,
                             const First &first, const Second &second)
    {
        constexpr std::int64_t Step = Isa::Width / static_cast<int>(sizeof(Unit));
        std::int64_t at = from;
        for (; at + 2 * Step <= end; at += 2 * Step) {
            const Vector low = Isa::both(first(units + at), second(units + at));
            const Vector high = Isa::both(first(units + at + Step), second(units + at + Step));
            if (Isa::highBits(Isa::either(low, high)) == 0)
                continue;
            if (const std::uint32_t bits = Isa::highBits(low))
                return at + place<Unit>(bits);
            return at + Step + place<Unit>(Isa::highBits(high));
        }
        while (at < end) {
            const std::int64_t start = at + Step <= end ? at : end - Step;
            const Vector both = Isa::both(first(units + start), second(units + start));
            const std::uint32_t bits = Isa::highBits(both);
            if (bits != 0)
                return start + place<Unit>(bits);
            at = start + Step;
        }
        return end;
    }

    template <class Unit> static std::int64_t place(std::uint32_t bits)
    {
        return __builtin_ctz(bits) / static_cast<int>(sizeof(Unit));
    }
};

} // namespace
