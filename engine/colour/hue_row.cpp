#include "engine/colour/hue_row.h"

#include <cstdlib>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/colour/hue_row.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>

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

HWY_INLINE WordVector Pull(WordVector tone, const Saturation& saturation) {
    const WordTag tag;
    const WordVector doubled = hn::MulHigh(hn::Add(tone, tone), hn::Set(tag, saturation.part));
    const WordVector part = hn::AverageRound(doubled, hn::Zero(tag));
    const WordVector whole = hn::Mul(tone, hn::Set(tag, saturation.whole));
    return hn::Sub(hn::Add(whole, part), hn::Min(tone, hn::Set(tag, saturation.isBelow)));
}

HWY_INLINE Colours Saturate(const Colours& colour, const Saturation& saturation) {
    const auto [blue, green, red] = colour;
    const IntVector largest = hn::Max(hn::Max(blue, green), red);
    const WordVector farthest = Pull(Unsigned(largest), saturation);
    const IntVector sign = Number(-saturation.isBelow);
    const auto move = [&](IntVector channel) {
        const IntVector pull = Signed(hn::Sub(farthest, Pull(Unsigned(channel), saturation)));
        const IntVector change = hn::Sub(hn::Xor(pull, sign), sign);
        const IntVector moved = hn::Add(hn::ShiftLeft<7>(channel), change);
        return hn::Max(hn::ShiftRight<7>(moved), Number(0));
    };
    return {move(blue), move(green), move(red)};
}

void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const Saturation& saturation, Stores stores) {
    ForPixelVectors(
        from, to, pixels, stores, [&](ByteVector& blue, ByteVector& green, ByteVector& red) {
            const auto change = [&](WordVector b, WordVector g, WordVector r) {
                return Saturate(Turn({Signed(b), Signed(g), Signed(r)}, turn), saturation);
            };
            const Colours even = change(EvenWords(blue), EvenWords(green), EvenWords(red));
            const Colours odd = change(OddWords(blue), OddWords(green), OddWords(red));
            blue = BytesOfWords(Unsigned(even.blue), Unsigned(odd.blue));
            green = BytesOfWords(Unsigned(even.green), Unsigned(odd.green));
            red = BytesOfWords(Unsigned(even.red), Unsigned(odd.red));
        });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(TurnPixels);

void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const Saturation& saturation, Stores stores) {
    HWY_DYNAMIC_DISPATCH(TurnPixels)(from, to, pixels, turn, saturation, stores);
}

Saturation::Saturation(i32 percent) {
    const u32 times25 = 32 * static_cast<u32>(std::abs(percent));
    whole = static_cast<u16>(times25 / 25);
    part = static_cast<u16>((times25 % 25 * 65536 + 24) / 25);
    isBelow = percent < 0 ? u16{1} : u16{0};
}

#endif
