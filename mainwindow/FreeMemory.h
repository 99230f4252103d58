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

/// Less than a tenth is left, or less than 512 MiB. False where nothing is known.
bool isShort(const Memory &memory);

} // namespace FreeMemory
