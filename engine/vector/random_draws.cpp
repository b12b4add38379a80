#include "engine/vector/random_draws.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/random_draws.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

namespace {

// Some draws at once: state * factor + term.
struct Jump {
    u32 factor;
    u32 term;
};
constexpr Jump kDraw = {214013u, 2531011u};

// One jump after another.
constexpr Jump Then(Jump first, Jump second) {
    return {first.factor * second.factor, first.term * second.factor + second.term};
}

constexpr Jump Draws(std::size_t count) {
    Jump whole = {1, 0};
    for (Jump power = kDraw; count != 0; count /= 2, power = Then(power, power)) {
        whole = count % 2 != 0 ? Then(whole, power) : whole;
    }
    return whole;
}

// Streams that run side by side, each making every kStreams-th number.
constexpr std::size_t kStreams = 64;

// The jumps to the first number of each stream.
struct Starts {
    u32 factors[kStreams];
    u32 terms[kStreams];

    constexpr Starts() : factors{}, terms{} {
        for (std::size_t stream = 0; stream < kStreams; ++stream) {
            factors[stream] = Draws(stream + 1).factor;
            terms[stream] = Draws(stream + 1).term;
        }
    }
};
constexpr Starts kStarts;

} // namespace

u32 StateAfterDraws(u32 state, std::size_t count) {
    const Jump jump = Draws(count);
    return state * jump.factor + jump.term;
}

u32 DrawNumbers(u32 state, u16* numbers, std::size_t count) {
    constexpr Jump kAll = Draws(kStreams);
    std::size_t i = 0;
    if (count >= kStreams) {
        u32 states[kStreams];
        for (std::size_t stream = 0; stream < kStreams; ++stream) {
            states[stream] = state * kStarts.factors[stream] + kStarts.terms[stream];
        }
        for (; i + kStreams <= count; i += kStreams) {
            state = states[kStreams - 1];
            for (std::size_t stream = 0; stream < kStreams; ++stream) {
                numbers[i + stream] = static_cast<u16>(states[stream] >> 16 & 0x7FFFu);
                states[stream] = states[stream] * kAll.factor + kAll.term;
            }
        }
    }
    for (; i < count; ++i) {
        state = state * kDraw.factor + kDraw.term;
        numbers[i] = static_cast<u16>(state >> 16 & 0x7FFFu);
    }
    return state;
}

// A quotient is number * inverse >> 15 + bits, for a divisor above 2^(bits - 1) and up to 2^bits
// and inverse = 2^(15 + bits) / divisor rounded up, which has 16 bits: what rounding up adds is
// below number / 2^15 < 1 of a divisor's part.
void TakeRemainders(u16* numbers, std::size_t count, u16 divisor) {
    if (divisor == 1) {
        std::fill_n(numbers, count, u16{0});
        return;
    }
    const int bits = std::bit_width(static_cast<u32>(divisor) - 1);
    const auto inverse = static_cast<u16>(((u32{1} << (15 + bits)) + divisor - 1) / divisor);
    const hn::ScalableTag<u16> tag;
    const auto remainder = [&](auto number) {
        const auto high = hn::MulHigh(number, hn::Set(tag, inverse));
        const auto quotient = hn::ShiftRightSame(high, bits - 1);
        return hn::Sub(number, hn::Mul(quotient, hn::Set(tag, divisor)));
    };
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        hn::StoreU(remainder(hn::LoadU(tag, numbers + i)), tag, numbers + i);
    }
    for (; i < count; ++i) {
        numbers[i] = static_cast<u16>(numbers[i] % divisor);
    }
}

void MarkBelow(const u16* numbers, std::size_t count, u16 limit, u8* marks) {
    std::size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<u16> tag;
    for (; i + hn::Lanes(tag) <= count; i += hn::Lanes(tag)) {
        const auto below = hn::Lt(hn::LoadU(tag, numbers + i), hn::Set(tag, limit));
        hn::StoreMaskBits(tag, below, marks + i / 8);
    }
#endif
    for (; i < count; i += 8) {
        u32 bits = 0;
        for (std::size_t bit = 0; bit < std::min<std::size_t>(8, count - i); ++bit) {
            bits |= (numbers[i + bit] < limit ? 1u : 0u) << bit;
        }
        marks[i / 8] = static_cast<u8>(bits);
    }
}

void SpreadShifts(const u16* numbers, std::size_t count, i16 top, std::size_t channels,
                  i8* shifts) {
    std::size_t x = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::FixedTag<i16, 8> wide;
    const hn::FixedTag<i8, 16> narrow;
    alignas(16) i8 pixelOfByte[3][16];
    for (std::size_t i = 0; i < 48; ++i) {
        pixelOfByte[i / 16][i % 16] = static_cast<i8>(channels == 3 ? i / 3 : i);
    }
    for (; x + 16 <= count; x += 16) {
        const auto shiftsFrom = [&](std::size_t first) HWY_ATTR {
            const auto number = hn::LoadU(wide, reinterpret_cast<const i16*>(numbers + first));
            return hn::DemoteTo(hn::Half<decltype(narrow)>(), hn::Sub(hn::Set(wide, top), number));
        };
        const auto shift = hn::Combine(narrow, shiftsFrom(x + 8), shiftsFrom(x));
        for (std::size_t part = 0; part < channels; ++part) {
            const auto pixels = hn::Load(narrow, pixelOfByte[part]);
            hn::StoreU(hn::TableLookupBytes(shift, pixels), narrow,
                       shifts + x * channels + part * 16);
        }
    }
#endif
    for (; x < count; ++x) {
        std::fill_n(shifts + x * channels, channels, static_cast<i8>(top - numbers[x]));
    }
}

void AddToSamples(const u8* from, u8* to, const i8* shifts, std::size_t count, Stores stores) {
    // With the top bit turned, tones are signed, and sums stop at the ends of their range.
    const ByteVector top = hn::Set(ByteTag(), u8{128});
    const hn::RebindToSigned<ByteTag> tags;
    ForVectors(
        to, count, stores,
        [&](std::size_t, ByteVector tones, ByteVector shift) {
            const auto sum =
                hn::SaturatedAdd(hn::BitCast(tags, hn::Xor(tones, top)), hn::BitCast(tags, shift));
            return hn::Xor(hn::BitCast(ByteTag(), sum), top);
        },
        from, reinterpret_cast<const u8*>(shifts));
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(StateAfterDraws);
HWY_EXPORT(DrawNumbers);
HWY_EXPORT(TakeRemainders);
HWY_EXPORT(MarkBelow);
HWY_EXPORT(SpreadShifts);
HWY_EXPORT(AddToSamples);

u32 StateAfterDraws(u32 state, std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(StateAfterDraws)(state, count);
}
u32 DrawNumbers(u32 state, u16* numbers, std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(DrawNumbers)(state, numbers, count);
}
void TakeRemainders(u16* numbers, std::size_t count, u16 divisor) {
    HWY_DYNAMIC_DISPATCH(TakeRemainders)(numbers, count, divisor);
}
void MarkBelow(const u16* numbers, std::size_t count, u16 limit, u8* marks) {
    HWY_DYNAMIC_DISPATCH(MarkBelow)(numbers, count, limit, marks);
}
void SpreadShifts(const u16* numbers, std::size_t count, i16 top, std::size_t channels,
                  i8* shifts) {
    HWY_DYNAMIC_DISPATCH(SpreadShifts)(numbers, count, top, channels, shifts);
}
void AddToSamples(const u8* from, u8* to, const i8* shifts, std::size_t count, Stores stores) {
    HWY_DYNAMIC_DISPATCH(AddToSamples)(from, to, shifts, count, stores);
}

#endif
