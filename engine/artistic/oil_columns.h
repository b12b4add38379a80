// What Oil Painting counts: the samples of each band of tones in the columns of a row's squares.
//
// Rows come widened, with repeated edge pixels on both sides, so that a square is a plain sum of
// 2 * radius + 1 columns, and are cut into blocks. Each block knows the bands that it holds; all
// others cost nothing.
#pragma once

#include "platform/types.h"

#include <cstddef>

constexpr std::size_t kOilBands = 32;
constexpr i32 kOilBandShift = 3; // 8 tones a band, which stands for its lowest one
constexpr std::size_t kOilBlock = 64;
constexpr std::size_t kOilRun = 1024; // samples of the result that are worked on together, at most
constexpr std::size_t kOilBeyond = kOilRun + kOilBlock; // read beyond the last square, at most
constexpr u8 kNoBand = 255;                             // of samples that only fill a block

// A set of bands: bit i is band i.
using BandSet = u32;

// A widened row: a band for each sample, a set for each block.
struct BandRow {
    u8* bands;
    BandSet* sets;
};

struct OilColumns {
    u8* counts;             // kOilBands rows of `samples`; a column holds at most 201 samples
    const BandSet* present; // the bands that a block may have, in the row that is written
    std::size_t samples;
    std::size_t channels;
    std::size_t radius;
};

// Finds the bands of `count` tones, and the sets of a whole row whose bands are there.
void FindBands(const u8* tones, u8* bands, std::size_t count);
void FindBandSets(const BandRow& row, std::size_t samples);

// Takes a row into the columns and another out of them.
void MoveOilColumns(const OilColumns& columns, const BandRow& entering, const BandRow& leaving);

// The same, and writes the `count` samples of a row: the lowest tone of each square's most frequent
// band, of bands with equal counts the darkest one. `columns.samples` must reach beyond the last
// square by kOilBeyond.
void MoveAndWriteOil(const OilColumns& columns, const BandRow& entering, const BandRow& leaving,
                     u8* to, std::size_t count);
