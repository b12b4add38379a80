// Sends the tones through a table that the caller supplies.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>
#include <iterator>

DibHandle ToneTable(DibHandle source, const ToneTableParams& params) {
    if (params.channel < ZQ_CHANNEL_RGB || params.channel > ZQ_CHANNEL_BLUE) {
        return 0;
    }
    ToneMap map{.table = {}, .channel = params.channel};
    std::copy(std::begin(params.table), std::end(params.table), map.table.begin());
    return RunKernel(source, Depths::PaletteAware,
                     [&](const KernelRun& run) { return ApplyToneMap(run, map); });
}
