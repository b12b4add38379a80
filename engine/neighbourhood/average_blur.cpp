// The mean of a square: along the rows, then along the columns. Beyond the edges the edge pixels
// repeat.
#include "engine/neighbourhood/box_sums.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

DibHandle AverageBlur(DibHandle source, const SquareSizeParams& params) {
    if (params.size < 2 || params.size > 32) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        BoxSums box(run.source, params.size);
        const RoundedMean mean(static_cast<u64>(params.size));
        if (!box || !mean) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(run, [&](const Line& line) { AverageLine(box, mean, line); });
    });
}
