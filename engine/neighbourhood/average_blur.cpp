// The mean of a square.
#include "engine/neighbourhood/box_blur.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

DibHandle AverageBlur(DibHandle source, const SquareSizeParams& params) {
    if (params.size < 2 || params.size > 32) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const RoundedDivision mean(params.size);
        return BlurBox(run, params.size,
                       [&](const ColumnStep& step, i32, u8* to) { WriteMeans(step, mean, to); });
    });
}
