// Adds to each sample a part of its difference from the mean of a square, unless the difference is
// below a threshold.
#include "engine/neighbourhood/box_blur.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

DibHandle UnsharpMask(DibHandle source, const UnsharpMaskParams& params) {
    if (params.size < 2 || params.size > 32 || params.effect < 1 || params.effect > 500 ||
        params.threshold < 0 || params.threshold > 255) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const RoundedDivision mean(params.size);
        return BlurBox(run, params.size, [&](const ColumnStep& step, i32 y, u8* to) {
            WriteSharpened(step, run.source.Row(y), {params.effect, params.threshold}, mean, to);
        });
    });
}
