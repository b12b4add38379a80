// Lightens or darkens each pixel by a random amount, all its channels alike: grain without colour.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"
#include "engine/tiles.h"
#include "engine/vector/random_draws.h"

DibHandle FilmGrain(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const std::size_t bytes = PixelBytes(run.source);
        const auto width = static_cast<std::size_t>(run.source.width);
        const auto middle = static_cast<i16>(intensity / 2);
        const Stores stores = StoresFor(run.source);
        return run.ForEachRow([&](const u8* from, u8* to) {
            constexpr std::size_t kPixels = 4096; // at a time
            u16 draws[kPixels];
            i8 shifts[3 * kPixels];
            for (std::size_t x = 0; x < width; x += kPixels) {
                const std::size_t count = std::min(kPixels, width - x);
                PrefetchToRead(from + x * bytes, from + (x + count) * bytes);
                TakeRandom(draws, count);
                TakeRemainders(draws, count, static_cast<u16>(intensity));
                SpreadShifts(draws, count, middle, bytes, shifts);
                AddToSamples(from + x * bytes, to + x * bytes, shifts, count * bytes, stores);
            }
        });
    });
}
