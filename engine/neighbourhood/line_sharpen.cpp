// Sharpens along one axis: half the difference from the two neighbours on the line is added. A
// neighbour beyond an end of the line is the sample itself.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/pixel.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/line_sharpen.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// Half the doubled sample, (4 s - p - n) / 2 rounded down, is s and its distance from the mean of
// p and n rounded up: so bytes suffice.
void SharpenBetween(const u8* previous, const u8* here, const u8* next, u8* __restrict to,
                    std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const u8 sample = here[i];
        const auto mean = static_cast<u8>((previous[i] + next[i] + 1) >> 1);
        const auto rise = static_cast<u8>(std::max(sample, mean) - mean);
        const auto fall = static_cast<u8>(std::max(sample, mean) - sample);
        const auto room = static_cast<u8>(~sample);
        const auto lighter = static_cast<u8>(sample + std::min(rise, room));
        to[i] = static_cast<u8>(std::max(lighter, fall) - fall);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(SharpenBetween);

void Sharpen(const u8* previous, const u8* here, const u8* next, u8* to, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(SharpenBetween)(previous, here, next, to, count);
}

void SharpenAlongRow(const u8* from, u8* to, std::size_t rowBytes, std::size_t pixel) {
    if (rowBytes == pixel) {
        Sharpen(from, from, from, to, pixel);
        return;
    }
    const std::size_t last = rowBytes - pixel;
    Sharpen(from, from, from + pixel, to, pixel);
    Sharpen(from, from + pixel, from + 2 * pixel, to + pixel, last - pixel);
    Sharpen(from + last - pixel, from + last, from + last, to + last, pixel);
}

} // namespace

DibHandle LineSharpen(DibHandle source, const LineSharpenParams& params) {
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const DibView& view = run.source;
        return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
            if (params.axis == 0) {
                SharpenAlongRow(from, to, view.rowBytes, PixelBytes(view));
                return;
            }
            const u8* below = y == 0 ? from : view.Row(y - 1);
            const u8* above = y == view.height - 1 ? from : view.Row(y + 1);
            Sharpen(below, from, above, to, view.rowBytes);
        });
    });
}

#endif
