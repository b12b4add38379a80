// Draws, white on black, the inner outline of what is brighter than a threshold. The outermost rows
// and columns stay black, and so do planes that are not chosen.
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/pixel.h"
#include "engine/row_table.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/find_contour.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// The pointers lead to the row's second pixel. `traced` is 255 for samples to be traced, else 0.
void TraceRow(const u8* below, const u8* here, const u8* above, std::size_t pixel, u8 threshold,
              const u8* traced, u8* __restrict to, std::size_t count) {
    const u8* left = here - pixel;
    const u8* right = here + pixel;
    for (std::size_t i = 0; i < count; ++i) {
        const u8 darkest = std::min(std::min(left[i], right[i]), std::min(below[i], above[i]));
        const u8 outline = here[i] > threshold && darkest <= threshold ? 255 : 0;
        to[i] = outline & traced[i];
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(TraceRow);

void MarkTraced(const DibView& source, i32 channel, u8* traced) {
    if (source.imageClass != ImageClass::Colour || channel == ZQ_CHANNEL_RGB) {
        std::memset(traced, 255, source.rowBytes);
        return;
    }
    const auto first = static_cast<std::size_t>(ZQ_CHANNEL_BLUE - channel);
    for (std::size_t i = first; i < source.rowBytes; i += 3) {
        traced[i] = 255;
    }
}

WorkEnd Trace(const KernelRun& run, i32 channel, u8 threshold) {
    const DibView& source = run.source;
    const std::size_t pixel = PixelBytes(source);
    const RowTable<u8> traced(1, source.rowBytes);
    if (!traced) {
        return WorkEnd::NoMemory;
    }
    MarkTraced(source, channel, traced.Row(0));
    run.CopyHead();
    std::memset(run.ResultRow(0), 0, source.rowBytes);
    for (i32 y = 1; y < source.height - 1; ++y) {
        if (!run.BeginLine(y, source.height)) {
            return WorkEnd::Stopped;
        }
        u8* to = run.ResultRow(y);
        if (source.width > 2) {
            HWY_DYNAMIC_DISPATCH(TraceRow)
            (source.Row(y - 1) + pixel, source.Row(y) + pixel, source.Row(y + 1) + pixel, pixel,
             threshold, traced.Row(0) + pixel, to + pixel, source.rowBytes - 2 * pixel);
        }
        std::memset(to, 0, pixel);
        std::memset(to + source.rowBytes - pixel, 0, pixel);
    }
    std::memset(run.ResultRow(source.height - 1), 0, source.rowBytes);
    return WorkEnd::Done;
}

} // namespace

DibHandle FindContour(DibHandle source, const FindContourParams& params) {
    if (params.mode == 0 || params.channel < ZQ_CHANNEL_RGB || params.channel > ZQ_CHANNEL_BLUE ||
        params.threshold < 1 || params.threshold > 254) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        return Trace(run, params.channel, static_cast<u8>(params.threshold));
    });
}

#endif
