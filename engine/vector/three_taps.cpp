#include "engine/vector/three_taps.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/three_taps.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/byte_words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

HWY_INLINE WordVector Share(WordVector before, WordVector centre, WordVector behind,
                            OuterWeight weight) {
    const hn::RebindToSigned<WordTag> shorts;
    const auto difference = hn::Sub(hn::Add(before, behind), hn::Add(centre, centre));
    return hn::BitCast(WordTag(), hn::MulFixedPoint15(hn::BitCast(shorts, difference),
                                                      hn::Set(shorts, weight.value)));
}

void WeighThreeRows(const ThreeRows& rows, OuterWeight weight, u8* to, std::size_t count,
                    Stores stores) {
    ForVectors(
        to, count, stores,
        [weight](std::size_t, ByteVector before, ByteVector centre, ByteVector behind) {
            const WordVector even =
                Share(EvenWords(before), EvenWords(centre), EvenWords(behind), weight);
            const WordVector odd =
                Share(OddWords(before), OddWords(centre), OddWords(behind), weight);
            return hn::Add(centre, BytesOfWords(even, odd));
        },
        rows.before, rows.centre, rows.behind);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(WeighThreeRows);

void WeighThreeRows(const ThreeRows& rows, OuterWeight weight, u8* to, std::size_t count,
                    Stores stores) {
    HWY_DYNAMIC_DISPATCH(WeighThreeRows)(rows, weight, to, count, stores);
}

#endif
