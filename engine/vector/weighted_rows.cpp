#include "engine/vector/weighted_rows.h"

#include <algorithm>
#include <array>
#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/weighted_rows.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/sample_pairs-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if ZQ_HAS_PAIRS

// The rows of each pair of terms.
using TermRows = std::array<const u8*, 2 * RowWeights::kMost>;

// Four rows side by side.
HWY_INLINE Quarters<Bytes> QuadSamples(const u8* const* rows, std::size_t at) {
    const Bytes row0 = hn::LoadU(kBytes, rows[0] + at), row1 = hn::LoadU(kBytes, rows[1] + at);
    const Bytes row2 = hn::LoadU(kBytes, rows[2] + at), row3 = hn::LoadU(kBytes, rows[3] + at);
    const Shorts lower01 = hn::BitCast(kShorts, hn::InterleaveLower(kBytes, row0, row1));
    const Shorts upper01 = hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, row0, row1));
    const Shorts lower23 = hn::BitCast(kShorts, hn::InterleaveLower(kBytes, row2, row3));
    const Shorts upper23 = hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, row2, row3));
    return {hn::BitCast(kBytes, hn::InterleaveLower(kShorts, lower01, lower23)),
            hn::BitCast(kBytes, hn::InterleaveUpper(kShorts, lower01, lower23)),
            hn::BitCast(kBytes, hn::InterleaveLower(kShorts, upper01, upper23)),
            hn::BitCast(kBytes, hn::InterleaveUpper(kShorts, upper01, upper23))};
}

// The sums of neighbouring bytes, each as often as its count says.
HWY_INLINE Shorts SumNeighbours(Bytes bytes, Bytes counts) {
#if HWY_TARGET == HWY_AVX2
    return Shorts{_mm256_maddubs_epi16(bytes.raw, counts.raw)};
#else
    return Shorts{_mm512_maddubs_epi16(bytes.raw, counts.raw)};
#endif
}

// The samples of both terms of a pair, side by side.
HWY_INLINE Quarters<Shorts> TermSamples(const u8* const* rows, const TermPair& pair,
                                        std::size_t at) {
    const Quarters<Bytes> quads = QuadSamples(rows, at);
    i32 word;
    std::memcpy(&word, pair.counts.data(), sizeof word);
    const Bytes counts = hn::BitCast(kBytes, hn::Set(kWords, word));
    return {SumNeighbours(quads.first, counts), SumNeighbours(quads.second, counts),
            SumNeighbours(quads.third, counts), SumNeighbours(quads.fourth, counts)};
}

HWY_INLINE Words JoinDigits(Words low, Words high) {
    return hn::ShiftRight<RowWeights::kFractionBits>(
        hn::Add(low, hn::ShiftLeft<FoldedWeights::kDigitBits>(high)));
}

// kTile samples from `at` on. (Loops that are not unrolled move all sums to other
// registers and back.)
ZQ_WITH_DOT_PRODUCTS Bytes WeighTile(const TermRows& rows, const FoldedWeights& weights,
                                     std::size_t at) {
    Quarters<Words> low = SetQuarters(RowWeights::kHalf);
    Quarters<Words> high = SetQuarters(0);
    std::size_t i = 0;
    HWY_UNROLL(2)
    for (; i < weights.twoDigits; ++i) {
        const TermPair& pair = weights.pairs[i];
        const Quarters<Shorts> samples = TermSamples(rows.data() + 4 * i, pair, at);
        AddQuarters(low, samples, pair.low);
        AddQuarters(high, samples, pair.high);
    }
    HWY_UNROLL(2)
    for (; i < weights.count; ++i) {
        const TermPair& pair = weights.pairs[i];
        AddQuarters(low, TermSamples(rows.data() + 4 * i, pair, at), pair.low);
    }
    return PackWords(JoinDigits(low.first, high.first), JoinDigits(low.second, high.second),
                     JoinDigits(low.third, high.third), JoinDigits(low.fourth, high.fourth));
}

// A row that is shorter than a tile.
void WeighShortRow(const TermRows& rows, const FoldedWeights& weights, u8* to, std::size_t count) {
    std::array<u8, 2 * RowWeights::kMost * kTile> samples{};
    TermRows copies{};
    for (std::size_t i = 0; i < 4 * weights.count; ++i) {
        u8* copy = samples.data() + i * kTile;
        std::memcpy(copy, rows[i], count);
        copies[i] = copy;
    }
    std::array<u8, kTile> sums;
    hn::StoreU(WeighTile(copies, weights, 0), kBytes, sums.data());
    std::memcpy(to, sums.data(), count);
}

void WeighRows(const u8* const* taps, const FoldedWeights& weights, u8* to, std::size_t count,
               Stores stores) {
    TermRows rows;
    for (std::size_t i = 0; i < 4 * weights.count; ++i) {
        rows[i] = taps[weights.pairs[i / 4].taps[i % 4]];
    }
    if (count < kTile) {
        WeighShortRow(rows, weights, to, count);
        return;
    }
    // The first and the last tile may overlap their neighbours.
    const auto store = [&](std::size_t at) {
        hn::StoreU(WeighTile(rows, weights, at), kBytes, to + at);
    };
    std::size_t at = 0;
    if (stores == Stores::Streamed) {
        store(0);
        at = kTile - reinterpret_cast<std::uintptr_t>(to) % kTile;
        for (; at + kTile <= count; at += kTile) {
            hn::Stream(WeighTile(rows, weights, at), kBytes, to + at);
        }
    } else {
        for (; at + kTile <= count; at += kTile) {
            store(at);
        }
    }
    if (at < count) {
        store(count - kTile);
    }
}

#else

void WeighRows(const u8* const* rows, const FoldedWeights& weights, u8* to, std::size_t count,
               Stores) {
    for (std::size_t at = 0; at < count; at += kSumBlock) {
        const std::size_t n = std::min(kSumBlock, count - at);
        SumBlock sums;
        SumRows(rows, weights.unfolded, RowWeights::kHalf, at, n, sums);
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

void WeighRows(const u8* const* rows, const FoldedWeights& weights, u8* to, std::size_t count,
               Stores stores) {
    HWY_DYNAMIC_DISPATCH(WeighRows)(rows, weights, to, count, stores);
}

#endif
