// Adds to each sample a part of its difference from the mean of a square, unless the difference is
// below a threshold.
#include "engine/neighbourhood/box_sums.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

namespace {

// What a difference of -255..255 adds. The negative side stands one step behind the positive one:
// -1 takes what 0 would, -2 what 1 would, so that darkening sets in a step later than lightening.
class GainTable {
public:
    GainTable(i32 percent, i32 threshold) {
        for (i32 size = 0; size < 256; ++size) {
            const i32 gain = size < threshold ? 0 : (50 + size * percent) / 100;
            Entry(size) = gain;
            if (size < 255) {
                Entry(-(size + 1)) = -gain;
            }
        }
    }

    i32 operator[](i32 difference) const {
        return gains_[static_cast<std::size_t>(difference + 255)];
    }

private:
    i32& Entry(i32 difference) { return gains_[static_cast<std::size_t>(difference + 255)]; }

    std::array<i32, 511> gains_;
};

} // namespace

DibHandle UnsharpMask(DibHandle source, const UnsharpMaskParams& params) {
    if (params.size < 2 || params.size > 32 || params.effect < 1 || params.effect > 500 ||
        params.threshold < 0 || params.threshold > 255) {
        return 0;
    }
    const GainTable gains(params.effect, params.threshold);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        BoxSums box(run.source, params.size);
        const RoundedMean mean(static_cast<u64>(params.size));
        if (!box || !mean) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(
            run, [&](const Line& row) { AverageLine(box, mean, row); },
            [&](const Line& strip, const u8* originals) {
                box.Slide(strip, [&](i32 position, const u64* sums) {
                    const std::size_t at = static_cast<std::size_t>(position) * strip.step;
                    std::array<u8, kMostSamples> blurred;
                    mean.Divide(sums, strip.samples, blurred.data());
                    for (std::size_t i = 0; i < strip.samples; ++i) {
                        const i32 original = originals[at + i];
                        const i32 sharpened = original + gains[original - blurred[i]];
                        strip.to[at + i] = static_cast<u8>(std::clamp(sharpened, 0, 255));
                    }
                });
            });
    });
}
