// Lightens or darkens each pixel by a random amount, all its channels alike: grain without colour.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"
#include "engine/vector/random_draws.h"

DibHandle FilmGrain(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const std::size_t bytes = PixelBytes(run.source);
        const auto width = static_cast<std::size_t>(run.source.width);
        return run.ForEachRow([&](const u8* from, u8* to) {
            constexpr std::size_t kPixels = 1024; // at a time
            u16 draws[kPixels];
            i8 shifts[kPixels];
            for (std::size_t x = 0; x < width; x += kPixels) {
                const std::size_t count = std::min(kPixels, width - x);
                TakeRandom(draws, count);
                TakeRemainders(draws, count, static_cast<u16>(intensity));
                std::transform(draws, draws + count, shifts, [&](u16 draw) {
                    return static_cast<i8>(intensity / 2 - draw); // -49 to 50
                });
                AddToPixels(from + x * bytes, to + x * bytes, shifts, count, bytes);
            }
        });
    });
}
