// Rows of the grid whose lines wander.
#pragma once

#include "engine/vector/row_pattern.h"
#include "engine/vector/stores.h"

// The cells along a row, for the places that are no bevel of the other direction.
struct WanderingCells {
    RowPattern up;    // what a place in its cell adds
    RowPattern down;  // what it takes away
    RowPattern inner; // 255 where it does neither and is no groove
    u8 bevel;         // what the other direction adds or takes away
    u8 cellMask;      // of the place in a cell
};

// `start` is where in the patterns the row begins. `drifts` gives for each byte how far its column
// has wandered; `y` is added to it.
void AddWanderingCells(const u8* from, const u8* drifts, u8* to, std::size_t count,
                       const WanderingCells& cells, std::size_t start, u8 y, Stores stores);
