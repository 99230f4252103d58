#include "engine/ByteLoops.h"
#include "engine/SearchKernelsX86.h"
#include "engine/VectorKernels.h"

#include <emmintrin.h>

namespace {

struct Sse2 {
    using Vector = __m128i;
    static constexpr int Width = 16;

    static Vector load(const void *at) { return _mm_loadu_si128(static_cast<const __m128i *>(at)); }
    static Vector splat8(std::uint8_t value) { return _mm_set1_epi8(static_cast<char>(value)); }
    static Vector splat16(char16_t value) { return _mm_set1_epi16(static_cast<short>(value)); }
    static Vector equal8(Vector a, Vector b) { return _mm_cmpeq_epi8(a, b); }
    static Vector equal16(Vector a, Vector b) { return _mm_cmpeq_epi16(a, b); }
    static Vector both(Vector a, Vector b) { return _mm_and_si128(a, b); }
    static Vector either(Vector a, Vector b) { return _mm_or_si128(a, b); }
    static Vector butNot(Vector a, Vector b) { return _mm_andnot_si128(b, a); }
    static std::uint32_t highBits(Vector a)
    {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(a));
    }
};

} // namespace

const SearchKernels::Table &SearchKernels::sse2()
{
    using Kernels = VectorKernels<Sse2>;
    static const Table table = {"SSE2",          Kernels::findBytePair, Kernels::findUnitPair,
                                Kernels::survey, ByteLoops::summarise,  ByteLoops::count};
    return table;
}
