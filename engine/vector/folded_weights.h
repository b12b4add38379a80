// Weights of a window that is nearly the same on both sides of its middle, so that samples that
// weigh the same are added before they are multiplied.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

// Up to 32 weights from 0 to 2^20, which add up to 2^20; the others are 0.
struct RowWeights {
    static constexpr i32 kFractionBits = 20;
    static constexpr i32 kHalf = 1 << (kFractionBits - 1);
    static constexpr std::size_t kMost = 32;

    std::array<i32, kMost> values;
    std::size_t count;
};

// Two terms, each a weight that one tap or the sum of two has.
struct TermPair {
    std::array<u8, 4> taps;   // those of the first term, then those of the second
    std::array<u8, 4> counts; // 1, or 0 where a term has one tap only
    i32 low, high;            // the terms' digits, the second one's in the upper 16 bits
};

struct FoldedWeights {
    // A weight has two digits: so many bits, with a sign, can be multiplied.
    static constexpr i32 kDigitBits = 15;

    explicit FoldedWeights(const RowWeights& weights);

    RowWeights unfolded;
    std::array<TermPair, RowWeights::kMost / 2> pairs;
    std::size_t count;     // of pairs
    std::size_t twoDigits; // how many of them, the first ones, have high digits that are not 0
};
