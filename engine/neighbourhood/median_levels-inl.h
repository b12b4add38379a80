// The counting of the samples above each level of tone, compiled for each instruction set.
// To be included after <hwy/highway.h>, outside of all namespaces.
#if defined(ZQ_MEDIAN_LEVELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_LEVELS_INL_H
#undef ZQ_MEDIAN_LEVELS_INL_H
#else
#define ZQ_MEDIAN_LEVELS_INL_H
#endif

#include "engine/neighbourhood/median_sums-inl.h"

#include <utility>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

template <class Sum, std::size_t... k>
std::array<Sum, sizeof...(k)> MakeSums(i32 limit, std::index_sequence<k...>) {
    return {((void)k, Sum(limit))...};
}

// Adds to the lows and to the nexts of all windows 1 for each of the first levels in the list that
// they are above.
template <class Sum>
void CountAtOnce(const Strips& strips, const SignedBytes* levels, Room& room) {
    constexpr std::size_t kAtOnce = Sum::kAtOnce;
    const auto above = [&](SignedBytes samples, std::size_t k) {
        return (Bytes)(samples > levels[k]); // 255 where they are
    };
    const i32 size = strips.size;
    const i32 columns = strips.WindowColumns();
    const i32 limit = size * size / 2;
    std::memset(room.counts, 0, sizeof room.counts);
    Bytes* counts = room.counts + kLargestMedianSize * kAtOnce;
    const std::ptrdiff_t left = static_cast<std::ptrdiff_t>(kAtOnce) * size;
    for (i32 row = 0; row < size - 1; ++row) {
        for (i32 i = 0; i < columns; ++i) {
            const SignedBytes entering = room.samples[1 + row][i];
            for (std::size_t k = 0; k < kAtOnce; ++k) {
                counts[static_cast<std::size_t>(i) * kAtOnce + k] -= above(entering, k);
            }
        }
    }
    for (i32 y = 0; y < strips.rows; ++y) {
        auto sums = MakeSums<Sum>(limit, std::make_index_sequence<kAtOnce>());
        const auto move = [&](i32 i) {
            const SignedBytes entering = room.samples[y + size][i];
            const SignedBytes leaving = room.samples[y][i];
            Bytes* column = counts + static_cast<std::size_t>(i) * kAtOnce;
            for (std::size_t k = 0; k < kAtOnce; ++k) {
                const Bytes count = column[k] - above(entering, k) + above(leaving, k);
                sums[k].Move(count, *(column + k - left));
                column[k] = count;
            }
        };
        for (i32 i = 0; i < size - 1; ++i) {
            move(i);
        }
        for (i32 x = 0; x < strips.columns; ++x) {
            move(x + size - 1);
            Bytes low = room.lows[y][x];
            Bytes next = room.nexts[y][x];
            for (std::size_t k = 0; k < kAtOnce; ++k) {
                low -= (Bytes)(sums[k].Excess() > 0);
                next -= (Bytes)(sums[k].Excess() >= 0);
            }
            room.lows[y][x] = low;
            room.nexts[y][x] = next;
        }
    }
}

template <class Sum>
void CountLevels(const Strips& strips, std::size_t count, Room& room) {
    for (std::size_t i = 0; i < count; i += Sum::kAtOnce) {
        CountAtOnce<Sum>(strips, room.levels + i, room);
    }
}

// The last level of each group but the last.
inline std::size_t ListGroups(Room& room) {
    for (std::size_t group = 0; group + 1 < kGroups; ++group) {
        const auto level = static_cast<u8>(group * kGroup + kGroup - 1);
        room.levels[group] = (SignedBytes)(Bytes{} + static_cast<u8>(level ^ kSign));
    }
    return kGroups - 1;
}

// Lists for each strip the other levels of the groups that its lows and nexts are in, as these have
// been counted by groups. The levels of groups further down are added to them right away.
inline std::size_t ListLevels(const Strips& strips, Room& room) {
    std::array<Bytes, kGroups> skipped;
    std::array<std::size_t, kLanes> counts{};
    std::fill_n(room.levels, kMostLevels, SignedBytes{} + i8{127}); // nothing is above it
    for (std::size_t group = 0; group < kGroups; ++group) {
        Bytes found{};
        for (i32 y = 0; y < strips.rows; ++y) {
            for (i32 x = 0; x < strips.columns; ++x) {
                found |= (Bytes)(room.lows[y][x] == static_cast<u8>(group)) |
                         (Bytes)(room.nexts[y][x] == static_cast<u8>(group));
            }
        }
        skipped[group] = ~found & static_cast<u8>(kGroup - 1);
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            for (std::size_t i = 0; found[lane] != 0 && i + 1 < kGroup; ++i) {
                const auto level = static_cast<u8>(group * kGroup + i);
                room.levels[counts[lane]++][lane] = static_cast<i8>(level ^ kSign);
            }
        }
    }
    const auto addSkipped = [&](Bytes& tones) {
        const Bytes groups = tones;
        for (std::size_t group = 0; group + 1 < kGroups; ++group) {
            tones += (Bytes)(groups > static_cast<u8>(group)) & skipped[group];
        }
    };
    for (i32 y = 0; y < strips.rows; ++y) {
        for (i32 x = 0; x < strips.columns; ++x) {
            addSkipped(room.lows[y][x]);
            addSkipped(room.nexts[y][x]);
        }
    }
    return *std::max_element(counts.begin(), counts.end());
}

template <class Sum>
void FindMiddles(const Strips& strips, Room& room) {
    std::memset(room.lows, 0, sizeof room.lows);
    std::memset(room.nexts, 0, sizeof room.nexts);
    static_assert((kGroups - 1) % Sum::kAtOnce == 0);
    CountLevels<Sum>(strips, ListGroups(room), room);
    CountLevels<Sum>(strips, ListLevels(strips, room), room);
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
