// Weighted sums of bytes in fixed point.
#pragma once

#include "engine/vector/folded_weights.h"
#include "engine/vector/stores.h"

// Adds up the samples rows[0][i], rows[1][i] and so on, each with its weight, for every i below
// `count`, rounded to nearest and halves up.
void WeighRows(const u8* const* rows, const FoldedWeights& weights, u8* to, std::size_t count,
               Stores stores);
