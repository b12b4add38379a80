// Blurs with a bell curve that falls to e^-2 at half the window, along the rows and then along the
// columns. Beyond the edges the edge pixels repeat.
#include "engine/neighbourhood/gaussian_blur.h"

#include "engine/neighbourhood/extended_row.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/neighbourhood/two_pass.h"
#include "engine/vector/three_taps.h"
#include "engine/vector/weighted_rows.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr i32 kOne = 1 << RowWeights::kFractionBits;
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

// What the neighbours of windows of 2 and 3 weigh fits in fewer bits.
static_assert(IsExactUpTo(255, 124993, RowWeights::kFractionBits));
static_assert(IsExactUpTo(2 * 255, 111681, RowWeights::kFractionBits));

void WeighTaps(const u8* const* taps, const FoldedWeights& weights, u8* to, std::size_t count,
               Stores stores) {
    const RowWeights& each = weights.unfolded;
    if (each.count <= 3) {
        WeighThreeRows({taps[0], taps[1], taps[each.count - 1]},
                       RoundedOuterWeight(each.values[0], RowWeights::kFractionBits), to, count,
                       stores);
    } else {
        WeighRows(taps, weights, to, count, stores);
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
    const FoldedWeights weights({GaussianWeights(size), static_cast<std::size_t>(size)});
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const std::size_t count = run.source.rowBytes;
        const std::size_t pixel = PixelBytes(run.source);
        const ExtendedRow extended(run.source, size);
        const RowRing rows(run.source, size);
        if (!extended || !rows) {
            return WorkEnd::NoMemory;
        }
        std::array<const u8*, RowWeights::kMost> taps;
        const Stores stores = StoresFor(run.source);
        return FilterRowsThenColumns(
            run, rows,
            [&](const u8* from, u8* to) {
                const u8* samples = extended.Extend(from);
                for (std::size_t tap = 0; tap < weights.unfolded.count; ++tap) {
                    taps[tap] = samples + tap * pixel;
                }
                WeighTaps(taps.data(), weights, to, count, Stores::Cached);
            },
            [&](i32 y, u8* to) {
                for (i32 tap = 0; tap < size; ++tap) {
                    taps[static_cast<std::size_t>(tap)] = rows.Row(rows.FirstOf(y) + tap);
                }
                WeighTaps(taps.data(), weights, to, count, stores);
            });
    });
}
