#include "engine/vector/extreme_rows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/extreme_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// What is in work at a time stays in the first cache.
constexpr std::size_t kBlock = 4096;
constexpr std::size_t kRoom = kBlock + 128;

struct Larger {
    u8 operator()(u8 a, u8 b) const { return std::max(a, b); }
};

struct Smaller {
    u8 operator()(u8 a, u8 b) const { return std::min(a, b); }
};

// Of each window and those further on at these distances, the best; they may overlap.
template <class Better>
void JoinTwo(const u8* __restrict from, std::size_t last, u8* __restrict to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = Better()(from[i], from[i + last]);
    }
}

template <class Better>
void JoinThree(const u8* __restrict from, std::size_t second, std::size_t last, u8* __restrict to,
               std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = Better()(Better()(from[i], from[i + second]), from[i + last]);
    }
}

template <class Better>
void JoinFour(const u8* __restrict from, std::size_t second, std::size_t last, u8* __restrict to,
              std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = Better()(Better()(from[i], from[i + second]),
                         Better()(from[i + 2 * second], from[i + last]));
    }
}

// From windows of `reach` samples to those of `whole`, up to four times as many.
template <class Better>
void Widen(const u8* from, std::size_t reach, std::size_t whole, std::size_t step, u8* to,
           std::size_t count) {
    const std::size_t second = reach * step;
    const std::size_t last = (whole - reach) * step;
    if (whole <= 2 * reach) {
        JoinTwo<Better>(from, last, to, count);
    } else if (whole <= 3 * reach) {
        JoinThree<Better>(from, second, last, to, count);
    } else {
        JoinFour<Better>(from, second, last, to, count);
    }
}

template <class Better>
void ExtremesOfBlock(const u8* samples, std::size_t size, std::size_t step, u8* extremes,
                     std::size_t count) {
    alignas(64) u8 room[2][kRoom];
    const u8* from = samples;
    std::size_t reach = 1;
    for (u32 turn = 0; 4 * reach < size; ++turn) {
        Widen<Better>(from, reach, 4 * reach, step, room[turn % 2],
                      count + (size - 4 * reach) * step);
        from = room[turn % 2];
        reach *= 4;
    }
    Widen<Better>(from, reach, size, step, extremes, count);
}

void ExtremesAlongRow(Extreme which, const u8* samples, i32 size, std::size_t step, u8* extremes,
                      std::size_t count) {
    const auto ofBlock =
        which == Extreme::Largest ? ExtremesOfBlock<Larger> : ExtremesOfBlock<Smaller>;
    for (std::size_t done = 0; done < count; done += kBlock) {
        ofBlock(samples + done, static_cast<std::size_t>(size), step, extremes + done,
                std::min(kBlock, count - done));
    }
}

template <class Better>
void Keep(const u8* __restrict row, u8* __restrict kept, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        kept[i] = Better()(kept[i], row[i]);
    }
}

void KeepExtremes(Extreme which, const u8* row, u8* kept, std::size_t count) {
    (which == Extreme::Largest ? Keep<Larger> : Keep<Smaller>)(row, kept, count);
}

template <class Better>
void KeepAndJoin(const u8* __restrict row, u8* __restrict kept, const u8* __restrict other,
                 u8* __restrict to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const u8 better = Better()(kept[i], row[i]);
        kept[i] = better;
        to[i] = Better()(better, other[i]);
    }
}

void KeepAndJoinExtremes(Extreme which, const u8* row, u8* kept, const u8* other, u8* to,
                         std::size_t count) {
    (which == Extreme::Largest ? KeepAndJoin<Larger> : KeepAndJoin<Smaller>)(row, kept, other, to,
                                                                             count);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(ExtremesAlongRow);
HWY_EXPORT(KeepExtremes);
HWY_EXPORT(KeepAndJoinExtremes);

void ExtremesAlongRow(Extreme which, const u8* samples, i32 size, std::size_t step, u8* extremes,
                      std::size_t count) {
    HWY_DYNAMIC_DISPATCH(ExtremesAlongRow)(which, samples, size, step, extremes, count);
}

void KeepExtremes(Extreme which, const u8* row, u8* kept, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(KeepExtremes)(which, row, kept, count);
}

void KeepAndJoinExtremes(Extreme which, const u8* row, u8* kept, const u8* other, u8* to,
                         std::size_t count) {
    HWY_DYNAMIC_DISPATCH(KeepAndJoinExtremes)(which, row, kept, other, to, count);
}

#endif
