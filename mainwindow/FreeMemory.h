#pragma once

#include <QtGlobal>

/// Main memory, in bytes.
namespace FreeMemory {

struct Memory {
    qint64 total = -1; ///< of the machine; -1: not known
    /// What programs may still take before the system moves others out or ends one.
    qint64 available = -1;
};

/// As the system tells; any thread.
Memory now();

/// Whether who had before to take has taken what is missing now: a tenth of the
/// memory, but at least 512 MiB and at most 2 GiB, is no longer left, and 256 MiB or
/// more went since then. False where nothing is known.
bool isTaken(const Memory &before, const Memory &now);

} // namespace FreeMemory
