#pragma once

#include "engine/SearchKernels.h"

#include <QtGlobal>

/// Single passes over raw bytes. The loops are written so that the compiler
/// turns them into vector code: they run over every file of a search, where a
/// table of 256 counters filled byte by byte would cost as much as reading.
namespace ByteScan {

using Summary = SearchKernels::ByteSummary;

Summary summarise(const char *bytes, int size);

/// What a text holds. Steady ASCII are the characters that no Japanese codec has
/// another use for: neither the shifts (0E, 0F, 1B), nor the controls that the
/// PC code pages exchange among themselves (1A, 1C, 7F), nor 00, which one takes
/// for an error.
enum class Ascii {
    AllSteady, ///< nothing but steady ASCII
    SteadyAndHigh, ///< that, and bytes of 128 or above
    Other ///< some byte is ASCII, but not steady
};

Ascii asciiOf(const char *bytes, qint64 size);

/// Number of bytes equal to wanted.
qint64 count(const char *bytes, qint64 size, char wanted);

} // namespace ByteScan
