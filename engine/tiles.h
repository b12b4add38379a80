// Kernels that fetch pixels from elsewhere in the source walk over the result in tiles: what the
// pixels of a row have read is then still in the cache when those of the next rows need it.
#pragma once

#include "engine/frame.h"

#include <algorithm>

constexpr i32 kTileColumns = 256;
constexpr i32 kTileRows = 64;
constexpr std::ptrdiff_t kCacheLine = 64;

// Columns `left` to `right` - 1 of the rows `bottom` to `top` - 1.
struct Tile {
    i32 left;
    i32 right;
    i32 bottom;
    i32 top;
};

// Calls `work(tile)` for all tiles of `tileRows` rows, band by band from the bottom up. The
// questions and reports of a band's rows are spread over its tiles.
template <class Work>
WorkEnd ForEachTile(const KernelRun& run, RowRhythm rhythm, const Work& work,
                    i32 tileRows = kTileRows) {
    const i32 width = run.source.width;
    const i32 height = run.source.height;
    for (i32 bottom = 0; bottom < height;) {
        const i32 rows = std::min(height - bottom, tileRows);
        i32 asked = 0;
        for (i32 left = 0; left < width;) {
            const i32 right = left + std::min(width - left, kTileColumns);
            for (; i64{asked} * width < i64{right} * rows; ++asked) {
                if (!run.BeginRow(bottom + asked, rhythm)) {
                    return WorkEnd::Stopped;
                }
            }
            work(Tile{left, right, bottom, bottom + rows});
            left = right;
        }
        bottom += rows;
    }
    return WorkEnd::Done;
}

// Brings the bytes from `begin` to `end` near, to be read soon.
inline void PrefetchToRead(const u8* begin, const u8* end) {
    for (const u8* line = begin; line < end; line += std::min(kCacheLine, end - line)) {
        __builtin_prefetch(line);
    }
}

// The same, to be written soon.
inline void PrefetchToWrite(const u8* begin, const u8* end) {
    for (const u8* line = begin; line < end; line += std::min(kCacheLine, end - line)) {
        __builtin_prefetch(line, 1);
    }
}
