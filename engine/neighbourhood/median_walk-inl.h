// The walk along a row of medians, compiled for each instruction set. To be included after
// <hwy/highway.h>, outside of all namespaces.
//
// A step makes of the tone m the tone max(low, min(high, m)). Several steps after one another are
// again such a step, so that the walk of a row becomes one of four pixels at a time.
#if defined(ZQ_MEDIAN_WALK_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_WALK_INL_H
#undef ZQ_MEDIAN_WALK_INL_H
#else
#define ZQ_MEDIAN_WALK_INL_H
#endif

#include "engine/neighbourhood/median_columns-inl.h"

#include <array>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

inline constexpr std::size_t kJoinedSteps = 4;

#if HWY_TARGET == HWY_SCALAR
using Block = Vec;
HWY_INLINE Block LoadBlock(const u8* from) {
    return Load(from);
}
HWY_INLINE void StoreBlock(const Block& block, u8* to) {
    Store(block, to);
}
#else
using BlockTag = hn::Full128<u8>;
using Block = hn::Vec<BlockTag>;
HWY_INLINE Block LoadBlock(const u8* from) {
    return hn::LoadU(BlockTag(), from);
}
HWY_INLINE void StoreBlock(const Block& block, u8* to) {
    hn::StoreU(block, BlockTag(), to);
}
#endif
inline constexpr std::size_t kBlock = 16;

// The steps of a piece, in front of them some that leave every tone as it is.
struct Steps {
    static constexpr std::size_t kFront = kAlignment;
    alignas(kAlignment) std::array<u8, kFront + kRoom> lows;
    alignas(kAlignment) std::array<u8, kFront + kRoom> highs;

    Steps() {
        std::fill_n(lows.begin(), kFront, u8{0});
        std::fill_n(highs.begin(), kFront, u8{255});
    }
    HWY_INLINE u8* Low(std::size_t i) { return lows.data() + kFront + i; }
    HWY_INLINE u8* High(std::size_t i) { return highs.data() + kFront + i; }
    HWY_INLINE const u8* Low(std::size_t i) const { return lows.data() + kFront + i; }
    HWY_INLINE const u8* High(std::size_t i) const { return highs.data() + kFront + i; }

    // Makes each of the first `count` steps that from four pixels before.
    void Join(std::size_t count, std::size_t channels) {
        for (std::size_t i = (count + kLanes - 1) / kLanes * kLanes; i > 0;) {
            i -= kLanes;
            Vec low = Load(Low(i) - (kJoinedSteps - 1) * channels);
            Vec high = Load(High(i) - (kJoinedSteps - 1) * channels);
            for (std::size_t before = kJoinedSteps - 1; before-- > 0;) {
                const Vec nextHigh = Load(High(i) - before * channels);
                low = Max(Load(Low(i) - before * channels), Min(nextHigh, low));
                high = Min(nextHigh, high);
            }
            Store(low, Low(i));
            Store(high, High(i));
        }
    }
};

// The walk of a row, piece by piece.
template <std::size_t channels>
struct Walk {
    u8 last[channels] = {};              // of the last pixel; in front of a row 0
    alignas(kAlignment) u8 tones[kRoom]; // of the piece
};

// Walks along `count` samples of rows side by side, since every step waits for the one before.
template <std::size_t rows, std::size_t channels>
void WalkRows(const std::array<Steps, rows>& steps, std::size_t count,
              std::array<Walk<channels>, rows>& walks) {
    constexpr std::size_t kStride = kJoinedSteps * channels;
    static_assert(kStride <= kBlock);
    Block blocks[rows];
    for (std::size_t row = 0; row < rows; ++row) {
        u8 before[kBlock];
        for (std::size_t i = 0; i < kBlock; ++i) {
            before[i] = walks[row].last[i % channels];
        }
        blocks[row] = LoadBlock(before);
    }
    for (std::size_t i = 0; i < count; i += kStride) {
        for (std::size_t row = 0; row < rows; ++row) {
            blocks[row] =
                Max(LoadBlock(steps[row].Low(i)), Min(LoadBlock(steps[row].High(i)), blocks[row]));
            StoreBlock(blocks[row], walks[row].tones + i);
        }
    }
    for (Walk<channels>& walk : walks) {
        std::memcpy(walk.last, walk.tones + count - channels, channels);
    }
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
