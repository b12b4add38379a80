// The mean of a square in which the pixel itself counts several times more. The weight comes in
// once, along the columns, and with the source's value: what the rows gave is not weighted.
//
// Beyond what rows of short sums hold, one pixel after the other is counted in 32 bits.
#include "engine/neighbourhood/box_blur.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

namespace {

// A size and a weight that add up to more are a mistake.
constexpr i64 kRefusedDivisor = 1 << 22;

u8 MeanOf(u32 sum, u32 divisor) {
    return static_cast<u8>((sum + divisor / 2) / divisor);
}

// The means along one channel of a row of `count` pixels, `step` bytes apart.
void WideMeans(const u8* from, i64 count, std::size_t step, i64 size, u8* to) {
    const auto at = [&](i64 position) -> u32 {
        return from[static_cast<std::size_t>(std::clamp<i64>(position, 0, count - 1)) * step];
    };
    const i64 before = size / 2;
    const i64 end = size - before;
    u32 sum = static_cast<u32>(before) * at(0);
    for (i64 position = 0; position < std::min(end, count); ++position) {
        sum += at(position);
    }
    sum += static_cast<u32>(std::max<i64>(end - count, 0)) * at(count);
    for (i64 position = 0; position < count; ++position) {
        to[static_cast<std::size_t>(position) * step] = MeanOf(sum, static_cast<u32>(size));
        sum += at(position + end) - at(position - before);
    }
}

WorkEnd BlurWide(const KernelRun& run, i32 size, u32 weight) {
    const std::size_t pixel = PixelBytes(run.source);
    const std::size_t count = run.source.rowBytes;
    const RowRing rows(run.source, size);
    const BlockTable<u32> sums(count);
    if (!rows || !sums) {
        return WorkEnd::NoMemory;
    }
    return FilterRowsThenColumns(
        run, rows,
        [&](const u8* from, u8* to) {
            for (std::size_t channel = 0; channel < pixel; ++channel) {
                WideMeans(from + channel, run.source.width, pixel, size, to + channel);
            }
        },
        [&](i32 y, u8* to) {
            if (y == 0) {
                rows.ForWindow(-1, [&](const u8* row, i64 times) {
                    for (std::size_t i = 0; i < count; ++i) {
                        sums[i] += static_cast<u32>(times) * row[i];
                    }
                });
            }
            const u8* entering = rows.Row(rows.LastOf(y));
            const u8* leaving = rows.Row(rows.FirstOf(y) - 1);
            const u8* centres = run.source.Row(y);
            for (std::size_t i = 0; i < count; ++i) {
                sums[i] += u32{entering[i]} - leaving[i];
                to[i] = MeanOf(sums[i] + weight * centres[i], static_cast<u32>(size) + weight);
            }
        });
}

} // namespace

DibHandle CentreWeightedBlur(DibHandle source, const CentreWeightedParams& params) {
    const i32 size = std::max(params.size, 2);
    if (params.centreWeight < 0 || i64{size} + params.centreWeight >= kRefusedDivisor) {
        return 0;
    }
    const i32 weight = params.centreWeight;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        if (i64{size} + weight > RoundedDivision::kLargest) {
            return BlurWide(run, size, static_cast<u32>(weight));
        }
        const RoundedDivision mean(size + weight);
        return BlurBox(run, size, [&](const ColumnStep& step, i32 y, u8* to) {
            WriteWeightedMeans(step, run.source.Row(y), weight, mean, to);
        });
    });
}
