// The largest or smallest sample of a square. Near an edge the window is cut off there; repeating
// the edge row gives the same, because the cut window holds it already.
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/pixel.h"
#include "engine/spread_lines.h"
#include "engine/vector/extreme_rows.h"

namespace {

constexpr i32 kLargestSize = 32;

// Writes `count` rows of the result from row `y` on.
void WriteRows(const KernelRun& run, const ExtremeSquares& squares, i32 y, std::size_t count) {
    std::array<const u8*, kMostExtremeRowsBehind> from;
    std::array<u8*, kMostExtremeRowsAtOnce> to;
    const i64 lowest = y - static_cast<i64>(squares.size / 2);
    for (std::size_t i = 0; i < squares.RowsBehind(); ++i) {
        const i64 row = std::clamp<i64>(lowest + static_cast<i64>(i), 0, run.source.height - 1);
        from[i] = run.source.Row(static_cast<i32>(row));
    }
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = run.ResultRow(y + static_cast<i32>(i));
    }
    ExtremesOfSquares(squares, from.data(), std::span(to.data(), count));
}

} // namespace

DibHandle RankFilter(DibHandle source, const RankFilterParams& params) {
    if (params.size < 2 || params.size > kLargestSize) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const i32 height = run.source.height;
        const i32 width = run.source.width;
        const ExtremeSquares squares{params.takeMaximum != 0 ? Extreme::Largest : Extreme::Smallest,
                                     static_cast<std::size_t>(params.size), PixelBytes(run.source),
                                     run.source.rowBytes, StoresFor(run.source)};
        run.CopyHead();
        // Callers see one pass along the rows and one along the columns.
        SpreadLines lines(run, {0, height, height, 0, 50}, {0, width, width, 50, 50});
        const i32 atOnce = static_cast<i32>(squares.RowsAtOnce());
        const i32 pieces = (height + atOnce - 1) / atOnce;
        for (i32 piece = 0; piece < pieces; ++piece) {
            if (!lines.Begin(piece, pieces)) {
                return WorkEnd::Stopped;
            }
            const i32 y = piece * atOnce;
            WriteRows(run, squares, y, static_cast<std::size_t>(std::min(atOnce, height - y)));
        }
        FinishStores();
        return WorkEnd::Done;
    });
}
