#include "engine/colour/threshold_row.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/colour/threshold_row.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>

#include "engine/vector/byte_words-inl.h"
#include "engine/vector/pixel_planes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void ThresholdPixels(const u8* from, u8* to, std::size_t pixels, u8 level, Stores stores) {
    // The weights add up to 255, so the level is taken 255 times, and 16 bits hold any luminance.
    const WordTag tag;
    const WordVector limit = hn::Set(tag, static_cast<u16>(255 * level));
    const auto isWhite = [&](WordVector blue, WordVector green, WordVector red) {
        const WordVector luminance = hn::Add(
            hn::Add(hn::Mul(red, hn::Set(tag, u16{76})), hn::Mul(green, hn::Set(tag, u16{150}))),
            hn::Mul(blue, hn::Set(tag, u16{29})));
        return hn::VecFromMask(tag, hn::Gt(luminance, limit));
    };
    ForPixelVectors(from, to, pixels, stores,
                    [&](ByteVector& blue, ByteVector& green, ByteVector& red) {
                        blue = green = red =
                            BytesOfWords(isWhite(EvenWords(blue), EvenWords(green), EvenWords(red)),
                                         isWhite(OddWords(blue), OddWords(green), OddWords(red)));
                    });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(ThresholdPixels);

void ThresholdPixels(const u8* from, u8* to, std::size_t pixels, u8 level, Stores stores) {
    HWY_DYNAMIC_DISPATCH(ThresholdPixels)(from, to, pixels, level, stores);
}

#endif
