// Blurs with a bell curve that falls to e^-2 at half the window, along the rows and then along the
// columns. Beyond the edges the edge pixels repeat.
#include "engine/neighbourhood/gaussian_blur.h"

#include "engine/neighbourhood/extended_line.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr i32 kFractionBits = 20;
constexpr i32 kOne = 1 << kFractionBits;
constexpr double kBase = 2.7182818;

// The exact sum of the weights is made by moving the middle taps by 1 each.
void TakeExcess(std::array<i32, kGaussianLargest>& weights, i32 size, i32 excess) {
    const i32 moved = std::min(size, std::abs(excess));
    const i32 step = excess > 0 ? -1 : 1;
    const i32 first = (size - moved) / 2;
    for (i32 tap = first; tap < first + moved; ++tap) {
        weights[static_cast<std::size_t>(tap)] += step;
    }
}

} // namespace

std::array<i32, kGaussianLargest> GaussianWeights(i32 size) {
    const i32 half = size / 2;
    std::array<double, kGaussianLargest> raw{};
    double sum = 0;
    for (i32 tap = 0; tap < size; ++tap) {
        const double distance = static_cast<double>(std::abs(tap - half)) / half;
        const double value = std::pow(kBase, distance * distance * -2.0);
        raw[static_cast<std::size_t>(tap)] = value;
        sum += value;
    }
    const double scale = kOne / sum;
    std::array<i32, kGaussianLargest> weights{};
    i32 total = 0;
    for (std::size_t tap = 0; tap < static_cast<std::size_t>(size); ++tap) {
        weights[tap] = static_cast<i32>(raw[tap] * scale + 0.5);
        total += weights[tap];
    }
    TakeExcess(weights, size, total - kOne);
    return weights;
}

DibHandle GaussianBlur(DibHandle source, const SquareSizeParams& params) {
    const i32 size = params.size;
    if (size < 2 || size > kGaussianLargest) {
        return 0;
    }
    const std::array<i32, kGaussianLargest> weights = GaussianWeights(size);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        ExtendedLine window(run.source, size);
        if (!window) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(run, [&](const Line& line) {
            window.Load(line);
            window.Rewrite(static_cast<std::size_t>(line.count) * line.samples,
                           [&](const u8* from, u8* to, std::size_t count) {
                               std::array<i32, ExtendedLine::kBlock> sums;
                               sums.fill(kOne / 2);
                               for (std::size_t tap = 0; tap < static_cast<std::size_t>(size);
                                    ++tap) {
                                   const i32 weight = weights[tap];
                                   const u8* samples = from + tap * line.samples;
                                   for (std::size_t i = 0; i < count; ++i) {
                                       sums[i] += weight * samples[i];
                                   }
                               }
                               for (std::size_t i = 0; i < count; ++i) {
                                   to[i] = static_cast<u8>(sums[i] >> kFractionBits);
                               }
                           });
            window.Store(line);
        });
    });
}
