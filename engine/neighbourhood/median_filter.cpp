// The median of a square. Beyond the edges the edge pixels repeat, so that every window holds
// size * size samples. After the first pixel of a row the tone written may lie above the true
// median, below the next larger sample; this is meant (median_rows.h has the rule).
#include "engine/frame.h"
#include "engine/neighbourhood/median_rows.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <algorithm>

namespace {

WorkEnd SortWindows(const KernelRun& run, i32 size) {
    return run.ForEachRow([&](const u8*, u8* to, i32 y) {
        if (y % kSortedRows == 0) {
            const i32 rows = std::min(kSortedRows, run.source.height - y);
            SortMedianRows(run.source, size, y, rows, to);
        }
    });
}

WorkEnd CountWindows(const KernelRun& run, i32 size, ToneColumn* columns) {
    constexpr i32 kRows = 256; // of a tile, each of which counts the rows below it anew
    return ForEachTile(
        run, RowRhythm::EveryRow,
        [&](const Tile& tile) {
            CountMedianTile(run.source, size, tile, columns, run.ResultRow(0));
        },
        kRows);
}

} // namespace

DibHandle MedianFilter(DibHandle source, const SquareSizeParams& params) {
    const i32 size = params.size;
    if (size < 2 || size > kLargestMedianSize) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        if (size <= kLargestSortedSize) {
            run.CopyHead();
            return SortWindows(run, size);
        }
        const BlockTable<ToneColumn> columns(kMedianColumns);
        if (!columns) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return CountWindows(run, size, columns.Entries());
    });
}
