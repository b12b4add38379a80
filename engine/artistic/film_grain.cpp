// Lightens or darkens each pixel by a random amount, all its channels alike: grain without colour.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

DibHandle FilmGrain(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow([&](const u8* from, u8* to) {
                for (i32 x = 0; x < run.source.width; ++x, from += bytes, to += bytes) {
                    const i32 shift = intensity / 2 - EngineRandom() % intensity;
                    for (std::size_t channel = 0; channel < bytes; ++channel) {
                        to[channel] = ClampToByte(from[channel] + shift);
                    }
                }
            });
        });
    });
}
