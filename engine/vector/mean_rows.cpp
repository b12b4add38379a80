// Means along a row, from sums in words. The sums at even places and those at odd ones lie in
// planes of their own: bytes become words, and words bytes, without leaving their places.
#include "engine/vector/box_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/mean_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/sum_planes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// What is in work at a time stays in the first cache.
constexpr std::size_t kBlock = 2048;
constexpr std::size_t kLine = 64;
// Whole vectors are worked on, and what the next pass reads of the last one is there.
constexpr std::size_t kMostPasses = 4;
constexpr std::size_t kBeyond = kMostPasses * kLine;
constexpr std::size_t kRoom = kBlock + 3 * RoundedDivision::kLargest + kBeyond;

// Calls `finish(i, sums)` for all windows, vector by vector. They are made of kParts windows that
// are `distance` apart and of kSingles samples.
template <std::size_t kParts, std::size_t kSingles, class Finish>
HWY_INLINE void AddUp(const Planes& parts, std::size_t distance, const u8* singles,
                      std::size_t step, std::size_t count, const Finish& finish) {
    std::array<Planes, kParts> part{};
    for (std::size_t k = 0; k < kParts; ++k) {
        part[k] = parts.From(k * distance);
    }
    for (std::size_t i = 0; i < count; i += hn::Lanes(ByteTag())) {
        Sums sums{hn::Zero(WordTag()), hn::Zero(WordTag())};
        for (std::size_t k = 0; k < kParts; ++k) {
            sums = sums + Planes{part[k].even + i / kPlanes, part[k].odd + i / kPlanes}.Get();
        }
        for (std::size_t k = 0; k < kSingles; ++k) {
            sums = sums + WordsOf(hn::LoadU(ByteTag(), singles + k * step + i));
        }
        finish(i, sums);
    }
}

// Windows of `size` samples: of four that were made before and up to three samples, or of up to
// seven samples.
template <class Finish>
void Widen(const Planes& parts, const u8* samples, std::size_t size, std::size_t step,
           std::size_t count, const Finish& finish) {
    const std::size_t reach = size / 4;
    const auto add = [&]<std::size_t kParts, std::size_t kSingles>() HWY_ATTR {
        AddUp<kParts, kSingles>(parts, reach * step, samples + kParts * reach * step, step, count,
                                finish);
    };
    switch (size < 8 ? size : 8 + size % 4) {
    case 2:
        return add.template operator()<0, 2>();
    case 3:
        return add.template operator()<0, 3>();
    case 4:
        return add.template operator()<0, 4>();
    case 5:
        return add.template operator()<0, 5>();
    case 6:
        return add.template operator()<0, 6>();
    case 7:
        return add.template operator()<0, 7>();
    case 8:
        return add.template operator()<4, 0>();
    case 9:
        return add.template operator()<4, 1>();
    case 10:
        return add.template operator()<4, 2>();
    default:
        return add.template operator()<4, 3>();
    }
}

// The samples and the means have room for kBeyond and a line more.
void MeansOfBlock(const u8* samples, std::size_t size, std::size_t step,
                  const RoundedDivision& division, u8* means, std::size_t count) {
    alignas(kLine) u16 room[2][2][kRoom / kPlanes];
    Planes parts{};
    std::size_t passes = 0;
    while (size >> 2 * passes >= 8) {
        ++passes;
    }
    for (; passes > 0; --passes) {
        const std::size_t reach = size >> 2 * passes;
        const Planes wider{room[passes % 2][0], room[passes % 2][1]};
        Widen(parts, samples, reach, step, count + (size - reach) * step + passes * kLine,
              [&](std::size_t i, const Sums& sums) HWY_ATTR { wider.From(i).Set(sums); });
        parts = wider;
    }
    const Division mean(division);
    Widen(parts, samples, size, step, count, [&](std::size_t i, const Sums& sums) HWY_ATTR {
        hn::StoreU(mean(sums), ByteTag(), means + i);
    });
}

void MeansAlongRow(const u8* samples, i32 size, std::size_t step, const RoundedDivision& division,
                   u8* means, std::size_t count) {
    const auto length = static_cast<std::size_t>(size);
    const std::size_t around = (length - 1) * step;
    std::size_t done = 0;
    for (; count - done >= kBlock + kBeyond; done += kBlock) {
        MeansOfBlock(samples + done, length, step, division, means + done, kBlock);
    }
    while (done < count) {
        const std::size_t rest = std::min(kBlock, count - done);
        u8 from[kRoom] = {};
        u8 to[kBlock + kLine];
        std::memcpy(from, samples + done, rest + around);
        MeansOfBlock(from, length, step, division, to, rest);
        std::memcpy(means + done, to, rest);
        done += rest;
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(MeansAlongRow);

void MeansAlongRow(const u8* samples, i32 size, std::size_t step, const RoundedDivision& division,
                   u8* means, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(MeansAlongRow)(samples, size, step, division, means, count);
}

#endif
