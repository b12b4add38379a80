// What weighted sums of rows of bytes have in common, for each instruction set that has 16-bit
// products added in pairs: ZQ_HAS_PAIRS says whether the one being compiled is of them.
//
// To be included behind <hwy/highway.h>.
#if defined(ZQ_SAMPLE_PAIRS) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_SAMPLE_PAIRS
#undef ZQ_SAMPLE_PAIRS
#else
#define ZQ_SAMPLE_PAIRS
#endif

#include "platform/types.h"

#include <algorithm>
#include <array>
#include <cstring>

#undef ZQ_HAS_PAIRS
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
#define ZQ_HAS_PAIRS 1
#else
#define ZQ_HAS_PAIRS 0
#endif

#if ZQ_HAS_PAIRS

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr hn::ScalableTag<u8> kBytes;
constexpr hn::ScalableTag<i16> kShorts;
constexpr hn::ScalableTag<i32> kWords;
constexpr std::size_t kTile = hn::MaxLanes(kBytes);
using Bytes = hn::Vec<decltype(kBytes)>;
using Shorts = hn::Vec<decltype(kShorts)>;
using Words = hn::Vec<decltype(kWords)>;

#undef ZQ_WITH_DOT_PRODUCTS
// Processors of this target multiply and add at one stroke, which Highway does not name.
#if HWY_TARGET == HWY_AVX3_DL
#define ZQ_WITH_DOT_PRODUCTS __attribute__((target(HWY_TARGET_STR ",avx512vnni")))
#else
#define ZQ_WITH_DOT_PRODUCTS
#endif

// Adds the products of both samples of each pair.
ZQ_WITH_DOT_PRODUCTS HWY_INLINE void AddProducts(Words& sum, Shorts samples, Shorts weights) {
#if HWY_TARGET == HWY_AVX3_DL
    sum.raw = _mm512_dpwssd_epi32(sum.raw, samples.raw, weights.raw);
#elif HWY_TARGET == HWY_AVX3
    sum.raw = _mm512_add_epi32(sum.raw, _mm512_madd_epi16(samples.raw, weights.raw));
#else
    sum.raw = _mm256_add_epi32(sum.raw, _mm256_madd_epi16(samples.raw, weights.raw));
#endif
}

HWY_INLINE Bytes Pack(Shorts low, Shorts high) {
#if HWY_TARGET == HWY_AVX2
    return Bytes{_mm256_packus_epi16(low.raw, high.raw)};
#else
    return Bytes{_mm512_packus_epi16(low.raw, high.raw)};
#endif
}

// kTile words or pairs of samples. A row's bytes become them by unpacking twice, and packing twice
// puts them in order again. (The compiler keeps an array of them in memory.)
template <class Quarter>
struct Quarters {
    Quarter first, second, third, fourth;
};

// Two rows side by side.
HWY_INLINE Quarters<Shorts> PairSamples(const u8* firstRow, const u8* secondRow) {
    const Bytes zero = hn::Zero(kBytes);
    const Bytes first = hn::LoadU(kBytes, firstRow);
    const Bytes second = hn::LoadU(kBytes, secondRow);
    const Bytes lower = hn::InterleaveLower(kBytes, first, second);
    const Bytes upper = hn::InterleaveUpper(kBytes, first, second);
    return {hn::BitCast(kShorts, hn::InterleaveLower(kBytes, lower, zero)),
            hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, lower, zero)),
            hn::BitCast(kShorts, hn::InterleaveLower(kBytes, upper, zero)),
            hn::BitCast(kShorts, hn::InterleaveUpper(kBytes, upper, zero))};
}

HWY_INLINE Quarters<Words> SetQuarters(i32 value) {
    const Words words = hn::Set(kWords, value);
    return {words, words, words, words};
}

ZQ_WITH_DOT_PRODUCTS HWY_INLINE void AddQuarters(Quarters<Words>& sums,
                                                 const Quarters<Shorts>& samples, i32 weightPair) {
    const Shorts weights = hn::BitCast(kShorts, hn::Set(kWords, weightPair));
    AddProducts(sums.first, samples.first, weights);
    AddProducts(sums.second, samples.second, weights);
    AddProducts(sums.third, samples.third, weights);
    AddProducts(sums.fourth, samples.fourth, weights);
}

// Words from 0 to 255 as bytes.
HWY_INLINE Bytes PackWords(Words first, Words second, Words third, Words fourth) {
    return Pack(hn::ReorderDemote2To(kShorts, first, second),
                hn::ReorderDemote2To(kShorts, third, fourth));
}

// Calls `tile(rows, at, done)` for tiles that cover all `count` samples: `at` counts in the rows
// that it gets, `done` in those given. An odd row out gets a partner, which is to weigh nothing.
// What a last, short tile gives behind the end is not wanted.
template <std::size_t most, class Tile>
void ForTiles(const u8* const* rows, std::size_t rowCount, std::size_t count, const Tile& tile) {
    std::array<const u8*, most + 1> row;
    std::copy_n(rows, rowCount, row.begin());
    row[rowCount] = rows[0];
    std::size_t done = 0;
    for (; done + kTile <= count; done += kTile) {
        tile(row.data(), done, done);
    }
    if (done < count) {
        std::array<u8, (most + 1) * kTile> rest{};
        for (std::size_t i = 0; i <= rowCount; ++i) {
            std::memcpy(rest.data() + i * kTile, row[i] + done, count - done);
            row[i] = rest.data() + i * kTile;
        }
        tile(row.data(), 0, done);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#else

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// Without such products: samples are summed so many at a time.
constexpr std::size_t kSumBlock = 512;
using SumBlock = std::array<i32, kSumBlock>;

// offset + weights[0] * rows[0][at + i] + ... for `count` samples, at most a block.
template <class Weights>
HWY_INLINE void SumRows(const u8* const* rows, const Weights& weights, i32 offset, std::size_t at,
                        std::size_t count, SumBlock& sums) {
    sums.fill(offset);
    for (std::size_t tap = 0; tap < weights.count; ++tap) {
        const i32 weight = weights.values[tap];
        const u8* row = rows[tap] + at;
        for (std::size_t i = 0; i < count; ++i) {
            sums[i] += weight * row[i];
        }
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
#endif
