#include "engine/vector/ray_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/ray_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

void SlideRays(const u16* __restrict before, const u8* __restrict entering,
               const u8* __restrict leaving, u16* __restrict sums, u16* __restrict least,
               std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto sum = static_cast<u16>(before[i] + entering[i] - leaving[i]);
        sums[i] = sum;
        least[i] = std::min(least[i], sum);
    }
}

void KeepLeast(const u16* __restrict sums, u16* __restrict least, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        least[i] = std::min(least[i], sums[i]);
    }
}

void FadeRow(const u8* __restrict samples, const u16* __restrict least,
             const RoundedDivision& division, u8* __restrict to, std::size_t count) {
    const RoundedDivision mean = division;
    for (std::size_t i = 0; i < count; ++i) {
        const u8 faded = mean(least[i]);
        to[i] = samples[i] == 0 ? u8{0} : faded;
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(SlideRays);
HWY_EXPORT(KeepLeast);
HWY_EXPORT(FadeRow);

void SlideRays(const u16* before, const u8* entering, const u8* leaving, u16* sums, u16* least,
               std::size_t count) {
    HWY_DYNAMIC_DISPATCH(SlideRays)(before, entering, leaving, sums, least, count);
}

void KeepLeast(const u16* sums, u16* least, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(KeepLeast)(sums, least, count);
}

void FadeRow(const u8* samples, const u16* least, const RoundedDivision& mean, u8* to,
             std::size_t count) {
    HWY_DYNAMIC_DISPATCH(FadeRow)(samples, least, mean, to, count);
}

#endif
