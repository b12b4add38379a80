// Gives each pixel the mean of a run of pixels that starts at it and leads away from the place that
// the direction names, so that bright points smear towards that place.
//
// Along rows and columns a run beyond the edge counts the edge's pixel again; along diagonals it is
// shorter there, so that those pictures grow sharp towards two edges.
#include "engine/pixel.h"
#include "engine/relief/diagonal_sums.h"
#include "engine/relief/motion_runs.h"
#include "engine/relief/relief_kernels.h"

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

template <std::size_t bytes>
void BlurRow(const u8* from, u8* to, i32 width, i32 stepX, i32 runLength) {
    const Mean mean(runLength);
    const i32 last = width - 1;
    const auto offsetOf = [=](i32 index) {
        return static_cast<std::size_t>(stepX > 0 ? index : last - index) * bytes;
    };
    std::array<u32, bytes> sums{};
    const auto add = [&](const u8* pixel) {
        for (std::size_t channel = 0; channel < bytes; ++channel) {
            sums[channel] += pixel[channel];
        }
    };
    const auto storeAndLeave = [&](i32 index) {
        const std::size_t here = offsetOf(index);
        for (std::size_t channel = 0; channel < bytes; ++channel) {
            to[here + channel] = mean(sums[channel]);
            sums[channel] -= from[here + channel];
        }
    };
    for (i32 k = 0; k < runLength - 1; ++k) {
        add(from + offsetOf(k));
    }
    const i32 firstCutRun = width - runLength + 1;
    for (i32 k = 0; k < firstCutRun; ++k) {
        add(from + offsetOf(k + runLength - 1));
        storeAndLeave(k);
    }
    for (i32 k = firstCutRun; k < width; ++k) {
        add(from + offsetOf(last));
        storeAndLeave(k);
    }
}

// Columns are blurred in strips of this many bytes, so that the walk over the rows is one through
// memory.
constexpr i32 kStripBytes = 192;

void BlurStrip(const WalkedRows& rows, i32 height, std::size_t begin, std::size_t count,
               i32 runLength) {
    const Mean mean(runLength);
    std::array<u32, kStripBytes> sums{};
    const auto add = [&](const u8* row) {
        for (std::size_t i = 0; i < count; ++i) {
            sums[i] += row[begin + i];
        }
    };
    for (i32 k = 0; k < runLength - 1; ++k) {
        add(rows.From(k));
    }
    for (i32 k = 0; k < height; ++k) {
        add(rows.From(static_cast<i32>(std::min<i64>(i64{k} + runLength - 1, height - 1))));
        const u8* from = rows.From(k) + begin;
        u8* to = rows.To(k) + begin;
        for (std::size_t i = 0; i < count; ++i) {
            to[i] = mean(sums[i]);
            sums[i] -= from[i];
        }
    }
}

// Asks and reports for each column, as if they were blurred one by one.
WorkEnd BlurColumns(const KernelRun& run, i32 stepY, i32 runLength) {
    const WalkedRows rows(run, stepY);
    const i32 width = run.source.width;
    const std::size_t bytes = PixelBytes(run.source);
    const i32 stripColumns = kStripBytes / static_cast<i32>(bytes);
    for (i32 x = 0; x < width;) {
        const i32 begin = x;
        const i32 end = begin + std::min(stripColumns, width - begin);
        for (; x < end; ++x) {
            if (!run.BeginLine(x, width)) {
                return WorkEnd::Stopped;
            }
        }
        BlurStrip(rows, run.source.height, static_cast<std::size_t>(begin) * bytes,
                  static_cast<std::size_t>(end - begin) * bytes, runLength);
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

WorkEnd BlurRows(const KernelRun& run, i32 stepX, i32 runLength) {
    return WithPixelBytes(run.source, [&](auto bytes) {
        return run.ForEachRow([&](const u8* from, u8* to) {
            BlurRow<bytes>(from, to, run.source.width, stepX, runLength);
        });
    });
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
        if (step.x != 0 && step.y != 0) {
            return BlurDiagonals(run, step, runLength);
        }
        run.CopyHead();
        return step.y == 0 ? BlurRows(run, step.x, runLength) : BlurColumns(run, step.y, runLength);
    });
}
