#include "engine/relief/block_rows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/relief/block_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

void AddRow(const u8* __restrict row, u16* __restrict sums, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = static_cast<u16>(sums[i] + row[i]);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(AddRow);

void AddRow(const u8* row, u16* sums, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(AddRow)(row, sums, count);
}

#endif
