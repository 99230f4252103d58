#include "engine/SearchKernelsX86.h"

namespace SearchKernels {

namespace {

bool hasAvx2()
{
    return __builtin_cpu_supports("avx2") != 0;
}

} // namespace

const Table &best()
{
    static const Table &chosen = hasAvx2() ? avx2() : sse2();
    return chosen;
}

const Table *usable(int index)
{
    switch (index) {
    case 0:
        return &portable();
    case 1:
        return &sse2();
    case 2:
        return hasAvx2() ? &avx2() : nullptr;
    default:
        return nullptr;
    }
}

} // namespace SearchKernels
