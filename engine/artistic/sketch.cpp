// Draws the edges of the picture: light lines on black (Crayon) or dark ones on white (Pencil).
// The outermost pixels are paper.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"
#include "engine/row_table.h"
#include "engine/spread_lines.h"
#include "engine/vector/channel_masks.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/artistic/sketch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// How steep the picture is at each sample, at most 255, or 0 where it is below the threshold. The
// pointers lead to samples that have neighbours on all sides, `step` bytes away in the row.
void DrawEdges(const u8* below, const u8* here, const u8* above, std::size_t step, u8 threshold,
               u8* __restrict edges, std::size_t count) {
    constexpr i16 kWhite = 255;
    const auto magnitude = [](i16 value) { return std::max(value, static_cast<i16>(-value)); };
    for (std::size_t i = step; i < count + step; ++i) {
        const std::size_t left = i - step;
        const std::size_t right = i + step;
        const i32 aboveSum = above[left] + 2 * above[i] + above[right];
        const i32 belowSum = below[left] + 2 * below[i] + below[right];
        const i32 leftSum = below[left] + 2 * here[left] + above[left];
        const i32 rightSum = below[right] + 2 * here[right] + above[right];
        const i16 slopeUp = magnitude(static_cast<i16>(aboveSum - belowSum));
        const i16 slopeAlong = magnitude(static_cast<i16>(rightSum - leftSum));
        const auto slope = static_cast<i16>(slopeAlong + slopeUp);
        const auto edge = static_cast<u8>(std::min(slope, kWhite));
        edges[left] = edge < threshold ? u8{0} : edge;
    }
}

// A pencil has no colour: three channels take the mean of their edges. The edges may be read two
// bytes beyond both ends.
void DrawPencilPixels(const u8* __restrict edges, u8 threshold, u8* __restrict to,
                      std::size_t count) {
    constexpr const ChannelMasks& masks = kChannelMasks;
    for (std::size_t done = 0; done < count; done += ChannelMasks::kBytes) {
        const u8* here = edges + done;
        const u8* before = here - 1;
        const u8* beforeThat = here - 2;
        u8* tones = to + done;
        const std::size_t n = std::min(ChannelMasks::kBytes, count - done);
        for (std::size_t i = 0; i < n; ++i) {
            const i32 sum = here[i] + (beforeThat[i] & masks.back2[i]) +
                            (before[i] & masks.back1[i]) + (here[i + 1] & masks.ahead1[i]) +
                            (here[i + 2] & masks.ahead2[i]);
            // Divided by 3, exactly up to 3 * 255.
            const auto mean = static_cast<u16>(u32{static_cast<u16>(sum)} * u32{21846} >> 16);
            const auto edge = static_cast<u8>(mean);
            tones[i] = edge < threshold ? u8{255} : static_cast<u8>(~edge);
        }
    }
}

// On a grey picture: edges that are below the threshold are paper.
void DrawPencilTones(const u8* __restrict edges, u8 threshold, u8* __restrict to,
                     std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = edges[i] < threshold ? u8{255} : static_cast<u8>(~edges[i]);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(DrawEdges);
HWY_EXPORT(DrawPencilPixels);
HWY_EXPORT(DrawPencilTones);

constexpr i32 kCrayon = 1;
constexpr i32 kPencil = 2;

// The inner pixels of row y.
void DrawRow(const KernelRun& run, i32 y, bool crayon, u8 threshold, u8* edges) {
    const DibView& source = run.source;
    const std::size_t pixel = PixelBytes(source);
    const std::size_t count = source.rowBytes - 2 * pixel;
    u8* to = run.ResultRow(y) + pixel;
    HWY_DYNAMIC_DISPATCH(DrawEdges)
    (source.Row(y - 1), source.Row(y), source.Row(y + 1), pixel, crayon ? threshold : u8{0},
     crayon ? to : edges, count);
    if (!crayon && pixel == 3) {
        HWY_DYNAMIC_DISPATCH(DrawPencilPixels)(edges, threshold, to, count);
    } else if (!crayon) {
        HWY_DYNAMIC_DISPATCH(DrawPencilTones)(edges, threshold, to, count);
    }
}

WorkEnd Draw(const KernelRun& run, const SketchParams& params) {
    const i32 height = run.source.height;
    const std::size_t rowBytes = run.source.rowBytes;
    const std::size_t pixel = PixelBytes(run.source);
    const bool crayon = params.style == kCrayon;
    const i32 paper = crayon ? 0 : 255;
    const RowTable<u8> edges(1, rowBytes + pixel);
    if (!edges) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    // Callers see all rows twice.
    SpreadLines lines(run, {1, height - 1, height, 0, 50}, {1, height - 1, height, 50, 50});
    std::memset(run.ResultRow(0), paper, rowBytes);
    for (i32 y = 1; y < height - 1; ++y) {
        if (!lines.Begin(y - 1, height - 2)) {
            return WorkEnd::Stopped;
        }
        if (run.source.width > 2) {
            DrawRow(run, y, crayon, static_cast<u8>(params.threshold), edges.Row(0) + pixel);
        }
        std::memset(run.ResultRow(y), paper, pixel);
        std::memset(run.ResultRow(y) + rowBytes - pixel, paper, pixel);
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
    return RunKernel(source, Depths::GreyOrColour,
                     [&](const KernelRun& run) { return Draw(run, params); });
}

#endif
