// Bends the picture into a band along a cosine wave: each column slides up by its own distance. The
// top of the picture is cut off, so that the band fits, and what it leaves free is filled.
#include "engine/distortion/distortion_kernels.h"
#include "engine/pixel.h"

#include <cmath>

namespace {

// The largest slide: 3/4 of the height at amplitude 100. From the whole height on, reached at 134,
// nothing is left of the band.
i32 BandShift(i32 amplitude, i32 height) {
    constexpr i64 kNothingLeft = 134;
    const i64 shift = std::min<i64>(amplitude, kNothingLeft) * height * 3 / 400;
    return static_cast<i32>(std::min<i64>(shift, height));
}

void FillShifts(const BlockTable<i32>& shifts, i32 width, i32 frequency, i32 bandShift) {
    constexpr double kPi = 3.1415926;
    const double waveStep = frequency * 0.1 / width;
    for (i32 x = 0; x < width; ++x) {
        const double wave = std::cos(x * waveStep * kPi);
        shifts[static_cast<std::size_t>(x)] = static_cast<i32>((wave + 1.0) * 0.5 * bandShift);
    }
}

} // namespace

DibHandle RibbonWarp(DibHandle source, const RibbonParams& params) {
    if (params.amplitude < 0) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const i32 width = run.source.width;
        const i32 bandShift = BandShift(params.amplitude, run.source.height);
        const BlockTable<i32> shifts(static_cast<u64>(width));
        if (!shifts) {
            return WorkEnd::NoMemory;
        }
        FillShifts(shifts, width, params.frequency, bandShift);
        run.CopyHead();
        const PixelColour fill = PixelOfColour(params.backColor, run.source);
        const i32 rowsOfBand = run.source.height - bandShift;
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            FetchPixelsOrFill(run.source, to, rowsOfBand, fill, [&](i32 x) {
                return Place{x, i64{y} - shifts[static_cast<std::size_t>(x)]};
            });
        });
    });
}
