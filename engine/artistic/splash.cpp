// Takes each pixel from a random place near it.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

DibHandle Splash(DibHandle source, i32 intensity) {
    const i32 spread = std::clamp(intensity / 2, 1, 50) + 1;
    const i32 centre = spread / 2; // with an even spread pixels lean one step to the top right
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            FetchPixels(run.source, to, 0, run.source.width, [&](i32 x) {
                const i64 dx = centre - EngineRandom() % spread;
                const i64 dy = centre - EngineRandom() % spread;
                return Place{x + dx, y + dy};
            });
        });
    });
}
