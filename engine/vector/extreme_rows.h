// Rows of the largest or smallest samples of squares.
#pragma once

#include "engine/vector/stores.h"
#include "platform/types.h"

#include <cstddef>
#include <span>

enum class Extreme { Smallest, Largest };

// Squares of `size` samples, 2 to 32, that stand `step` bytes apart, 1 or 3. In a row of `rowBytes`
// the window of byte i begins size / 2 samples before it; near an end it is cut off there.
struct ExtremeSquares {
    Extreme which;
    std::size_t size;
    std::size_t step;
    std::size_t rowBytes;
    Stores stores;

    // So many rows of the result share most of the rows of their windows and are made together.
    std::size_t RowsAtOnce() const { return size < 4 ? 2 : size < 8 ? 4 : size < 16 ? 8 : 16; }
    // The rows from the first one of the first window to the last one of the last.
    std::size_t RowsBehind() const { return size + RowsAtOnce() - 1; }
};

constexpr std::size_t kMostExtremeRowsAtOnce = 16;
constexpr std::size_t kMostExtremeRowsBehind = 32 + kMostExtremeRowsAtOnce - 1;

// Writes the extremes of up to RowsAtOnce() rows from RowsBehind() rows of the source.
void ExtremesOfSquares(const ExtremeSquares& squares, const u8* const* from,
                       std::span<u8* const> to);
