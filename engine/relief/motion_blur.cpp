// Gives each pixel the mean of a run of pixels that starts at it and leads away from the place that
// the direction names, so that bright points smear towards that place.
//
// Along rows and columns a run beyond the edge counts the edge's pixel again; along diagonals it is
// shorter there, so that those pictures grow sharp towards two edges.
#include "engine/neighbourhood/extended_row.h"
#include "engine/pixel.h"
#include "engine/relief/diagonal_sums.h"
#include "engine/relief/motion_runs.h"
#include "engine/relief/relief_kernels.h"
#include "engine/spread_lines.h"
#include "engine/vector/box_rows.h"

namespace {

constexpr std::array<Step, 8> kSteps{{
    {1, -1},  // top left
    {0, -1},  // top
    {-1, -1}, // top right
    {1, 0},   // left
    {-1, 0},  // right
    {1, 1},   // bottom left
    {0, 1},   // bottom
    {-1, 1},  // bottom right
}};

constexpr std::size_t kMostPixelBytes = 3;

// A row whose runs lead towards its end. The last ones are taken from a copy of that end with the
// last pixel repeated behind it.
void BlurRowForward(const u8* from, u8* to, std::size_t rowBytes, std::size_t pixel,
                    i32 runLength) {
    const auto mean = RoundedDivision::Down(runLength);
    const std::size_t cutBytes = static_cast<std::size_t>(runLength - 1) * pixel;
    const std::size_t wholeBytes = rowBytes - cutBytes;
    MeansAlongRow(from, runLength, pixel, mean, to, wholeBytes);
    std::array<u8, 2 * kLongestRun * kMostPixelBytes> end;
    ExtendRow(from + wholeBytes, cutBytes, pixel, 0, static_cast<std::size_t>(runLength - 1),
              end.data());
    MeansAlongRow(end.data(), runLength, pixel, mean, to + wholeBytes, cutBytes);
}

// The same for runs that lead towards its beginning.
void BlurRowBackward(const u8* from, u8* to, std::size_t rowBytes, std::size_t pixel,
                     i32 runLength) {
    const auto mean = RoundedDivision::Down(runLength);
    const std::size_t cutBytes = static_cast<std::size_t>(runLength - 1) * pixel;
    std::array<u8, 2 * kLongestRun * kMostPixelBytes> begin;
    ExtendRow(from, cutBytes, pixel, static_cast<std::size_t>(runLength - 1), 0, begin.data());
    MeansAlongRow(begin.data(), runLength, pixel, mean, to, cutBytes);
    MeansAlongRow(from, runLength, pixel, mean, to + cutBytes, rowBytes - cutBytes);
}

// Runs of one pixel.
void CopyRow(const u8* from, u8* to, std::size_t rowBytes, std::size_t, i32) {
    std::memcpy(to, from, rowBytes);
}

WorkEnd BlurRows(const KernelRun& run, i32 stepX, i32 runLength) {
    run.CopyHead();
    const auto blur = runLength == 1 ? CopyRow : stepX > 0 ? BlurRowForward : BlurRowBackward;
    return run.ForEachRow([&](const u8* from, u8* to) {
        blur(from, to, run.source.rowBytes, PixelBytes(run.source), runLength);
    });
}

// Walks over whole rows, but asks and reports for each column, as if they were blurred one by one.
WorkEnd BlurColumns(const KernelRun& run, i32 stepY, i32 runLength) {
    const std::size_t count = run.source.rowBytes;
    const BlockTable<u16> sums(count);
    if (!sums) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    const i32 width = run.source.width;
    const i32 height = run.source.height;
    const WalkedRows rows(run, stepY);
    const auto mean = RoundedDivision::Down(runLength);
    SpreadLines lines(run, {0, width, width, 0, 100}, {});
    // As if the run had slid here from before the first row, with that row once more.
    for (i32 k = -1; k < runLength - 1; ++k) {
        AddToSums(rows.From(std::max(k, 0)), sums.Entries(), count);
    }
    for (i32 k = 0; k < height; ++k) {
        if (!lines.Begin(k, height)) {
            return WorkEnd::Stopped;
        }
        if (runLength == 1) {
            std::memcpy(rows.To(k), rows.From(k), count);
            continue;
        }
        const i32 entering = static_cast<i32>(std::min<i64>(i64{k} + runLength, height) - 1);
        SlideToMeans({sums.Entries(), rows.From(entering), rows.From(std::max(k - 1, 0)), count},
                     mean, rows.To(k));
    }
    return WorkEnd::Done;
}

WorkEnd BlurDiagonals(const KernelRun& run, Step step, i32 runLength) {
    DiagonalSums sums(run, step, runLength);
    if (!sums) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    const i32 height = run.source.height;
    for (i32 index = 0; index < height; ++index) {
        // The last rows, where runs are cut short, ask but report nothing.
        const bool reports = index < height - runLength;
        if (!(reports ? run.BeginLine(index, height) : run.GoOn())) {
            return WorkEnd::Stopped;
        }
        sums.WriteRow(index);
    }
    return WorkEnd::Done;
}

WorkEnd Blur(const KernelRun& run, Step step, i32 runLength) {
    if (step.x != 0 && step.y != 0) {
        return BlurDiagonals(run, step, runLength);
    }
    return step.y == 0 ? BlurRows(run, step.x, runLength) : BlurColumns(run, step.y, runLength);
}

} // namespace

DibHandle MotionBlur(DibHandle source, const MotionBlurParams& params) {
    if (params.direction < 1 || params.direction > 8 || params.speed < 2 ||
        params.speed > kLongestRun) {
        return 0;
    }
    const Step step = kSteps[static_cast<std::size_t>(params.direction - 1)];
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const i32 runLength = std::min({params.speed, run.source.width, run.source.height});
        return Blur(run, step, runLength);
    });
}
