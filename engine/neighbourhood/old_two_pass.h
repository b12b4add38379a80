// Filters that go along all rows of the source and then, over what the rows gave, along all
// columns. The rounding of the first pass is part of the result.
#pragma once

#include "engine/pixel.h"

#include <algorithm>

// A row of pixels, or a strip of neighbouring columns taken as a line of row pieces. A position
// holds `samples` bytes, which are filtered side by side. For strips `from` is `to`.
struct Line {
    const u8* from;
    u8* to;
    std::size_t step; // bytes from position to position
    std::size_t samples;
    i32 count; // positions
};

// Columns are filtered in strips of so many bytes, so that the picture is walked in the order of
// memory.
constexpr std::size_t kMostSamples = 192;

inline i32 StripColumns(const DibView& source) {
    return std::min(static_cast<i32>(kMostSamples / PixelBytes(source)), source.width);
}

// Calls `filterRow(line)` for each row and `filterStrip(line, sourcePixels)` for each strip, with
// the source's pixels at the strip's first position. Callers see one question per row and column,
// reports from 0 to 50 percent for the rows and from 50 to 100 for the columns.
template <class RowFilter, class StripFilter>
WorkEnd FilterRowsThenColumns(const KernelRun& run, const RowFilter& filterRow,
                              const StripFilter& filterStrip) {
    run.CopyHead();
    const DibView& source = run.source;
    const std::size_t pixel = PixelBytes(source);
    for (i32 y = 0; y < source.height; ++y) {
        if (!run.BeginLine(y, source.height, 0, 50)) {
            return WorkEnd::Stopped;
        }
        filterRow(Line{source.Row(y), run.ResultRow(y), pixel, pixel, source.width});
    }
    i32 columns = 0;
    for (i32 x = 0; x < source.width; x += columns) {
        columns = std::min(StripColumns(source), source.width - x);
        for (i32 column = 0; column < columns; ++column) {
            if (!run.BeginLine(x + column, source.width, 50, 50)) {
                return WorkEnd::Stopped;
            }
        }
        const std::size_t offset = static_cast<std::size_t>(x) * pixel;
        u8* first = run.ResultRow(0) + offset;
        filterStrip(Line{first, first, source.stride, static_cast<std::size_t>(columns) * pixel,
                         source.height},
                    source.Row(0) + offset);
    }
    return WorkEnd::Done;
}

// The same filter along rows and columns.
template <class Filter>
WorkEnd FilterRowsThenColumns(const KernelRun& run, const Filter& filter) {
    return FilterRowsThenColumns(run, filter, [&](const Line& strip, const u8*) { filter(strip); });
}
