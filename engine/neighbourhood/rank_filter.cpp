// The largest or smallest sample of a square, along the rows and then along the columns. Near an
// edge the window is cut off there; repeating the edge sample, as the extended row does, gives the
// same, because the cut window holds it already.
//
// Along the columns the rows stand in blocks as high as the window, so that a window is the upper
// part of one block and the lower part of the next. The extremes of all upper parts are made when a
// block is full, those of the lower parts grow row by row: the size of the window costs nothing.
#include "engine/neighbourhood/extended_row.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/neighbourhood/two_pass.h"
#include "engine/vector/extreme_rows.h"

#include <cstring>

namespace {

constexpr i32 kLargestSize = 32;

class ColumnExtremes {
public:
    ColumnExtremes(const DibView& source, i32 size, Extreme which)
        : size_(size), height_(source.height), bytes_(source.rowBytes), which_(which),
          rows_(static_cast<u64>(size) + 1, bytes_) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }

    i64 LastOf(i64 y) const { return y - Below() + size_ - 1; }
    u8* Slot(i64 row) const { return Entry((row + Below()) % size_); }

    // To be called for each row of the result in turn, with the last row of its window in its slot.
    void WriteRow(i64 y, u8* to) const {
        for (i64 row = y == 0 ? -Below() : LastOf(y); row <= LastOf(y); ++row) {
            FillOutside(row);
        }
        const i64 begin = y % size_; // of the window in its block
        if (begin == 0) {
            for (i64 entry = size_ - 1; entry > 0; --entry) {
                KeepExtremes(which_, Entry(entry), Entry(entry - 1), bytes_);
            }
            std::memcpy(to, Entry(0), bytes_);
            return;
        }
        u8* lowerPart = Entry(size_);
        const u8* newest = Entry(begin - 1);
        if (begin == 1) {
            std::memcpy(lowerPart, newest, bytes_);
        }
        KeepAndJoinExtremes(which_, newest, lowerPart, Entry(begin), to, bytes_);
    }

private:
    i64 Below() const { return size_ / 2; }
    u8* Entry(i64 index) const { return rows_.Row(static_cast<std::size_t>(index)); }
    // What stands outside the picture must not win.
    void FillOutside(i64 row) const {
        if (row < 0 || row >= height_) {
            std::memset(Slot(row), which_ == Extreme::Largest ? 0 : 255, bytes_);
        }
    }

    const i64 size_;
    const i64 height_;
    const std::size_t bytes_;
    const Extreme which_;
    // The rows of a window, of which those in a full block have become the extremes of the upper
    // parts that begin with them; behind them the extremes of the lower part.
    const RowTable<u8> rows_;
};

} // namespace

DibHandle RankFilter(DibHandle source, const RankFilterParams& params) {
    if (params.size < 2 || params.size > kLargestSize) {
        return 0;
    }
    const Extreme which = params.takeMaximum != 0 ? Extreme::Largest : Extreme::Smallest;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const ExtendedRow extended(run.source, params.size);
        const ColumnExtremes columns(run.source, params.size, which);
        if (!extended || !columns) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(
            run, columns,
            [&](const u8* from, u8* to) {
                ExtremesAlongRow(which, extended.Extend(from), params.size, PixelBytes(run.source),
                                 to, run.source.rowBytes);
            },
            [&](i32 y, u8* to) { columns.WriteRow(y, to); });
    });
}
