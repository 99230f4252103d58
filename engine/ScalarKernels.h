#pragma once

#include "engine/SearchKernels.h"

/// The loops of SearchKernels one position at a time: the whole of the portable
/// table, and the remainders that are too short for a vector in the others.
/// Everything is local to the including file, see SearchKernels.h.
namespace {
namespace ScalarKernels {

inline bool agrees(std::uint8_t byte, const SearchKernels::BytePair::Place &place)
{
    return (byte & place.mask) == place.value;
}

inline bool agrees(char16_t unit, const SearchKernels::UnitPair::Place &place)
{
    for (int i = 0; i < place.variantCount; ++i) {
        if (unit == place.variants[i])
            return true;
    }
    return false;
}

template <class Unit, class Pair>
std::int64_t findPair(const Unit *units, std::int64_t from, std::int64_t end, const Pair &pair)
{
    for (std::int64_t at = from; at < end; ++at) {
        if (agrees(units[at + pair.first.offset], pair.first)
            && agrees(units[at + pair.second.offset], pair.second))
            return at;
    }
    return end;
}

inline std::int64_t findBytePair(const std::uint8_t *bytes, std::int64_t from, std::int64_t end,
                                 const SearchKernels::BytePair &pair)
{
    return findPair(bytes, from, end, pair);
}

inline std::int64_t findUnitPair(const char16_t *text, std::int64_t from, std::int64_t end,
                                 const SearchKernels::UnitPair &pair)
{
    return findPair(text, from, end, pair);
}

/// Adds what the bytes of [from, size) show to an earlier finding.
inline void extendSurvey(const std::uint8_t *bytes, std::int64_t from, std::int64_t size,
                         SearchKernels::ByteSurvey &survey)
{
    for (std::int64_t at = from; at < size; ++at) {
        if (bytes[at] >= 0x80)
            survey.highByte = true;
        if (bytes[at] == '\r' && at + 1 < size && bytes[at + 1] != '\n')
            survey.loneCarriageReturn = true;
    }
}

inline SearchKernels::ByteSurvey survey(const std::uint8_t *bytes, std::int64_t size)
{
    SearchKernels::ByteSurvey result;
    extendSurvey(bytes, 0, size, result);
    return result;
}

} // namespace ScalarKernels
} // namespace
