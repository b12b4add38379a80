// The box that all averaging kernels share: the mean of a square, along the rows and then along the
// columns. Beyond the edges the edge pixels repeat.
#pragma once

#include "engine/neighbourhood/extended_row.h"
#include "engine/neighbourhood/two_pass.h"
#include "engine/vector/box_rows.h"
#include "engine/vector/mean_columns.h"

// Averages squares of `size`, 2 to 128, along the rows. Along the columns it calls
// `finish(step, y, to)` for each row y of the result, which slides the windows on.
template <class Finish>
WorkEnd BlurBox(const KernelRun& run, i32 size, const Finish& finish) {
    const std::size_t count = run.source.rowBytes;
    const std::size_t pixel = PixelBytes(run.source);
    const RoundedDivision mean(size);
    const ExtendedRow extended(run.source, size);
    const RowRing rows(run.source, size);
    const ColumnSums sums(count);
    if (!extended || !rows || !sums) {
        return WorkEnd::NoMemory;
    }
    return FilterRowsThenColumns(
        run, rows,
        [&](const u8* from, u8* to) {
            MeansAlongRow(extended.Extend(from), size, pixel, mean, to, count);
        },
        [&](i32 y, u8* to) {
            if (y == 0) {
                rows.ForWindow(-1, [&](const u8* row, i64 times) {
                    AddToColumns(row, static_cast<i32>(times), sums, count);
                });
            }
            finish(ColumnStep{sums, rows.Row(rows.LastOf(y)), rows.Row(rows.FirstOf(y) - 1), count},
                   y, to);
        });
}
