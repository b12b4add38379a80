#include "engine/vector/quotient_rows.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/quotient_rows.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/sample_pairs-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// A dividend below 256 * divisor is less than 2^20. Half a unit more, it is further from the next
// multiple of the divisor than rounding errors reach.
constexpr float kMiddle = 0.5f;

#if ZQ_HAS_PAIRS

// Replaces sums by their quotients. Gives 1 where one above 0 is exact, else 0.
HWY_INLINE Words DivideWords(Words& sums, i32 divisor) {
    const hn::Repartition<float, decltype(kWords)> floats;
    const Words largest = hn::Set(kWords, 256 * divisor - 1);
    const auto by = hn::Set(floats, static_cast<float>(divisor));
    const auto inverse = hn::Set(floats, 1.0f / static_cast<float>(divisor));
    const Words kept = hn::Min(hn::Max(sums, hn::Zero(kWords)), largest);
    const auto dividend = hn::ConvertTo(floats, kept);
    sums = hn::ConvertTo(kWords, hn::Mul(hn::Add(dividend, hn::Set(floats, kMiddle)), inverse));
    const auto product = hn::Mul(hn::ConvertTo(floats, sums), by);
    const auto exact = hn::And(hn::Eq(product, dividend), hn::Gt(dividend, hn::Zero(floats)));
    return hn::And(hn::BitCast(kWords, hn::VecFromMask(floats, exact)), hn::Set(kWords, 1));
}

// kTile samples from `at` on. Gives whether a quotient is exact.
ZQ_WITH_DOT_PRODUCTS bool DivideTile(const u8* const* rows, const i32* weights, std::size_t pairs,
                                     const QuotientWeights& quotient, std::size_t at, u8* to,
                                     u8* exact) {
    Quarters<Words> sums = SetQuarters(quotient.offset);
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        AddQuarters(sums, PairSamples(rows[2 * pair] + at, rows[2 * pair + 1] + at), weights[pair]);
    }
    const Words first = DivideWords(sums.first, quotient.divisor);
    const Words second = DivideWords(sums.second, quotient.divisor);
    const Words third = DivideWords(sums.third, quotient.divisor);
    const Words fourth = DivideWords(sums.fourth, quotient.divisor);
    hn::StoreU(PackWords(sums.first, sums.second, sums.third, sums.fourth), kBytes, to);
    hn::StoreU(PackWords(first, second, third, fourth), kBytes, exact);
    const Words any = hn::Or(hn::Or(first, second), hn::Or(third, fourth));
    return !hn::AllTrue(kWords, hn::Eq(any, hn::Zero(kWords)));
}

bool DivideRows(const u8* const* rows, const QuotientWeights& weights, u8* to, u8* exact,
                std::size_t count) {
    std::array<i32, QuotientWeights::kMost / 2 + 1> pair;
    const std::size_t pairs = (weights.count + 1) / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
        const i32 second = 2 * i + 1 == weights.count ? 0 : weights.values[2 * i + 1];
        pair[i] =
            (weights.values[2 * i] & 0xFFFF) | static_cast<i32>(static_cast<u32>(second) << 16);
    }
    bool any = false;
    ForTiles<QuotientWeights::kMost>(rows, weights.count, count,
                                     [&](const u8* const* row, std::size_t at, std::size_t done) {
                                         std::array<u8, kTile> tones, flags;
                                         const bool whole = done + kTile <= count;
                                         any |= DivideTile(row, pair.data(), pairs, weights, at,
                                                           whole ? to + done : tones.data(),
                                                           whole ? exact + done : flags.data());
                                         if (!whole) {
                                             std::memcpy(to + done, tones.data(), count - done);
                                             std::memcpy(exact + done, flags.data(), count - done);
                                         }
                                     });
    return any;
}

#else

bool DivideRows(const u8* const* rows, const QuotientWeights& weights, u8* to, u8* exact,
                std::size_t count) {
    const i32 largest = 256 * weights.divisor - 1;
    const auto divisor = static_cast<float>(weights.divisor);
    const float inverse = 1.0f / divisor;
    i32 any = 0;
    for (std::size_t at = 0; at < count; at += kSumBlock) {
        const std::size_t n = std::min(kSumBlock, count - at);
        SumBlock sums;
        SumRows(rows, weights, weights.offset, at, n, sums);
        for (std::size_t i = 0; i < n; ++i) {
            const auto dividend = static_cast<float>(std::clamp(sums[i], 0, largest));
            const auto tone = static_cast<i32>((dividend + kMiddle) * inverse);
            const bool isExact = static_cast<float>(tone) * divisor == dividend && dividend > 0;
            to[at + i] = static_cast<u8>(tone);
            exact[at + i] = isExact ? 1 : 0;
            any |= isExact ? 1 : 0;
        }
    }
    return any != 0;
}

#endif

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(DivideRows);

bool DivideRows(const u8* const* rows, const QuotientWeights& weights, u8* to, u8* exact,
                std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(DivideRows)(rows, weights, to, exact, count);
}

#endif
