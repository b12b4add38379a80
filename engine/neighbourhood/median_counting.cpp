// Medians of large windows by counting: the work does not grow with the window.
//
// Every column of the window counts its tones, first in 16 groups of 16 tones, then in each group.
// All counts are running ones, of the tones up to a place, so that they can be added like any
// others and a place of a given rank is found by one comparison of all. Along a row the counts of
// the window slide over those of the columns; those within a group only when they are needed.
#include "engine/neighbourhood/median_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/median_counting.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

constexpr std::size_t kGroups = 16;

// Counts of a window, which has up to 1,024 samples.
struct alignas(32) Counts {
    i16 upTo[kGroups];
};

#if HWY_MAX_BYTES < 32 // vectors that do not hold the counts
HWY_INLINE void Slide(Counts& counts, const u8* entering, const u8* leaving) {
    for (std::size_t i = 0; i < kGroups; ++i) {
        counts.upTo[i] = static_cast<i16>(counts.upTo[i] + entering[i] - leaving[i]);
    }
}
// The first place where more than `below` samples are counted; 16 when there is none.
HWY_INLINE i32 PlaceAbove(const Counts& counts, i32 below) {
    i16 place = 0;
    for (const i16 count : counts.upTo) {
        place = static_cast<i16>(place + (count <= static_cast<i16>(below) ? 1 : 0));
    }
    return place;
}
#else
namespace hn = hwy::HWY_NAMESPACE;
using CountsTag = hn::FixedTag<i16, kGroups>;

HWY_INLINE void Slide(Counts& counts, const u8* entering, const u8* leaving) {
    const CountsTag tag;
    const hn::FixedTag<u8, kGroups> bytes;
    const auto in = hn::PromoteTo(tag, hn::LoadU(bytes, entering));
    const auto out = hn::PromoteTo(tag, hn::LoadU(bytes, leaving));
    hn::Store(hn::Add(hn::Load(tag, counts.upTo), hn::Sub(in, out)), tag, counts.upTo);
}
HWY_INLINE i32 PlaceAbove(const Counts& counts, i32 below) {
    const CountsTag tag;
    const auto limit = hn::Set(tag, static_cast<i16>(below + 1));
    return static_cast<i32>(hn::CountTrue(tag, hn::Lt(hn::Load(tag, counts.upTo), limit)));
}
#endif

// Counts up to each of 16 places: entry i of row t is 1 from t on.
constexpr auto kSteps = [] {
    std::array<std::array<u8, kGroups>, kGroups> steps{};
    for (std::size_t tone = 0; tone < kGroups; ++tone) {
        for (std::size_t i = tone; i < kGroups; ++i) {
            steps[tone][i] = 1;
        }
    }
    return steps;
}();

HWY_INLINE void CountIn(u8* __restrict counts, const u8* __restrict steps) {
    for (std::size_t i = 0; i < kGroups; ++i) {
        counts[i] = static_cast<u8>(counts[i] + steps[i]);
    }
}
HWY_INLINE void CountOut(u8* __restrict counts, const u8* __restrict steps) {
    for (std::size_t i = 0; i < kGroups; ++i) {
        counts[i] = static_cast<u8>(counts[i] - steps[i]);
    }
}

// Takes row `entering` into the columns from pixel `left` on, and row `leaving` out of them. The
// first rows come in without another leaving.
template <bool exchanges>
void CountRow(ToneColumn* columns, const DibView& source, i64 entering, i64 leaving, i64 left,
              std::size_t pixels) {
    const std::size_t channels = source.bits / 8;
    const auto rowAt = [&](i64 y) {
        return source.Row(static_cast<i32>(std::clamp<i64>(y, 0, source.height - 1)));
    };
    const u8* in = rowAt(entering);
    const u8* out = rowAt(leaving);
    for (std::size_t i = 0; i < pixels; ++i) {
        const i64 x = std::clamp<i64>(left + static_cast<i64>(i), 0, source.width - 1);
        const std::size_t first = static_cast<std::size_t>(x) * channels;
        for (std::size_t k = first; k < first + channels; ++k, ++columns) {
            CountIn(columns->groups, kSteps[in[k] / kGroups].data());
            CountIn(columns->tones[in[k] / kGroups], kSteps[in[k] % kGroups].data());
            if constexpr (exchanges) {
                CountOut(columns->groups, kSteps[out[k] / kGroups].data());
                CountOut(columns->tones[out[k] / kGroups], kSteps[out[k] % kGroups].data());
            }
        }
    }
}

// A window that moves to the right over the columns of one channel.
class CountingWindow {
public:
    void Start(const ToneColumn* columns, std::size_t step, i32 size) {
        columns_ = columns;
        step_ = step;
        size_ = size;
        rank_ = (size * size + 1) / 2;
        at_ = 0;
        places_.fill(-size);
        std::memset(&groups_, 0, sizeof groups_);
        for (i32 i = 0; i < size; ++i) {
            Slide(groups_, Column(i).groups, kNothing);
        }
    }

    void Advance() {
        Slide(groups_, Column(at_ + size_).groups, Column(at_).groups);
        ++at_;
    }

    // The tone that the walk comes to from `tone`.
    i32 Walk(i32 tone) {
        const i32 group = PlaceAbove(groups_, rank_ - 1);
        const i32 needed = rank_ - CountedBefore(group);
        const Counts& counts = InGroup(group);
        const i32 place = PlaceAbove(counts, needed - 1);
        const i32 low = group * 16 + place;
        if (tone <= low || counts.upTo[place] > needed) {
            return low;
        }
        return std::min(tone, NextSample() - 1);
    }

private:
    static constexpr u8 kNothing[kGroups] = {};

    const ToneColumn& Column(i32 i) const { return columns_[static_cast<std::size_t>(i) * step_]; }
    i32 CountedBefore(i32 group) const { return group == 0 ? 0 : groups_.upTo[group - 1]; }

    // The tone of the sample behind the rank-th, or 256.
    i32 NextSample() {
        const i32 group = PlaceAbove(groups_, rank_);
        return group == 16 ? 256
                           : group * 16 + PlaceAbove(InGroup(group), rank_ - CountedBefore(group));
    }

    // The counts within a group, brought to where the window is.
    const Counts& InGroup(i32 group) {
        Counts& counts = tones_[group];
        i32 place = places_[static_cast<std::size_t>(group)];
        places_[static_cast<std::size_t>(group)] = at_;
        if (2 * (at_ - place) >= size_) {
            std::memset(&counts, 0, sizeof counts);
            for (i32 i = at_; i < at_ + size_; ++i) {
                Slide(counts, Column(i).tones[group], kNothing);
            }
            return counts;
        }
        for (; place < at_; ++place) {
            Slide(counts, Column(place + size_).tones[group], Column(place).tones[group]);
        }
        return counts;
    }

    const ToneColumn* columns_ = nullptr;
    std::size_t step_ = 0;
    i32 size_ = 0;
    i32 rank_ = 0;
    i32 at_ = 0;
    Counts groups_;
    Counts tones_[kGroups];
    std::array<i32, kGroups> places_; // where the counts within each group are
};

template <std::size_t channels>
void WriteRow(const ToneColumn* columns, i32 size, i32 pixels, bool first, u8* to) {
    CountingWindow windows[channels];
    i32 tones[channels] = {};
    for (std::size_t channel = 0; channel < channels; ++channel) {
        windows[channel].Start(columns + channel, channels, size);
        tones[channel] = first ? 0 : *(to + channel - channels);
    }
    for (i32 x = 0; x < pixels; ++x, to += channels) {
        for (std::size_t channel = 0; channel < channels; ++channel) {
            if (x != 0) {
                windows[channel].Advance();
            }
            tones[channel] = windows[channel].Walk(tones[channel]);
            to[channel] = static_cast<u8>(tones[channel]);
        }
    }
}

} // namespace

void CountMedianTile(const DibView& source, i32 size, const Tile& tile, ToneColumn* columns,
                     u8* result) {
    const std::size_t channels = source.bits / 8;
    const i32 pixels = tile.right - tile.left;
    const i64 left = i64{tile.left} - size / 2;
    const auto counted = static_cast<std::size_t>(pixels + size - 1);
    std::memset(columns, 0, counted * channels * sizeof(ToneColumn));
    for (i32 i = 0; i < size; ++i) {
        CountRow<false>(columns, source, i64{tile.bottom} - size / 2 + i, 0, left, counted);
    }
    for (i32 y = tile.bottom; y < tile.top; ++y) {
        if (y != tile.bottom) {
            const i64 leaving = i64{y} - size / 2 - 1;
            CountRow<true>(columns, source, leaving + size, leaving, left, counted);
        }
        u8* to = result + static_cast<std::size_t>(y) * source.stride +
                 static_cast<std::size_t>(tile.left) * channels;
        if (channels == 3) {
            WriteRow<3>(columns, size, pixels, tile.left == 0, to);
        } else {
            WriteRow<1>(columns, size, pixels, tile.left == 0, to);
        }
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(CountMedianTile);

void CountMedianTile(const DibView& source, i32 size, const Tile& tile, ToneColumn* columns,
                     u8* result) {
    HWY_DYNAMIC_DISPATCH(CountMedianTile)(source, size, tile, columns, result);
}

#endif
