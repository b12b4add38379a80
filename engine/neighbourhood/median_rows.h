// Two ways to the rows of a median, each the faster one for some sizes. Both give the same bytes.
//
// The rule. Along a row the median walks: m(x) is m(x - 1), moved no further than it must be to lie
// between low(x), the rank-th smallest of the window's samples with rank = (size * size + 1) / 2,
// and high(x), the tone just below the next larger sample. In front of a row m is 0.
#pragma once

#include "engine/tiles.h"

// The largest window that is sorted.
constexpr i32 kLargestSortedSize = 5;

// Rows that one call sorts: what their windows share is sorted once, and their walks, each a chain
// of dependent steps, run side by side.
constexpr i32 kSortedRows = 2;

// Writes the `rows` (at most kSortedRows) rows of the result from y on, `to` being the first, by
// sorting each window as far as needed. 2 <= size <= kLargestSortedSize.
void SortMedianRows(const DibView& source, i32 size, i32 y, i32 rows, u8* to);

constexpr i32 kLargestMedianSize = 32;

// What a column of a window's samples holds, counted up to each group of 16 tones and in each group
// up to each tone.
struct ToneColumn {
    u8 groups[16];
    u8 tones[16][16];
};

// Columns that a tile's windows reach into, at most.
constexpr std::size_t kMedianColumns = std::size_t{3} * (kTileColumns + kLargestMedianSize);

// Writes the tiles of the result, `result` being its first row, by counting the tones of each
// window. Tiles of the same rows come from left to right; `columns` has room for kMedianColumns.
void CountMedianTile(const DibView& source, i32 size, const Tile& tile, ToneColumn* columns,
                     u8* result);
