#include "engine/vector/box_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/box_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// What is in work at a time stays in the first cache.
constexpr std::size_t kBlock = 2048;
constexpr std::size_t kRoom = kBlock + RoundedDivision::kLargest;

// Joins each window with the one `distance` further on, which begins where the first one ends, and
// with one sample more if there are `singles`.
template <class Part>
void Join(const Part* __restrict parts, std::size_t distance, const u8* __restrict singles,
          u16* __restrict wholes, std::size_t count) {
    if (singles == nullptr) {
        for (std::size_t i = 0; i < count; ++i) {
            wholes[i] = static_cast<u16>(parts[i] + parts[i + distance]);
        }
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            wholes[i] = static_cast<u16>(parts[i] + parts[i + distance] + singles[i]);
        }
    }
}

// Doubles the windows until they have their size: from one of n samples comes one of 2n or 2n + 1.
void JoinBlock(const u8* samples, u32 size, u16* wholes, std::size_t count) {
    alignas(64) u16 room[2][kRoom];
    const u16* sums = nullptr;
    u32 level = 0;
    while (size >> level > 1) {
        ++level;
    }
    for (std::size_t reach = 1; level > 0;) {
        --level;
        const bool odd = (size >> level & 1) != 0;
        const u8* singles = odd ? samples + 2 * reach : nullptr;
        const std::size_t wanted = count + size - (2 * reach + odd);
        u16* wider = level == 0 ? wholes : room[level % 2];
        if (reach == 1) {
            Join(samples, reach, singles, wider, wanted);
        } else {
            Join(sums, reach, singles, wider, wanted);
        }
        sums = wider;
        reach = 2 * reach + odd;
    }
}

void SumsAlongRow(const u8* samples, i32 size, u16* sums, std::size_t count) {
    for (std::size_t done = 0; done < count; done += kBlock) {
        JoinBlock(samples + done, static_cast<u32>(size), sums + done,
                  std::min(kBlock, count - done));
    }
}

void AddToSums(const u8* __restrict row, u16* __restrict sums, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = static_cast<u16>(sums[i] + row[i]);
    }
}

void SlideToMeans(const ColumnWindows& windows, const RoundedDivision& division,
                  u8* __restrict means) {
    u16* __restrict sums = windows.sums;
    const u8* __restrict entering = windows.entering;
    const u8* __restrict leaving = windows.leaving;
    const RoundedDivision mean = division;
    for (std::size_t i = 0; i < windows.count; ++i) {
        const auto sum = static_cast<u16>(sums[i] + entering[i] - leaving[i]);
        sums[i] = sum;
        means[i] = mean(sum);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

RoundedDivision::RoundedDivision(i32 divisor) : half(static_cast<u16>(divisor / 2)) {
    i32 shift = 0;
    while (2 << shift < divisor) {
        ++shift;
    }
    scale = static_cast<u16>(1 << (7 - shift));
    factor = static_cast<u16>(((1 << (16 + shift)) + divisor - 1) / divisor);
}

HWY_EXPORT(SumsAlongRow);
HWY_EXPORT(AddToSums);
HWY_EXPORT(SlideToMeans);

void SumsAlongRow(const u8* samples, i32 size, u16* sums, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(SumsAlongRow)(samples, size, sums, count);
}

void AddToSums(const u8* row, u16* sums, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(AddToSums)(row, sums, count);
}

void SlideToMeans(const ColumnWindows& windows, const RoundedDivision& division, u8* means) {
    HWY_DYNAMIC_DISPATCH(SlideToMeans)(windows, division, means);
}

#endif
