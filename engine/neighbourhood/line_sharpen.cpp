// Sharpens along one axis: half the difference from the two neighbours on the line is added. A
// neighbour beyond an end of the line is the sample itself.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <algorithm>

namespace {

u8 Sharpen(i32 previous, i32 sample, i32 next) {
    const i32 doubled = 4 * sample - previous - next;
    return static_cast<u8>(std::clamp(doubled >> 1, 0, 255));
}

void SharpenBetween(const u8* previous, const u8* here, const u8* next, u8* to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = Sharpen(previous[i], here[i], next[i]);
    }
}

void SharpenAlongRow(const u8* from, u8* to, std::size_t rowBytes, std::size_t pixel) {
    if (rowBytes == pixel) {
        SharpenBetween(from, from, from, to, pixel);
        return;
    }
    const std::size_t last = rowBytes - pixel;
    SharpenBetween(from, from, from + pixel, to, pixel);
    SharpenBetween(from, from + pixel, from + 2 * pixel, to + pixel, last - pixel);
    SharpenBetween(from + last - pixel, from + last, from + last, to + last, pixel);
}

} // namespace

DibHandle LineSharpen(DibHandle source, const LineSharpenParams& params) {
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const DibView& view = run.source;
        return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
            if (params.axis == 0) {
                SharpenAlongRow(from, to, view.rowBytes, view.bits / 8);
                return;
            }
            const u8* below = y == 0 ? from : view.Row(y - 1);
            const u8* above = y == view.height - 1 ? from : view.Row(y + 1);
            SharpenBetween(below, from, above, to, view.rowBytes);
        });
    });
}
