#include "engine/vector/difference_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/difference_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

void StepsFrom(const u8* __restrict means, const u8* __restrict samples, u8* __restrict steps,
               std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const u8 sample = samples[i], mean = means[i];
        const auto above = static_cast<u8>(sample - mean);
        steps[i] = sample >= mean ? above : static_cast<u8>(~above);
    }
}

void MoveAway(const u8* means, const u8* __restrict samples, const u8* __restrict distances, u8* to,
              std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const u8 sample = samples[i], distance = distances[i];
        const auto room = static_cast<u8>(~sample);
        const auto lighter = static_cast<u8>(sample + std::min(distance, room));
        const auto darker = static_cast<u8>(std::max(sample, distance) - distance);
        to[i] = sample >= means[i] ? lighter : darker;
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(StepsFrom);
HWY_EXPORT(MoveAway);

void StepsFrom(const u8* means, const u8* samples, u8* steps, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(StepsFrom)(means, samples, steps, count);
}

void MoveAway(const u8* means, const u8* samples, const u8* distances, u8* to, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(MoveAway)(means, samples, distances, to, count);
}

#endif
