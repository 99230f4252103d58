#pragma once

#include "engine/SearchKernels.h"

/// Loops without a branch, which the compiler turns into vector code of the
/// instruction set that the including file is compiled for. Everything is local
/// to that file, see SearchKernels.h.
namespace {
namespace ByteLoops {

// A whole number of vectors, and no more bytes than a counter of one byte can
// count: with such counters one instruction counts in a whole vector.
constexpr std::int64_t kCountBlock = 224;

inline void summariseBlock(const std::uint8_t *bytes, std::int64_t size,
                           SearchKernels::ByteSummary *summary)
{
    std::uint8_t joined = 0;
    std::uint8_t zeros = 0;
    std::uint8_t escapes = 0;
    std::uint8_t lineFeeds = 0;
    std::uint8_t carriageReturns = 0;
    for (std::int64_t i = 0; i < size; ++i) {
        const std::uint8_t byte = bytes[i];
        joined = std::uint8_t(joined | byte);
        zeros = std::uint8_t(zeros | std::uint8_t(byte == 0));
        escapes = std::uint8_t(escapes | std::uint8_t(byte == 0x1B));
        lineFeeds = std::uint8_t(lineFeeds + std::uint8_t(byte == '\n'));
        carriageReturns = std::uint8_t(carriageReturns + std::uint8_t(byte == '\r'));
    }
    summary->high |= joined >= 0x80;
    summary->zero |= zeros != 0;
    summary->escape |= escapes != 0;
    summary->lineFeeds += lineFeeds;
    summary->carriageReturns += carriageReturns;
}

inline std::int64_t countBlock(const std::uint8_t *bytes, std::int64_t size, std::uint8_t wanted)
{
    std::uint8_t found = 0;
    for (std::int64_t i = 0; i < size; ++i)
        found = std::uint8_t(found + std::uint8_t(bytes[i] == wanted));
    return found;
}

inline SearchKernels::ByteSummary summarise(const std::uint8_t *bytes, std::int64_t size)
{
    SearchKernels::ByteSummary summary;
    for (; size >= kCountBlock; size -= kCountBlock, bytes += kCountBlock)
        summariseBlock(bytes, kCountBlock, &summary);
    summariseBlock(bytes, size, &summary);
    return summary;
}

inline std::int64_t count(const std::uint8_t *bytes, std::int64_t size, std::uint8_t wanted)
{
    std::int64_t found = 0;
    for (; size >= kCountBlock; size -= kCountBlock, bytes += kCountBlock)
        found += countBlock(bytes, kCountBlock, wanted);
    return found + countBlock(bytes, size, wanted);
}

} // namespace ByteLoops
} // namespace
