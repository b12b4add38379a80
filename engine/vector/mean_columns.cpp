#include "engine/vector/mean_columns.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/mean_columns.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/sum_planes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

HWY_INLINE Planes PlanesOf(const ColumnSums& sums) {
    return {sums.Even(), sums.Odd()};
}

void AddToColumns(const u8* row, i32 times, const ColumnSums& sums, std::size_t count) {
    const Planes planes = PlanesOf(sums);
    const std::size_t lanes = hn::Lanes(ByteTag());
    for (std::size_t i = 0; i < count; i += lanes) {
        const std::size_t rest = count - i;
        const auto bytes = rest < lanes ? LoadPart(row + i, rest) : hn::LoadU(ByteTag(), row + i);
        const Planes here = planes.From(i);
        here.Set(here.Get() + WordsOf(bytes) * static_cast<u16>(times));
    }
}

// Slides the windows on and writes finish(sums, samples at the same places of the other rows).
// Where only a part of a vector is written, the others of its sums stay as they are: what enters
// and leaves there is zero. Streamed stores would be slower between those of the sums.
template <class Finish, class... Row>
HWY_INLINE void Slide(const ColumnStep& step, u8* to, const Finish& finish, const Row*... rows) {
    const Planes planes = PlanesOf(step.sums);
    ForVectors(
        to, step.count, Stores::Cached,
        [&](std::size_t i, ByteVector entering, ByteVector leaving, auto... samples) HWY_ATTR {
            const Planes here = planes.From(i);
            const Sums sums = here.Get() + WordsOf(entering) - WordsOf(leaving);
            here.Set(sums);
            return finish(sums, samples...);
        },
        step.entering, step.leaving, rows...);
}

void WriteMeans(const ColumnStep& step, const RoundedDivision& division, u8* to) {
    const Division mean(division);
    Slide(step, to, [&](const Sums& sums) HWY_ATTR { return mean(sums); });
}

void WriteWeightedMeans(const ColumnStep& step, const u8* centres, i32 weight,
                        const RoundedDivision& division, u8* to) {
    const Division mean(division);
    const auto factor = static_cast<u16>(weight);
    Slide(
        step, to,
        [&](const Sums& sums, ByteVector centre)
            HWY_ATTR { return mean(sums + WordsOf(centre) * factor); },
        centres);
}

// (50 + difference * percent) / 100, at most 255. A difference of `most` gives that already, so the
// products stay below 26,100, and for those the multiplication divides exactly.
HWY_INLINE WordVector GainOf(WordVector differences, u16 percent, u16 most) {
    const WordTag tag;
    constexpr u16 kHundredth = (1 << 22) / 100 + 1;
    const auto product = hn::Mul(hn::Min(differences, hn::Set(tag, most)), hn::Set(tag, percent));
    const auto hundredfold = hn::Add(product, hn::Set(tag, u16{50}));
    return hn::Min(hn::ShiftRight<6>(hn::MulHigh(hundredfold, hn::Set(tag, kHundredth))),
                   hn::Set(tag, u16{255}));
}

void WriteSharpened(const ColumnStep& step, const u8* samples, const DifferenceGain& gain,
                    const RoundedDivision& division, u8* to) {
    const Division meanOf(division);
    const auto percent = static_cast<u16>(gain.percent);
    const auto most = static_cast<u16>((25450 + gain.percent - 1) / gain.percent);
    const auto threshold = hn::Set(ByteTag(), static_cast<u8>(gain.threshold));
    Slide(
        step, to,
        [&](const Sums& sums, ByteVector sample) HWY_ATTR {
            const auto mean = meanOf(sums);
            const auto isAbove = hn::Eq(hn::Max(sample, mean), sample);
            const auto above = hn::Sub(sample, mean);
            const auto difference = hn::IfThenElse(isAbove, above, hn::Not(above));
            const auto isEnough = hn::Eq(hn::Max(difference, threshold), difference);
            const auto added = hn::IfThenElseZero(
                isEnough, BytesOfWords(GainOf(EvenWords(difference), percent, most),
                                       GainOf(OddWords(difference), percent, most)));
            return hn::IfThenElse(isAbove, hn::SaturatedAdd(sample, added),
                                  hn::SaturatedSub(sample, added));
        },
        samples);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(AddToColumns);
HWY_EXPORT(WriteMeans);
HWY_EXPORT(WriteWeightedMeans);
HWY_EXPORT(WriteSharpened);

void AddToColumns(const u8* row, i32 times, const ColumnSums& sums, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(AddToColumns)(row, times, sums, count);
}

void WriteMeans(const ColumnStep& step, const RoundedDivision& division, u8* to) {
    HWY_DYNAMIC_DISPATCH(WriteMeans)(step, division, to);
}

void WriteWeightedMeans(const ColumnStep& step, const u8* centres, i32 weight,
                        const RoundedDivision& division, u8* to) {
    HWY_DYNAMIC_DISPATCH(WriteWeightedMeans)(step, centres, weight, division, to);
}

void WriteSharpened(const ColumnStep& step, const u8* samples, const DifferenceGain& gain,
                    const RoundedDivision& division, u8* to) {
    HWY_DYNAMIC_DISPATCH(WriteSharpened)(step, samples, gain, division, to);
}

#endif
