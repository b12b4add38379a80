#include "engine/colour/hue_row.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/colour/hue_row.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>

#include "engine/vector/byte_table-inl.h"
#include "engine/vector/byte_words-inl.h"
#include "engine/vector/pixel_planes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using IntTag = hn::RebindToSigned<WordTag>;
using IntVector = hn::VFromD<IntTag>;

HWY_INLINE IntVector Number(i32 value) {
    return hn::Set(IntTag(), static_cast<i16>(value));
}

struct Colours {
    IntVector blue;
    IntVector green;
    IntVector red;
};

// The wheel has six sectors. In each of them one channel is the largest, one the smallest, and the
// middle one rises in even sectors, falls in odd ones. All hues are scaled by 60 * spread, so that
// the steps of one degree are whole numbers; the largest is 2 * 60 * 255, less than 2^15.
HWY_INLINE Colours Turn(const Colours& colour, const HueTurn& turn) {
    const IntTag tag;
    const auto [blue, green, red] = colour;
    const IntVector largest = hn::Max(hn::Max(blue, green), red);
    const IntVector smallest = hn::Min(hn::Min(blue, green), red);
    const IntVector spread = hn::Sub(largest, smallest);

    // Where the hue stands: past the middle of the largest channel's two sectors, or before it.
    const auto isRed = hn::Eq(red, largest);
    const auto isGreen = hn::Eq(green, largest);
    const IntVector next = hn::IfThenElse(isRed, green, hn::IfThenElse(isGreen, blue, red));
    const IntVector previous = hn::IfThenElse(isRed, blue, hn::IfThenElse(isGreen, red, green));
    const IntVector past = hn::Sub(next, previous);
    const auto isBefore = hn::Lt(past, Number(0));
    const IntVector along = hn::Add(past, hn::IfThenElseZero(isBefore, spread));
    IntVector sector =
        hn::IfThenElse(isRed, Number(0), hn::IfThenElse(isGreen, Number(2), Number(4)));
    sector = hn::Add(sector, hn::VecFromMask(tag, isBefore)); // a mask is -1

    // Further by the turn.
    const IntVector whole = hn::Mul(spread, Number(60));
    IntVector hue = hn::Add(hn::Mul(along, Number(60)), hn::Mul(spread, Number(turn.degrees)));
    const auto isOver = hn::Gt(hue, whole); // where two sectors meet either one gives the colour
    hue = hn::Sub(hue, hn::IfThenElseZero(isOver, whole));
    sector = hn::Sub(hn::Add(sector, Number(turn.sectors)), hn::VecFromMask(tag, isOver));
    sector = hn::Add(sector, hn::IfThenElseZero(hn::Lt(sector, Number(0)), Number(6)));
    sector = hn::Sub(sector, hn::IfThenElseZero(hn::Gt(sector, Number(5)), Number(6)));

    const auto is = [&](i32 number) { return hn::Eq(sector, Number(number)); };
    const auto isFalling = hn::Ne(hn::And(sector, Number(1)), Number(0));
    const IntVector rest = hn::IfThenElse(isFalling, hue, hn::Sub(whole, hue));
    // Rounded to a sixtieth: the factor is exact up to 2^15.
    const IntVector drop = hn::ShiftRight<4>(hn::MulHigh(hn::Add(rest, Number(30)), Number(17477)));
    const IntVector middle = hn::Sub(largest, drop);
    const auto choose = [&](auto isLargest, auto isMiddle) {
        return hn::IfThenElse(isLargest, largest, hn::IfThenElse(isMiddle, middle, smallest));
    };
    return {choose(hn::Or(is(3), is(4)), hn::Or(is(2), is(5))),
            choose(hn::Or(is(1), is(2)), hn::Or(is(0), is(3))),
            choose(hn::Or(is(0), is(5)), hn::Or(is(1), is(4)))};
}

HWY_INLINE IntVector Signed(WordVector words) {
    return hn::BitCast(IntTag(), words);
}
HWY_INLINE WordVector Unsigned(IntVector words) {
    return hn::BitCast(WordTag(), words);
}

void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const SaturationTables& saturation, Stores stores) {
    const VectorTable keepLow(saturation.keepLow);
    const VectorTable keepHigh(saturation.keepHigh);
    const VectorTable pullLow(saturation.pullLow);
    const VectorTable pullHigh(saturation.pullHigh);
    const auto join = [](WordVector low, WordVector high) {
        return hn::Or(low, hn::ShiftLeft<8>(high));
    };
    const auto round = [](WordVector moved) {
        return Unsigned(hn::Max(hn::ShiftRight<7>(Signed(moved)), Number(0)));
    };
    ForPixelVectors(
        from, to, pixels, stores, [&](ByteVector& blue, ByteVector& green, ByteVector& red) {
            const Colours even = Turn(
                {Signed(EvenWords(blue)), Signed(EvenWords(green)), Signed(EvenWords(red))}, turn);
            const Colours odd = Turn(
                {Signed(OddWords(blue)), Signed(OddWords(green)), Signed(OddWords(red))}, turn);
            blue = BytesOfWords(Unsigned(even.blue), Unsigned(odd.blue));
            green = BytesOfWords(Unsigned(even.green), Unsigned(odd.green));
            red = BytesOfWords(Unsigned(even.red), Unsigned(odd.red));

            const ByteVector largest = hn::Max(hn::Max(blue, green), red);
            const ByteVector low = pullLow[largest];
            const ByteVector high = pullHigh[largest];
            const WordVector evenPull = join(EvenWords(low), EvenWords(high));
            const WordVector oddPull = join(OddWords(low), OddWords(high));
            const auto move = [&](ByteVector& channel) {
                const ByteVector keptLow = keepLow[channel];
                const ByteVector keptHigh = keepHigh[channel];
                channel = BytesOfWords(
                    round(hn::Add(join(EvenWords(keptLow), EvenWords(keptHigh)), evenPull)),
                    round(hn::Add(join(OddWords(keptLow), OddWords(keptHigh)), oddPull)));
            };
            move(blue);
            move(green);
            move(red);
        });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(TurnPixels);

void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const SaturationTables& saturation, Stores stores) {
    HWY_DYNAMIC_DISPATCH(TurnPixels)(from, to, pixels, turn, saturation, stores);
}

SaturationTables::SaturationTables(i32 percent) {
    for (std::size_t tone = 0; tone < 256; ++tone) {
        const i32 scaled = static_cast<i32>(tone) * 128;
        const i32 pull = (scaled * percent + 50) / 100;
        const i32 keep = scaled - pull;
        keepLow[tone] = static_cast<u8>(keep);
        keepHigh[tone] = static_cast<u8>(keep >> 8);
        pullLow[tone] = static_cast<u8>(pull);
        pullHigh[tone] = static_cast<u8>(pull >> 8);
    }
}

#endif
