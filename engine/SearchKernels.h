#pragma once

#include <cstdint>

/// The inner loops of the searches in raw bytes and in UTF-16 text, once for
/// every instruction set. All tables give the same answers.
///
/// Only plain types appear here: the files behind this header are compiled for
/// different processors, and an inline function of a library that got into one
/// of them could end up in the others' program.
namespace SearchKernels {

/// Two bytes at fixed places of a pattern. A byte b agrees with a place when
/// (b & mask) == value.
struct BytePair {
    struct Place {
        std::int64_t offset = 0; ///< from the pattern's start
        std::uint8_t mask = 0xFF;
        std::uint8_t value = 0;
    };
    Place first;
    Place second;
};

/// Two UTF-16 code units at fixed places of a literal, each given by the up to
/// four units that may stand there (fewer are repeated to fill the four).
struct UnitPair {
    static constexpr int MaxVariants = 4;
    struct Place {
        std::int64_t offset = 0; ///< from the literal's start, in units
        int variantCount = 1; ///< 1, 2 or 4: how many of the units to compare
        char16_t variants[MaxVariants] = {};
    };
    Place first;
    Place second;
};

/// What a file's bytes tell about the ways to read it.
struct ByteSurvey {
    bool highByte = false; ///< a byte of 128 or above occurs
    bool loneCarriageReturn = false; ///< a CR is followed by something else than LF
};

/// What the beginning of a file tells about its code set and line ends.
struct ByteSummary {
    bool high = false; ///< some byte is 128 or above
    bool zero = false;
    bool escape = false; ///< some byte is 0x1B
    int lineFeeds = 0;
    int carriageReturns = 0;
};

/// Positions run over [from, end); at every one of them both places must lie
/// inside the buffer. The answer is the first position where both agree, or end.
using FindBytePair = std::int64_t (*)(const std::uint8_t *bytes, std::int64_t from,
                                      std::int64_t end, const BytePair &pair);
using FindUnitPair = std::int64_t (*)(const char16_t *text, std::int64_t from, std::int64_t end,
                                      const UnitPair &pair);
/// A CR that is the last byte is not lone: nothing follows that it could join.
using Survey = ByteSurvey (*)(const std::uint8_t *bytes, std::int64_t size);

using Summarise = ByteSummary (*)(const std::uint8_t *bytes, std::int64_t size);
/// Bytes equal to wanted.
using Count = std::int64_t (*)(const std::uint8_t *bytes, std::int64_t size, std::uint8_t wanted);

struct Table {
    const char *name;
    FindBytePair findBytePair;
    FindUnitPair findUnitPair;
    Survey survey;
    Summarise summarise;
    Count count;
};

/// Works on every processor.
const Table &portable();
/// The fastest that this processor can run; chosen once.
const Table &best();
/// The tables that this processor can run, portable() first; nullptr when index
/// is past the last.
const Table *usable(int index);

} // namespace SearchKernels
