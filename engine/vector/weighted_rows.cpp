#include "engine/vector/weighted_rows.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/weighted_rows.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/sample_pairs-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

constexpr i32 kHalf = 1 << (RowWeights::kFractionBits - 1);

#if ZQ_HAS_PAIRS

// A weight has two digits of ten bits, so that it can be multiplied in 16 bits.
constexpr i32 kDigitBits = 10;

// A digit of two weights, as they meet pairs of samples.
inline i32 DigitPair(i32 first, i32 second, i32 shift) {
    constexpr i32 kDigit = (1 << kDigitBits) - 1;
    return (first >> shift & kDigit) | (second >> shift & kDigit) << 16;
}

struct WeightPair {
    i32 low;
    i32 high;
};

HWY_INLINE Words JoinDigits(Words low, Words high) {
    return hn::ShiftRight<RowWeights::kFractionBits>(hn::Add(low, hn::ShiftLeft<kDigitBits>(high)));
}

// kTile samples from `at` on.
ZQ_WITH_DOT_PRODUCTS void WeighTile(const u8* const* rows, const WeightPair* weights,
                                    std::size_t pairs, std::size_t at, u8* to) {
    Quarters<Words> low = SetQuarters(kHalf);
    Quarters<Words> high = SetQuarters(0);
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        const Quarters<Shorts> samples = PairSamples(rows[2 * pair] + at, rows[2 * pair + 1] + at);
        AddQuarters(low, samples, weights[pair].low);
        AddQuarters(high, samples, weights[pair].high);
    }
    hn::StoreU(PackWords(JoinDigits(low.first, high.first), JoinDigits(low.second, high.second),
                         JoinDigits(low.third, high.third), JoinDigits(low.fourth, high.fourth)),
               kBytes, to);
}

void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count) {
    std::array<WeightPair, RowWeights::kMost / 2> pair;
    const std::size_t pairs = (weights.count + 1) / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
        const i32 first = weights.values[2 * i];
        const i32 second = 2 * i + 1 == weights.count ? 0 : weights.values[2 * i + 1];
        pair[i] = {DigitPair(first, second, 0), DigitPair(first, second, kDigitBits)};
    }
    ForTiles<RowWeights::kMost>(
        rows, weights.count, count, [&](const u8* const* row, std::size_t at, std::size_t done) {
            std::array<u8, kTile> tile;
            const bool whole = done + kTile <= count;
            WeighTile(row, pair.data(), pairs, at, whole ? to + done : tile.data());
            if (!whole) {
                std::memcpy(to + done, tile.data(), count - done);
            }
        });
}

#else

void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count) {
    for (std::size_t at = 0; at < count; at += kSumBlock) {
        const std::size_t n = std::min(kSumBlock, count - at);
        SumBlock sums;
        SumRows(rows, weights, kHalf, at, n, sums);
        for (std::size_t i = 0; i < n; ++i) {
            to[at + i] = static_cast<u8>(sums[i] >> RowWeights::kFractionBits);
        }
    }
}

#endif

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(WeighRows);

void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(WeighRows)(rows, weights, to, count);
}

#endif
