#pragma once

#include "engine/SearchKernels.h"

namespace SearchKernels {

/// Every x86-64 processor has SSE2.
const Table &sse2();
/// Only to be used after a check of the processor.
const Table &avx2();

} // namespace SearchKernels
