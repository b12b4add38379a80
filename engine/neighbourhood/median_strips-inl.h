// Tiles of medians cut into as many strips as a vector has bytes, compiled for each instruction
// set. To be included after <hwy/highway.h>, outside of all namespaces.
#if defined(ZQ_MEDIAN_STRIPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_STRIPS_INL_H
#undef ZQ_MEDIAN_STRIPS_INL_H
#else
#define ZQ_MEDIAN_STRIPS_INL_H
#endif

#include "engine/neighbourhood/median_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// The compiler's own vectors, which the baseline of every processor has.
inline constexpr std::size_t kLanes = std::max<std::size_t>(HWY_MAX_BYTES, 16);
static_assert(kLanes <= kMostStrips);
using Bytes [[gnu::vector_size(kLanes)]] = u8;
using SignedBytes [[gnu::vector_size(kLanes)]] = i8;
using Shorts [[gnu::vector_size(kLanes)]] = i16;

inline constexpr i32 kStripsInRow = 4;
inline constexpr i32 kBands = static_cast<i32>(kLanes) / kStripsInRow;
static_assert(kStripsInRow * kStripColumns == kTileColumns);

// The levels, one for each tone, are in groups.
inline constexpr std::size_t kGroup = 16;
inline constexpr std::size_t kGroups = 256 / kGroup;
inline constexpr std::size_t kMostAtOnce = 5; // levels that are counted side by side
inline constexpr std::size_t kMostLevels = kGroups * (kGroup - 1) + kMostAtOnce - 1;

// Samples are compared as signed numbers, which is one operation less.
inline constexpr u8 kSign = 0x80;

// What is known of the strips of a tile, a vector for each place. A window is named by its first
// row and column, counted from those of the strip's first window.
struct Room {
    // Behind a row of samples that are above no level.
    SignedBytes samples[1 + kStripRows + kLargestMedianSize - 1][kWindowColumns];
    // Of the columns at some levels, behind columns that hold nothing.
    Bytes counts[(kLargestMedianSize + kWindowColumns) * kMostAtOnce];
    Bytes lows[kStripRows][kStripColumns];
    Bytes nexts[kStripRows][kStripColumns];
    // Those to be counted, for each strip others.
    SignedBytes levels[kMostLevels];
};
static_assert(sizeof(Room) + alignof(Room) <= kMedianRoom);

// How a tile is cut into strips.
struct Strips {
    const DibView& source;
    const Tile& tile;
    const i32 size;
    const i32 columns; // of a strip
    const i32 rows;
    const std::size_t channels;

    Strips(const DibView& picture, const Tile& whole, i32 windowSize)
        : source(picture), tile(whole), size(windowSize),
          columns((whole.right - whole.left + kStripsInRow - 1) / kStripsInRow),
          rows((whole.top - whole.bottom + kBands - 1) / kBands), channels(picture.bits / 8) {}

    i32 WindowColumns() const { return columns + size - 1; }
    i32 WindowRows() const { return rows + size - 1; }
    static i32 BandOf(i32 lane) { return lane / kStripsInRow; }
    i32 FirstColumn(i32 lane) const { return lane % kStripsInRow * columns; }
    // Row y of the lane's strip, or 0 when that is outside the tile.
    u8* ResultRow(u8* result, i32 lane, i32 y) const {
        const i32 row = BandOf(lane) * rows + y;
        const i32 column = FirstColumn(lane);
        if (row >= tile.top - tile.bottom || column >= tile.right - tile.left) {
            return nullptr;
        }
        return result + static_cast<std::size_t>(tile.bottom + row) * source.stride +
               static_cast<std::size_t>(tile.left + column) * channels;
    }
};

// Brings in the samples of one channel; places outside the picture have the nearest one's.
inline void Gather(const Strips& strips, std::size_t channel, Room& room) {
    const DibView& source = strips.source;
    std::array<std::size_t, kTileColumns + kLargestMedianSize> offsets;
    const i64 left = i64{strips.tile.left} - strips.size / 2;
    const i32 all = kStripsInRow * strips.columns + strips.size - 1;
    for (i32 i = 0; i < all; ++i) {
        const i64 x = std::clamp<i64>(left + i, 0, source.width - 1);
        offsets[static_cast<std::size_t>(i)] = static_cast<std::size_t>(x) * strips.channels;
    }
    const auto count = static_cast<std::size_t>(strips.WindowColumns());
    std::memset(room.samples[0], kSign, sizeof room.samples[0]);
    for (i32 row = 0; row < strips.WindowRows(); ++row) {
        auto* to = reinterpret_cast<u8*>(room.samples[1 + row]);
        for (i32 lane = 0; lane < static_cast<i32>(kLanes); ++lane, ++to) {
            const i64 y = i64{strips.tile.bottom} + Strips::BandOf(lane) * strips.rows -
                          strips.size / 2 + row;
            const u8* from =
                source.Row(static_cast<i32>(std::clamp<i64>(y, 0, source.height - 1))) + channel;
            const std::size_t* places =
                &offsets[static_cast<std::size_t>(strips.FirstColumn(lane))];
            for (std::size_t i = 0; i < count; ++i) {
                to[i * kLanes] = from[places[i]] ^ kSign;
            }
        }
    }
}

HWY_INLINE Bytes Clamp(Bytes tone, Bytes low, Bytes high) {
    const Bytes lower = tone < high ? tone : high;
    return lower > low ? lower : low;
}

// Walks along row y of every strip, whose lows become the tones that the walk comes to. What a
// strip makes of the tone in front of it is again a step, which the next one's start needs.
inline void WalkRow(const Strips& strips, i32 y, std::size_t channel, u8* result, Room& room) {
    Bytes* lows = room.lows[y];
    Bytes* highs = room.nexts[y];
    Bytes stepLow{};
    Bytes stepHigh = ~stepLow;
    for (i32 x = 0; x < strips.columns; ++x) {
        highs[x] -= (Bytes)(highs[x] != 0) & 1;
        stepLow = Clamp(stepLow, lows[x], highs[x]);
        stepHigh = Clamp(stepHigh, lows[x], highs[x]);
    }
    Bytes tones{};
    u8 tone = 0;
    for (i32 lane = 0; lane < static_cast<i32>(kLanes); ++lane) {
        const auto i = static_cast<std::size_t>(lane);
        if (lane % kStripsInRow == 0) {
            const u8* to = strips.ResultRow(result, lane, y);
            tone =
                to == nullptr || strips.tile.left == 0 ? u8{0} : *(to + channel - strips.channels);
        }
        tones[i] = tone;
        tone = std::max<u8>(stepLow[i], std::min<u8>(stepHigh[i], tone));
    }
    for (i32 x = 0; x < strips.columns; ++x) {
        tones = Clamp(tones, lows[x], highs[x]);
        lows[x] = tones;
    }
}

inline void WriteRow(const Strips& strips, i32 y, std::size_t channel, u8* result,
                     const Room& room) {
    const auto* tones = reinterpret_cast<const u8*>(room.lows[y]);
    for (i32 lane = 0; lane < static_cast<i32>(kLanes); ++lane, ++tones) {
        u8* to = strips.ResultRow(result, lane, y);
        if (to != nullptr) {
            const i32 inTile = strips.tile.right - strips.tile.left - strips.FirstColumn(lane);
            const auto count = static_cast<std::size_t>(std::min(inTile, strips.columns));
            for (std::size_t x = 0; x < count; ++x) {
                to[x * strips.channels + channel] = tones[x * kLanes];
            }
        }
    }
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
