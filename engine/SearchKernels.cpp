#include "engine/SearchKernels.h"

#include "engine/ScalarKernels.h"

namespace SearchKernels {

const Table &portable()
{
    static const Table table = {"portable", ScalarKernels::findBytePair,
                                ScalarKernels::findUnitPair, ScalarKernels::survey};
    return table;
}

} // namespace SearchKernels
