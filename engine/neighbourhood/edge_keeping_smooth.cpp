// The mean of the 3 x 3 neighbourhood, except on an edge, which a Sobel measure finds: there the
// sample stays. Beyond the borders of the picture the border pixels repeat.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr i32 kSamples = 9;
constexpr i32 kEdge = 128;

constexpr auto kSmoothTable = [] {
    std::array<u8, std::size_t{kSamples} * 256> table{};
    for (std::size_t sum = 0; sum < table.size(); ++sum) {
        table[sum] = static_cast<u8>(std::min<std::size_t>((sum + kSamples / 2) / kSamples, 255));
    }
    return table;
}();

struct Rows {
    const u8* below;
    const u8* here;
    const u8* above;

    // From the samples at `i` and its neighbours in the row at `left` and `right`.
    u8 Smooth(std::size_t left, std::size_t i, std::size_t right) const {
        const i32 slopeUp =
            2 * (above[i] - below[i]) + above[left] + above[right] - below[left] - below[right];
        const i32 slopeAcross = 2 * (here[right] - here[left]) + below[right] + above[right] -
                                below[left] - above[left];
        if (std::abs(slopeUp) + std::abs(slopeAcross) >= kEdge) {
            return here[i];
        }
        const i32 sum = below[left] + below[i] + below[right] + here[left] + here[i] + here[right] +
                        above[left] + above[i] + above[right];
        return kSmoothTable[static_cast<std::size_t>(sum)];
    }
};

} // namespace

DibHandle EdgeKeepingSmooth(DibHandle source) {
    return RunKernel(source, Depths::GreyOrColour, [](const KernelRun& run) {
        run.CopyHead();
        const DibView& view = run.source;
        const std::size_t pixel = view.bits / 8;
        const std::size_t lastPixel = view.rowBytes - pixel;
        return run.ForEachRow([&](const u8* here, u8* to, i32 y) {
            const Rows rows{view.Row(std::max(y - 1, 0)), here,
                            view.Row(y == view.height - 1 ? y : y + 1)};
            for (std::size_t i = 0; i < pixel; ++i) {
                to[i] = rows.Smooth(i, i, std::min(i + pixel, lastPixel + i));
            }
            for (std::size_t i = pixel; i < lastPixel; ++i) {
                to[i] = rows.Smooth(i - pixel, i, i + pixel);
            }
            for (std::size_t i = std::max(lastPixel, pixel); i < view.rowBytes; ++i) {
                to[i] = rows.Smooth(i - pixel, i, i);
            }
        });
    });
}
