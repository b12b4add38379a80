// Replaces `intensity` percent of the pixels, picked at random, by random ones.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

DibHandle AddNoise(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow([&](const u8* from, u8* to) {
                for (i32 x = 0; x < run.source.width; ++x, from += bytes, to += bytes) {
                    if (EngineRandom() % 100 >= intensity) {
                        CopyPixel<bytes>(from, to);
                        continue;
                    }
                    for (std::size_t channel = 0; channel < bytes; ++channel) {
                        to[channel] = static_cast<u8>(EngineRandom());
                    }
                }
            });
        });
    });
}
