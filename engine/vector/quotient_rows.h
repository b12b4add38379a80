// Weighted sums of bytes, divided.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

// What a sum of bytes with weights of either sign becomes: the quotient (sum of weight * sample +
// offset) / divisor, rounded down and kept within a byte.
struct QuotientWeights {
    static constexpr std::size_t kMost = 25;
    static constexpr i32 kLargestWeight = 4096; // of either sign
    static constexpr i32 kLargestOffset = 1 << 29;
    static constexpr i32 kLargestDivisor = 4096;

    std::array<i32, kMost> values{};
    std::size_t count = 0;
    i32 offset = 0;
    i32 divisor = 1;
};

// Makes such quotients of rows[0][i], rows[1][i] and so on for every i below `count`. `exact` is 1
// where a quotient above 0 left no remainder, else 0. Gives whether it is 1 anywhere.
bool DivideRows(const u8* const* rows, const QuotientWeights& weights, u8* to, u8* exact,
                std::size_t count);
