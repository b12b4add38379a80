#include "engine/vector/weighted_rows.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/weighted_rows.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

constexpr i32 kHalf = 1 << (RowWeights::kFractionBits - 1);

#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL

namespace hn = hwy::HWY_NAMESPACE;

constexpr hn::ScalableTag<u8> kBytes;
constexpr hn::ScalableTag<i16> kShorts;
constexpr hn::ScalableTag<i32> kWords;
constexpr std::size_t kTile = hn::MaxLanes(kBytes);
using Bytes = hn::Vec<decltype(kBytes)>;
using Shorts = hn::Vec<decltype(kShorts)>;
using Words = hn::Vec<decltype(kWords)>;

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

// Processors of this target multiply and add at one stroke, which Highway does not name.
#if HWY_TARGET == HWY_AVX3_DL
#define ZQ_WITH_DOT_PRODUCTS __attribute__((target(HWY_TARGET_STR ",avx512vnni")))
#else
#define ZQ_WITH_DOT_PRODUCTS
#endif

// Adds the products of both samples of each pair.
ZQ_WITH_DOT_PRODUCTS inline void AddProducts(Words& sum, Shorts samples, Shorts weights) {
#if HWY_TARGET == HWY_AVX3_DL
    sum.raw = _mm512_dpwssd_epi32(sum.raw, samples.raw, weights.raw);
#elif HWY_TARGET == HWY_AVX3
    sum.raw = _mm512_add_epi32(sum.raw, _mm512_madd_epi16(samples.raw, weights.raw));
#else
    sum.raw = _mm256_add_epi32(sum.raw, _mm256_madd_epi16(samples.raw, weights.raw));
#endif
}

inline Bytes Pack(Shorts low, Shorts high) {
#if HWY_TARGET == HWY_AVX2
    return Bytes{_mm256_packus_epi16(low.raw, high.raw)};
#else
    return Bytes{_mm512_packus_epi16(low.raw, high.raw)};
#endif
}

inline Words WholeSum(Words low, Words high) {
    return hn::ShiftRight<RowWeights::kFractionBits>(hn::Add(low, hn::ShiftLeft<kDigitBits>(high)));
}

// kTile samples from `at` on.
ZQ_WITH_DOT_PRODUCTS void WeighTile(const u8* const* rows, const WeightPair* weights,
                                    std::size_t pairs, std::size_t at, u8* to) {
    const Words half = hn::Set(kWords, kHalf);
    Words low0 = half, low1 = half, low2 = half, low3 = half;
    Words high0 = hn::Zero(kWords), high1 = high0, high2 = high0, high3 = high0;
    const Bytes zero = hn::Zero(kBytes);
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        const Bytes first = hn::LoadU(kBytes, rows[2 * pair] + at);
        const Bytes second = hn::LoadU(kBytes, rows[2 * pair + 1] + at);
        const Bytes lower = hn::InterleaveLower(kBytes, first, second);
        const Bytes upper = hn::InterleaveUpper(kBytes, first, second);
        const Shorts pairs0 = hn::BitCast(kShorts, hn::InterleaveLower(kBytes, lower, zero));
        const Shorts pairs1 = hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, lower, zero));
        const Shorts pairs2 = hn::BitCast(kShorts, hn::InterleaveLower(kBytes, upper, zero));
        const Shorts pairs3 = hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, upper, zero));
        const Shorts low = hn::BitCast(kShorts, hn::Set(kWords, weights[pair].low));
        const Shorts high = hn::BitCast(kShorts, hn::Set(kWords, weights[pair].high));
        AddProducts(low0, pairs0, low);
        AddProducts(low1, pairs1, low);
        AddProducts(low2, pairs2, low);
        AddProducts(low3, pairs3, low);
        AddProducts(high0, pairs0, high);
        AddProducts(high1, pairs1, high);
        AddProducts(high2, pairs2, high);
        AddProducts(high3, pairs3, high);
    }
    const Shorts shorts0 =
        hn::ReorderDemote2To(kShorts, WholeSum(low0, high0), WholeSum(low1, high1));
    const Shorts shorts1 =
        hn::ReorderDemote2To(kShorts, WholeSum(low2, high2), WholeSum(low3, high3));
    hn::StoreU(Pack(shorts0, shorts1), kBytes, to);
}

#undef ZQ_WITH_DOT_PRODUCTS

void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count) {
    // An odd row out is paired with one that weighs nothing.
    std::array<const u8*, RowWeights::kMost + 1> row;
    std::copy_n(rows, weights.count, row.begin());
    row[weights.count] = rows[0];
    std::array<WeightPair, RowWeights::kMost / 2> pair;
    const std::size_t pairs = (weights.count + 1) / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
        const i32 first = weights.values[2 * i];
        const i32 second = 2 * i + 1 == weights.count ? 0 : weights.values[2 * i + 1];
        pair[i] = {DigitPair(first, second, 0), DigitPair(first, second, kDigitBits)};
    }
    std::size_t at = 0;
    for (; at + kTile <= count; at += kTile) {
        WeighTile(row.data(), pair.data(), pairs, at, to + at);
    }
    if (at < count) {
        // The rest of the rows, with something behind it.
        std::array<u8, (RowWeights::kMost + 1) * kTile> rest{};
        std::array<u8, kTile> result;
        for (std::size_t i = 0; i < 2 * pairs; ++i) {
            std::memcpy(rest.data() + i * kTile, row[i] + at, count - at);
            row[i] = rest.data() + i * kTile;
        }
        WeighTile(row.data(), pair.data(), pairs, 0, result.data());
        std::memcpy(to + at, result.data(), count - at);
    }
}

#else

void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count) {
    constexpr std::size_t kBlock = 512;
    for (std::size_t at = 0; at < count; at += kBlock) {
        const std::size_t n = std::min(kBlock, count - at);
        std::array<i32, kBlock> sums;
        sums.fill(kHalf);
        for (std::size_t tap = 0; tap < weights.count; ++tap) {
            const i32 weight = weights.values[tap];
            const u8* row = rows[tap] + at;
            for (std::size_t i = 0; i < n; ++i) {
                sums[i] += weight * row[i];
            }
        }
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
