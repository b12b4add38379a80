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

WorkEnd CountLevels(const KernelRun& run, i32 size, u8* room) {
    return ForEachTile(
        run, RowRhythm::EveryRow,
        [&](const Tile& tile) { LevelMedianTile(run.source, size, tile, room, run.ResultRow(0)); },
        LevelTileRows());
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
        const BlockTable<u8> room(kMedianRoom);
        if (!room) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return CountLevels(run, size, room.Entries());
    });
}
