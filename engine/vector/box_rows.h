// Rows of means, for filters that average the samples of a window.
#pragma once

#include "platform/types.h"

#include <cstddef>

// Divides sums of `divisor` bytes, 2 to 128, rounding to nearest and halves up.
//
// With 2^k < d <= 2^(k + 1) the quotient n / d of n = sum + d / 2 is n * factor / 2^(16 + k),
// truncated, where `factor` is 2^(16 + k) / d rounded up. This is exact as long as n times what the
// rounding added, less than d, stays below 2^(16 + k); and n is at most 255.5 d. The scale of
// 2^(7 - k) makes the shift that follows the multiplication the same for all divisors.
struct RoundedDivision {
    static constexpr i32 kLargest = 128;

    u16 half;
    u16 scale;
    u16 factor;

    explicit RoundedDivision(i32 divisor);

    // Rounds down; the divisor may be 129, too.
    static RoundedDivision Down(i32 divisor) {
        RoundedDivision division(divisor);
        division.half = 0;
        return division;
    }

    u8 operator()(i32 sum) const {
        const auto scaled = static_cast<u16>(static_cast<u16>(sum + half) * scale);
        const auto quotient = static_cast<u16>(u32{scaled} * u32{factor} >> 16);
        return static_cast<u8>(quotient >> 7);
    }
};

// The means of windows of `size` samples, 2 to 128, that stand `step` bytes apart, 1 or 3. The
// first of `count` windows begins at samples[0], the last one ends at
// samples[count - 1 + (size - 1) * step].
void MeansAlongRow(const u8* samples, i32 size, std::size_t step, const RoundedDivision& division,
                   u8* means, std::size_t count);

// The sums of such windows of 2 to 129 neighbouring samples.
void SumsAlongRow(const u8* samples, i32 size, u16* sums, std::size_t count);

// The windows of neighbouring columns while they slide over the rows: `count` sums of up to 128
// samples, and the rows that enter and leave.
struct ColumnWindows {
    u16* sums;
    const u8* entering;
    const u8* leaving;
    std::size_t count;
};

// Adds a row to the sums of its columns, which hold up to 257 rows.
void AddToSums(const u8* row, u16* sums, std::size_t count);

// Slides the windows on and writes their means.
void SlideToMeans(const ColumnWindows& windows, const RoundedDivision& division, u8* means);
