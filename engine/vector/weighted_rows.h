// Weighted sums of bytes in fixed point.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

// Up to 32 weights from 0 to 2^20, which add up to 2^20.
struct RowWeights {
    static constexpr i32 kFractionBits = 20;
    static constexpr std::size_t kMost = 32;

    std::array<i32, kMost> values;
    std::size_t count;
};

// Adds up the samples rows[0][i], rows[1][i] and so on, each with its weight, for every i below
// `count`, rounded to nearest and halves up.
void WeighRows(const u8* const* rows, const RowWeights& weights, u8* to, std::size_t count);
