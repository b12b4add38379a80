// Filters that go along all rows of the source and then, over what the rows gave, along all
// columns. The rounding of the first pass is part of the result.
//
// Both passes go up the picture together, the columns behind the rows, so that only as many rows as
// a window holds are kept between them, and both passes work on whole rows.
#pragma once

#include "engine/pixel.h"
#include "engine/row_table.h"
#include "engine/spread_lines.h"

// The rows that the first pass gave, as far as the windows of the second one need them. The window
// of `size` rows at y begins at y - size / 2; beyond the edges the edge rows repeat.
class RowRing {
public:
    RowRing(const DibView& source, i64 size)
        : size_(size), height_(source.height), kept_(std::min(size + 1, height_)),
          rows_(static_cast<u64>(kept_), source.rowBytes) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }

    i64 Size() const { return size_; }
    // The window at y begins with this row and ends with that one.
    i64 FirstOf(i64 y) const { return y - size_ / 2; }
    i64 LastOf(i64 y) const { return FirstOf(y) + size_ - 1; }

    // A row of the window at y, or the one below it.
    const u8* Row(i64 y) const { return Slot(std::clamp<i64>(y, 0, height_ - 1)); }
    u8* Slot(i64 y) const { return rows_.Row(static_cast<std::size_t>(y % kept_)); }

    // Calls `use(row, times)` for each row of the window at y, with how often it stands there.
    template <class Use>
    void ForWindow(i64 y, const Use& use) const {
        const i64 begin = FirstOf(y);
        const i64 end = begin + size_;
        const i64 lowest = std::clamp<i64>(begin, 0, height_ - 1);
        const i64 highest = std::clamp<i64>(end - 1, 0, height_ - 1);
        for (i64 row = lowest; row <= highest; ++row) {
            const i64 from = row == lowest ? begin : row;
            const i64 to = row == highest ? end : row + 1;
            use(Slot(row), to - from);
        }
    }

private:
    const i64 size_;
    const i64 height_;
    const i64 kept_;
    const RowTable<u8> rows_;
};

// Calls `filterRow(from, to)` for each row of the source, with its slot in `rows`, and
// `filterColumns(y, to)` for each row of the result as soon as its window is there. Callers see one
// question per row and column, reports from 0 to 50 percent for the rows and from 50 to 100 for the
// columns.
template <class Rows, class RowFilter, class ColumnFilter>
WorkEnd FilterRowsThenColumns(const KernelRun& run, const Rows& rows, const RowFilter& filterRow,
                              const ColumnFilter& filterColumns) {
    run.CopyHead();
    const i32 height = run.source.height;
    const i32 width = run.source.width;
    SpreadLines lines(run, {0, height, height, 0, 50}, {0, width, width, 50, 50});
    i32 filtered = 0;
    for (i32 y = 0; y < height; ++y) {
        for (; filtered < height && filtered <= rows.LastOf(y); ++filtered) {
            if (!lines.Begin(i64{y} + filtered, i64{2} * height)) {
                return WorkEnd::Stopped;
            }
            filterRow(run.source.Row(filtered), rows.Slot(filtered));
        }
        if (!lines.Begin(i64{y} + filtered, i64{2} * height)) {
            return WorkEnd::Stopped;
        }
        filterColumns(y, run.ResultRow(y));
    }
    return WorkEnd::Done;
}
