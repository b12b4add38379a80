// The mean of the 3 x 3 neighbourhood, except on an edge, which a Sobel measure finds: there the
// sample stays. Beyond the borders of the picture the border pixels repeat.
#include "engine/neighbourhood/extended_rows.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/edge_keeping_smooth.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// The rows are extended by a pixel of `step` bytes at both ends.
void SmoothRow(const u8* __restrict below, const u8* __restrict here, const u8* __restrict above,
               std::size_t step, u8* __restrict to, std::size_t count) {
    constexpr i32 kEdge = 128;
    const auto magnitude = [](i16 value) { return std::max(value, static_cast<i16>(-value)); };
    for (std::size_t left = 0; left < count; ++left) {
        const std::size_t i = left + step;
        const std::size_t right = i + step;
        const i32 belowSum = below[left] + below[i] + below[right];
        const i32 aboveSum = above[left] + above[i] + above[right];
        const i32 leftSum = below[left] + 2 * here[left] + above[left];
        const i32 rightSum = below[right] + 2 * here[right] + above[right];
        const auto slopeUp = static_cast<i16>(aboveSum + above[i] - belowSum - below[i]);
        const auto slopeAcross = static_cast<i16>(rightSum - leftSum);
        const auto slope = static_cast<i16>(magnitude(slopeUp) + magnitude(slopeAcross));
        // n / 9 is n * 7282 / 65536, truncated, for n up to 9 * 255 + 4.
        const auto n =
            static_cast<u16>(belowSum + aboveSum + here[left] + here[i] + here[right] + 4);
        const auto mean = static_cast<u16>(u32{n} * u32{7282} >> 16);
        to[left] = static_cast<u8>(slope >= kEdge ? u16{here[i]} : mean);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(SmoothRow);

DibHandle EdgeKeepingSmooth(DibHandle source) {
    return RunKernel(source, Depths::GreyOrColour, [](const KernelRun& run) {
        ExtendedRows rows(run.source, 1);
        if (!rows) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            rows.MoveTo(y);
            HWY_DYNAMIC_DISPATCH(SmoothRow)
            (rows.Row(i64{y} - 1), rows.Row(y), rows.Row(i64{y} + 1), PixelBytes(run.source), to,
             run.source.rowBytes);
        });
    });
}

#endif
