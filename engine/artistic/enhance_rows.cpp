#include "engine/artistic/enhance_rows.h"

#include "engine/vector/channel_masks.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/artistic/enhance_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

void FindDistances(const u8* __restrict tones, u8* __restrict distances, std::size_t count) {
    constexpr const ChannelMasks& masks = kChannelMasks;
    for (std::size_t done = 0; done < count; done += ChannelMasks::kBytes) {
        const u8* here = tones + done;
        const u8* before = here - 1;
        const u8* beforeThat = here - 2;
        u8* to = distances + done;
        const std::size_t n = std::min(ChannelMasks::kBytes, count - done);
        for (std::size_t i = 0; i < n; ++i) {
            const u8 back1 = before[i] & masks.back1[i];
            const u8 back2 = beforeThat[i] & masks.back2[i];
            const u8 ahead1 = here[i + 1] & masks.ahead1[i];
            const u8 ahead2 = here[i + 2] & masks.ahead2[i];
            const u8 back = back1 > back2 ? back1 : back2;
            const u8 ahead = ahead1 > ahead2 ? ahead1 : ahead2;
            const u8 other = back > ahead ? back : ahead;
            const u8 own = here[i];
            to[i] = static_cast<u8>((other > own ? other : own) - own);
        }
    }
}

void Lower(const u8* __restrict steps, u8* __restrict tones, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        tones[i] = static_cast<u8>(std::max(tones[i], steps[i]) - steps[i]);
    }
}

void SharpenRow(const u8* __restrict below, const u8* __restrict here, const u8* __restrict above,
                std::size_t step, i32 boost, u8* __restrict to, std::size_t count) {
    const auto factor = static_cast<u16>(boost);
    for (std::size_t left = 0; left < count; ++left) {
        const std::size_t i = left + step;
        const std::size_t right = i + step;
        const i32 sum = below[left] + below[i] + below[right] + here[left] + here[right] +
                        above[left] + above[i] + above[right];
        const auto difference = static_cast<i16>(8 * here[i] - sum);
        const auto size = static_cast<u16>(std::max(difference, static_cast<i16>(-difference)));
        // n / 25 is n * 2622 / 65536, truncated, for n up to 65535 / 32.
        const auto n = static_cast<u16>(static_cast<u16>(size * factor) >> 5);
        const auto gain = static_cast<i16>(static_cast<u16>(u32{n} * u32{2622} >> 16));
        const auto tone = static_cast<i16>(here[i] + (difference < 0 ? -gain : gain));
        to[left] = static_cast<u8>(std::clamp<i16>(tone, 0, 255));
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(FindDistances);
HWY_EXPORT(Lower);
HWY_EXPORT(SharpenRow);

void FindDistances(const u8* tones, u8* distances, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(FindDistances)(tones, distances, count);
}

void Lower(const u8* steps, u8* tones, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(Lower)(steps, tones, count);
}

void SharpenRow(const u8* below, const u8* here, const u8* above, std::size_t step, i32 boost,
                u8* to, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(SharpenRow)(below, here, above, step, boost, to, count);
}

#endif
