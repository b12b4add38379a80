#include "engine/vector/row_map.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/row_map.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

constexpr std::size_t kRunBytes = 32 * RowMap::kBlockBytes;

// Calls `permuted(window, x)` for each block that two vectors hold and `copied(x, count)` for runs
// of up to kRunBytes of other pixels, in order. What follows on a block may be spoilt: of three
// bytes there are 21 pixels in it, and the 64th byte belongs to the next block.
template <class Permuted, class Copied>
void ForBlocks(const RowMap& map, const Permuted& permuted, const Copied& copied) {
    const std::size_t blockPixels = RowMap::kBlockBytes / map.PixelBytes();
    const std::size_t longest = (kRunBytes / RowMap::kBlockBytes - 1) * blockPixels;
    const RowMap::Window* window = map.Windows();
    std::size_t copiedTo = 0;
    for (std::size_t x = 0; x + blockPixels < map.Width(); x += blockPixels, ++window) {
        const bool permutes = HWY_TARGET == HWY_AVX3_DL && window->isNear;
        if (x > copiedTo && (permutes || x - copiedTo == longest)) {
            copied(copiedTo, x - copiedTo);
            copiedTo = x;
        }
        if (permutes) {
            permuted(*window, x);
            copiedTo = x + blockPixels;
        }
    }
    copied(copiedTo, map.Width() - copiedTo);
}

#if HWY_TARGET == HWY_AVX3_DL
__m512i Permute(const u8* from, __m512i places) {
    return _mm512_permutex2var_epi8(_mm512_loadu_si512(from), places,
                                    _mm512_loadu_si512(from + RowMap::kBlockBytes));
}

// Eight bits of each product's place are in the upper half of its 16 bits.
__m512i MixHalves(__m512i one, __m512i other, __m512i share) {
    const __m512i whole = _mm512_set1_epi16(256);
    const __m512i mix = _mm512_add_epi16(_mm512_mullo_epi16(one, _mm512_sub_epi16(whole, share)),
                                         _mm512_mullo_epi16(other, share));
    return _mm512_srli_epi16(mix, 8);
}

__m512i Mix(__m512i one, __m512i other, __m512i share) {
    const __m512i zero = _mm512_setzero_si512();
    return _mm512_packus_epi16(
        MixHalves(_mm512_unpacklo_epi8(one, zero), _mm512_unpacklo_epi8(other, zero),
                  _mm512_unpacklo_epi8(share, zero)),
        MixHalves(_mm512_unpackhi_epi8(one, zero), _mm512_unpackhi_epi8(other, zero),
                  _mm512_unpackhi_epi8(share, zero)));
}
#endif

void MixBytes(const u8* __restrict one, const u8* __restrict other, const u8* __restrict shares,
              u8* __restrict to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        // At most 256 * 255. The analyzer does not see that CopyPixels has written both.
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
        const auto mix = static_cast<u16>(one[i] * (256 - shares[i]) + other[i] * shares[i]);
        to[i] = static_cast<u8>(mix >> 8);
    }
}

void Fetch(const RowMap& map, const u8* from, u8* to) {
    const std::size_t bytes = map.PixelBytes();
    ForBlocks(
        map,
        [&]([[maybe_unused]] const RowMap::Window& window, [[maybe_unused]] std::size_t x) {
#if HWY_TARGET == HWY_AVX3_DL
            _mm512_storeu_si512(to + x * bytes,
                                Permute(from + window.begin, _mm512_loadu_si512(window.places)));
#endif
        },
        [&](std::size_t x, std::size_t count) { map.CopyPixels(from, x, count, to + x * bytes); });
}

void FetchMixed(const RowMap& map, const u8* from, std::size_t next, const u8* shares, u8* to) {
    const std::size_t bytes = map.PixelBytes();
    ForBlocks(
        map,
        [&]([[maybe_unused]] const RowMap::Window& window, [[maybe_unused]] std::size_t x) {
#if HWY_TARGET == HWY_AVX3_DL
            const __m512i places = _mm512_loadu_si512(window.places);
            const __m512i nextPlaces =
                _mm512_add_epi8(places, _mm512_set1_epi8(static_cast<char>(next)));
            _mm512_storeu_si512(to + x * bytes, Mix(Permute(from + window.begin, places),
                                                    Permute(from + window.begin, nextPlaces),
                                                    _mm512_loadu_si512(shares + x * bytes)));
#endif
        },
        [&](std::size_t x, std::size_t count) {
            u8 one[kRunBytes];
            u8 other[kRunBytes];
            map.CopyPixels(from, x, count, one);
            map.CopyPixels(from + next, x, count, other);
            MixBytes(one, other, shares + x * bytes, to + x * bytes, count * bytes);
        });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(Fetch);
HWY_EXPORT(FetchMixed);

RowMap::RowMap(i32 width, std::size_t pixelBytes)
    : width_(static_cast<std::size_t>(width)), pixelBytes_(pixelBytes), offsets_(width_),
      windows_(width_ / (RowMap::kBlockBytes / pixelBytes) + 1) {}

void RowMap::Finish() const {
    const std::size_t block = RowMap::kBlockBytes / pixelBytes_;
    const std::size_t rowBytes = width_ * pixelBytes_;
    for (std::size_t x = 0; x + block < width_; x += block) {
        Window& window = windows_[x / block];
        const std::size_t* offsets = &offsets_[x];
        const auto [least, most] = std::minmax_element(offsets, offsets + block);
        window.begin = *least;
        window.isNear = *most - *least + 2 * pixelBytes_ <= 2 * RowMap::kBlockBytes &&
                        *least + 2 * RowMap::kBlockBytes <= rowBytes;
        for (std::size_t i = 0; window.isNear && i < block * pixelBytes_; ++i) {
            window.places[i] = static_cast<u8>(offsets[i / pixelBytes_] - *least + i % pixelBytes_);
        }
    }
}

void RowMap::CopyPixels(const u8* from, std::size_t x, std::size_t count, u8* to) const {
    pixelBytes_ == 3 ? CopyPixelsAt<3>(from, &offsets_[x], count, to)
                     : CopyPixelsAt<1>(from, &offsets_[x], count, to);
}

void RowMap::Fetch(const u8* from, u8* to) const {
    HWY_DYNAMIC_DISPATCH(Fetch)(*this, from, to);
}

void RowMap::FetchMixed(const u8* from, std::size_t next, const u8* shares, u8* to) const {
    HWY_DYNAMIC_DISPATCH(FetchMixed)(*this, from, next, shares, to);
}

#endif
