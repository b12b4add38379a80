// The mean of a square in which the pixel itself counts several times more. The weight comes in
// once, along the columns, and with the source's value: what the rows gave is not weighted.
#include "engine/neighbourhood/box_sums.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

namespace {

// The table of quotients would fill a gigabyte from here on: such a record is a mistake.
constexpr i64 kRefusedDivisor = 1 << 22;

} // namespace

DibHandle CentreWeightedBlur(DibHandle source, const CentreWeightedParams& params) {
    const i32 size = std::max(params.size, 2);
    if (params.centreWeight < 0 || i64{size} + params.centreWeight >= kRefusedDivisor) {
        return 0;
    }
    const auto weight = static_cast<u64>(params.centreWeight);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        BoxSums box(run.source, size);
        const RoundedMean mean(static_cast<u64>(size));
        const RoundedMean weightedMean(static_cast<u64>(size) + weight);
        if (!box || !mean || !weightedMean) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(
            run, [&](const Line& row) { AverageLine(box, mean, row); },
            [&](const Line& strip, const u8* centres) {
                box.Slide(strip, [&](i32 position, const u64* sums) {
                    const std::size_t at = static_cast<std::size_t>(position) * strip.step;
                    std::array<u64, kMostSamples> weighted;
                    for (std::size_t i = 0; i < strip.samples; ++i) {
                        weighted[i] = sums[i] + weight * centres[at + i];
                    }
                    weightedMean.Divide(weighted.data(), strip.samples, strip.to + at);
                });
            });
    });
}
