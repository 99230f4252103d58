#include "engine/SearchKernels.h"

#include "engine/ByteLoops.h"
#include "engine/ScalarKernels.h"

namespace SearchKernels {

const Table &portable()
{
    static const Table table = {"portable",
                                ScalarKernels::findBytePair,
                                ScalarKernels::findUnitPair,
                                ScalarKernels::survey,
                                ByteLoops::summarise,
                                ByteLoops::count};
    return table;
}

} // namespace SearchKernels
