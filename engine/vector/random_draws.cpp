#include "engine/vector/random_draws.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/random_draws.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
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
        for (u32& stream : states) {
            stream = state = state * kDraw.factor + kDraw.term;
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
    for (std::size_t i = 0; i < count; ++i) {
        const u16 high = static_cast<u16>(u32{numbers[i]} * inverse >> 16);
        numbers[i] = static_cast<u16>(numbers[i] - (high >> (bits - 1)) * divisor);
    }
}

void AddToPixels(const u8* from, u8* to, const i8* shifts, std::size_t pixels,
                 std::size_t channels) {
    std::size_t x = 0;
#if HWY_TARGET != HWY_SCALAR
    // With the top bit turned, tones are signed, and sums stop at the ends of their range.
    namespace hn = hwy::HWY_NAMESPACE;
    const hn::FixedTag<u8, 16> tones;
    const hn::FixedTag<i8, 16> tags;
    const auto top = hn::Set(tones, u8{128});
    alignas(16) u8 pixelOfByte[3][16];
    for (std::size_t i = 0; i < 48; ++i) {
        pixelOfByte[i / 16][i % 16] = static_cast<u8>(i / channels);
    }
    for (; x + 16 <= pixels; x += 16) {
        const auto shift = hn::BitCast(tones, hn::LoadU(tags, shifts + x));
        for (std::size_t part = 0; part < channels; ++part) {
            const std::size_t at = x * channels + part * 16;
            const auto each = hn::TableLookupBytes(shift, hn::Load(tones, pixelOfByte[part]));
            const auto tone = hn::Xor(hn::LoadU(tones, from + at), top);
            const auto sum = hn::SaturatedAdd(hn::BitCast(tags, tone), hn::BitCast(tags, each));
            hn::StoreU(hn::Xor(hn::BitCast(tones, sum), top), tones, to + at);
        }
    }
#endif
    for (; x < pixels; ++x) {
        for (std::size_t i = x * channels; i < (x + 1) * channels; ++i) {
            to[i] = static_cast<u8>(std::clamp(from[i] + shifts[x], 0, 255));
        }
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(StateAfterDraws);
HWY_EXPORT(DrawNumbers);
HWY_EXPORT(TakeRemainders);
HWY_EXPORT(AddToPixels);

u32 StateAfterDraws(u32 state, std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(StateAfterDraws)(state, count);
}
u32 DrawNumbers(u32 state, u16* numbers, std::size_t count) {
    return HWY_DYNAMIC_DISPATCH(DrawNumbers)(state, numbers, count);
}
void TakeRemainders(u16* numbers, std::size_t count, u16 divisor) {
    HWY_DYNAMIC_DISPATCH(TakeRemainders)(numbers, count, divisor);
}
void AddToPixels(const u8* from, u8* to, const i8* shifts, std::size_t pixels,
                 std::size_t channels) {
    HWY_DYNAMIC_DISPATCH(AddToPixels)(from, to, shifts, pixels, channels);
}

#endif
