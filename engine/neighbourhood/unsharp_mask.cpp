// Adds to each sample a part of its difference from the mean of a square, unless the difference is
// below a threshold.
#include "engine/neighbourhood/box_blur.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/vector/difference_rows.h"
#include "engine/vector/map_bytes.h"

namespace {

// What a difference adds. 255 is as good as more.
ByteTable GainTable(i32 percent, i32 threshold) {
    ByteTable gains;
    for (i32 difference = 0; difference < 256; ++difference) {
        const i32 gain = difference < threshold ? 0 : (50 + difference * percent) / 100;
        gains[static_cast<std::size_t>(difference)] = static_cast<u8>(std::min(gain, 255));
    }
    return gains;
}

} // namespace

DibHandle UnsharpMask(DibHandle source, const UnsharpMaskParams& params) {
    if (params.size < 2 || params.size > 32 || params.effect < 1 || params.effect > 500 ||
        params.threshold < 0 || params.threshold > 255) {
        return 0;
    }
    const ByteTable gains = GainTable(params.effect, params.threshold);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const RoundedDivision mean(params.size);
        return BlurBox(run, params.size, [&](const ColumnWindows& windows, i32 y, u8* to) {
            const u8* from = run.source.Row(y);
            constexpr std::size_t kBlock = 2048;
            std::array<u8, kBlock> block;
            SlideToMeans(windows, mean, to);
            for (std::size_t done = 0; done < windows.count; done += kBlock) {
                const std::size_t n = std::min(kBlock, windows.count - done);
                StepsFrom(to + done, from + done, block.data(), n);
                MapBytes(block.data(), block.data(), n, gains);
                MoveAway(to + done, from + done, block.data(), to + done, n);
            }
        });
    });
}
