// Draws, white on black, the inner outline of what is brighter than a threshold. The outermost rows
// and columns stay black, and so do planes that are not chosen.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/pixel.h"

namespace {

// The samples of a row that are traced: every `step`-th from `first` on, up to before `end`.
struct Traced {
    std::size_t pixel;
    std::size_t first;
    std::size_t end;
    std::size_t step;
};

Traced TracedSamples(const DibView& source, i32 channel) {
    if (source.imageClass != ImageClass::Colour) {
        return {1, 1, source.rowBytes - 1, 1};
    }
    const std::size_t end = source.rowBytes - 3;
    if (channel == ZQ_CHANNEL_RGB) {
        return {3, 3, end, 1};
    }
    const auto byteOfPixel = static_cast<std::size_t>(ZQ_CHANNEL_BLUE - channel);
    return {3, 3 + byteOfPixel, end, 3};
}

void TraceRow(const KernelRun& run, i32 y, const Traced& traced, i32 threshold) {
    const u8* below = run.source.Row(y - 1);
    const u8* here = run.source.Row(y);
    const u8* above = run.source.Row(y + 1);
    u8* to = run.ResultRow(y);
    for (std::size_t i = traced.first; i < traced.end; i += traced.step) {
        const bool inside = here[i - traced.pixel] > threshold &&
                            here[i + traced.pixel] > threshold && below[i] > threshold &&
                            above[i] > threshold;
        to[i] = here[i] > threshold && !inside ? 255 : 0;
    }
}

} // namespace

DibHandle FindContour(DibHandle source, const FindContourParams& params) {
    if (params.mode == 0 || params.channel < ZQ_CHANNEL_RGB || params.channel > ZQ_CHANNEL_BLUE ||
        params.threshold < 1 || params.threshold > 254) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        ClearPixels(run);
        const Traced traced = TracedSamples(run.source, params.channel);
        const i32 height = run.source.height;
        for (i32 y = 1; y < height - 1; ++y) {
            if (!run.BeginLine(y, height)) {
                return WorkEnd::Stopped;
            }
            TraceRow(run, y, traced, params.threshold);
        }
        return WorkEnd::Done;
    });
}
