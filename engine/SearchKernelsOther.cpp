#include "engine/SearchKernels.h"

namespace SearchKernels {

const Table &best()
{
    return portable();
}

const Table *usable(int index)
{
    return index == 0 ? &portable() : nullptr;
}

} // namespace SearchKernels
