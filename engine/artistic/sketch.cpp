// Draws the edges of the picture: light lines on black (Crayon) or dark ones on white (Pencil).
// The outermost pixels are paper.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

#include <cstdlib>

namespace {

constexpr i32 kCrayon = 1;
constexpr i32 kPencil = 2;

// A row of the source with its neighbours. Samples are named by their byte; `step` leads to the
// same channel of the next pixel.
struct ThreeRows {
    const u8* below;
    const u8* here;
    const u8* above;

    ThreeRows(const DibView& source, i32 y)
        : below(source.Row(y - 1)), here(source.Row(y)), above(source.Row(y + 1)) {}

    i32 SlopeUp(std::size_t i, std::size_t step) const {
        return std::abs((above[i - step] + 2 * above[i] + above[i + step]) -
                        (below[i - step] + 2 * below[i] + below[i + step]));
    }
    i32 SlopeAlong(std::size_t i, std::size_t step) const {
        return std::abs((below[i + step] + 2 * here[i + step] + above[i + step]) -
                        (below[i - step] + 2 * here[i - step] + above[i - step]));
    }
};

// The edges that run along the rows, kept in the result until the second half adds the others.
template <std::size_t bytes>
void DrawSlopesUp(const KernelRun& run, i32 y) {
    const ThreeRows rows(run.source, y);
    u8* to = run.ResultRow(y);
    for (std::size_t i = bytes; i + bytes < run.source.rowBytes; ++i) {
        to[i] = ClampToByte(rows.SlopeUp(i, bytes));
    }
}

template <std::size_t bytes>
void DrawCrayonRow(const KernelRun& run, i32 y, i32 threshold) {
    const ThreeRows rows(run.source, y);
    u8* to = run.ResultRow(y);
    for (std::size_t i = bytes; i + bytes < run.source.rowBytes; ++i) {
        const i32 edge = rows.SlopeAlong(i, bytes) + to[i];
        to[i] = edge < threshold ? u8{0} : ClampToByte(edge);
    }
}

// One tone for all channels: a pencil has no colour.
template <std::size_t bytes>
void DrawPencilRow(const KernelRun& run, i32 y, i32 threshold) {
    const ThreeRows rows(run.source, y);
    u8* to = run.ResultRow(y);
    for (std::size_t i = bytes; i + bytes < run.source.rowBytes; i += bytes) {
        i32 edge = 0;
        for (std::size_t channel = i; channel < i + bytes; ++channel) {
            edge += std::min(rows.SlopeAlong(channel, bytes) + to[channel], 255);
        }
        edge /= static_cast<i32>(bytes);
        std::memset(to + i, edge < threshold ? 255 : 255 - edge, bytes);
    }
}

template <std::size_t bytes>
WorkEnd Draw(const KernelRun& run, const SketchParams& params) {
    const i32 height = run.source.height;
    const std::size_t rowBytes = run.source.rowBytes;
    const i32 paper = params.style == kCrayon ? 0 : 255;
    for (i32 y = 1; y < height - 1; ++y) {
        if (!run.BeginLine(y, height, 0, 50)) {
            return WorkEnd::Stopped;
        }
        DrawSlopesUp<bytes>(run, y);
    }
    std::memset(run.ResultRow(0), paper, rowBytes);
    for (i32 y = 1; y < height - 1; ++y) {
        if (!run.BeginLine(y, height, 50, 50)) {
            return WorkEnd::Stopped;
        }
        if (params.style == kCrayon) {
            DrawCrayonRow<bytes>(run, y, params.threshold);
        } else {
            DrawPencilRow<bytes>(run, y, params.threshold);
        }
        std::memset(run.ResultRow(y), paper, bytes);
        std::memset(run.ResultRow(y) + rowBytes - bytes, paper, bytes);
    }
    std::memset(run.ResultRow(height - 1), paper, rowBytes);
    return WorkEnd::Done;
}

} // namespace

DibHandle Sketch(DibHandle source, const SketchParams& params) {
    if ((params.style != kCrayon && params.style != kPencil) || params.threshold < 0 ||
        params.threshold > 254) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        return WithPixelBytes(run.source, [&](auto bytes) { return Draw<bytes>(run, params); });
    });
}
