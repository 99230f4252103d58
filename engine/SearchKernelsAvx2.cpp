#include "engine/ByteLoops.h"
#include "engine/SearchKernelsX86.h"
#include "engine/VectorKernels.h"

#include <immintrin.h>

namespace {

struct Avx2 {
    using Vector = __m256i;
    static constexpr int Width = 32;

    static Vector load(const void *at)
    {
        return _mm256_loadu_si256(static_cast<const __m256i *>(at));
    }
    static Vector splat8(std::uint8_t value) { return _mm256_set1_epi8(static_cast<char>(value)); }
    static Vector splat16(char16_t value) { return _mm256_set1_epi16(static_cast<short>(value)); }
    static Vector equal8(Vector a, Vector b) { return _mm256_cmpeq_epi8(a, b); }
    static Vector equal16(Vector a, Vector b) { return _mm256_cmpeq_epi16(a, b); }
    static Vector both(Vector a, Vector b) { return _mm256_and_si256(a, b); }
    static Vector either(Vector a, Vector b) { return _mm256_or_si256(a, b); }
    static Vector butNot(Vector a, Vector b) { return _mm256_andnot_si256(b, a); }
    static std::uint32_t highBits(Vector a)
    {
        return static_cast<std::uint32_t>(_mm256_movemask_epi8(a));
    }
};

} // namespace

const SearchKernels::Table &SearchKernels::avx2()
{
    using Kernels = VectorKernels<Avx2>;
    static const Table table = {"AVX2",          Kernels::findBytePair, Kernels::findUnitPair,
                                Kernels::survey, ByteLoops::summarise,  ByteLoops::count};
    return table;
}
