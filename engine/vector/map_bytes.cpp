#include "engine/vector/map_bytes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/map_bytes.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table) {
    std::size_t i = 0;
#if HWY_TARGET == HWY_AVX3_DL
    // Four registers hold the table. A permutation looks at seven bits of an index and so at half
    // of the table; the eighth bit says which half was meant.
    __m512i quarters[4];
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
        quarters[quarter] = _mm512_loadu_si512(table.data() + 64 * quarter);
    }
    for (; i + 64 <= count; i += 64) {
        const __m512i index = _mm512_loadu_si512(from + i);
        const __m512i low = _mm512_permutex2var_epi8(quarters[0], index, quarters[1]);
        const __m512i high = _mm512_permutex2var_epi8(quarters[2], index, quarters[3]);
        _mm512_storeu_si512(to + i, _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high));
    }
#endif
    for (; i < count; ++i) {
        to[i] = table[from[i]];
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(MapBytes);

void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table) {
    HWY_DYNAMIC_DISPATCH(MapBytes)(from, to, count, table);
}

#endif
