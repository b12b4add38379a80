// Where the pixels of a row come from when the rings around a picture's centre are turned and
// scaled, each by a factor pair of its own.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

// As many entries as one vector may have. Tables end with so many more than are used, so that the
// last vector of a row may reach beyond its end.
constexpr std::size_t kSpareEntries = 16;

constexpr std::size_t kRings = 512;

// The factors of each ring, in units of 1/16384.
struct RingFactors {
    std::array<i32, kRings + kSpareEntries> cos;
    std::array<i32, kRings + kSpareEntries> sin;
    bool scalesOnly; // all of `sin` is 0
};

// A picture whose positions, in units of 1/32768 of a pixel, and whose offsets fit 32 bits.
struct TurnedPicture {
    i32 width;
    i32 height;
    i32 stride;
    i32 pixelBytes;
    // The ring of a pixel is the sum of a term of its column and one of its row. Terms fall up to
    // the middle column and then rise again; the spare ones are as the last.
    const i32* columnTerms;
    bool neighbouringRings; // columns side by side differ by one ring at most
};

// Writes the offsets, from the picture's first row, of the pixels that belong in the columns
// `begin` to `end` - 1 of row `y`; all of these are in rings below kRings. What lies outside is
// brought to the nearest pixel of the picture. `offsets` has kSpareEntries more entries, which may
// be spoilt.
void FindTurnedOffsets(const TurnedPicture& picture, const RingFactors& factors, i32 y, i32 rowTerm,
                       i32 begin, i32 end, u32* offsets);
