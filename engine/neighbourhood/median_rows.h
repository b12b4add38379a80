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

// Tiles of large windows are cut into strips, as many as a vector has bytes.
constexpr i32 kStripColumns = kTileColumns / 4;
constexpr i32 kStripRows = 32;
constexpr std::size_t kMostStrips = 64;
constexpr i32 kWindowColumns = kStripColumns + kLargestMedianSize - 1;

// Bytes that LevelMedianTile works in.
constexpr std::size_t kMedianRoom = kMostStrips * 11'500;

// The rows of its tiles.
i32 LevelTileRows();

// Writes a tile of the result, `result` being its first row, by counting in each window the samples
// above each level of tone. Tiles of the same rows come from left to right; `room` has kMedianRoom
// bytes.
void LevelMedianTile(const DibView& source, i32 size, const Tile& tile, u8* room, u8* result);
