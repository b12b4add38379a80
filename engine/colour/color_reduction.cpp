// Leaves each channel a few evenly spaced levels.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

namespace {

// A staircase of steps of 255 / (levels - 1), rounded; a level past the end becomes 255. Because
// the step is rounded, 255 itself need not occur.
ByteTable StaircaseTable(i32 levels) {
    const i32 step = ((levels - 1) / 2 + 255) / (levels - 1);
    ByteTable table;
    for (i32 i = 0; i < 256; ++i) {
        const i32 level = (i + step / 2) / step * step;
        table[static_cast<std::size_t>(i)] = static_cast<u8>(level >= 256 ? 255 : level);
    }
    return table;
}

} // namespace

DibHandle ColorReduction(DibHandle source, const ColorReductionParams& params) {
    if (params.channel < ZQ_CHANNEL_RGB || params.channel > ZQ_CHANNEL_BLUE || params.levels < 2 ||
        params.levels > 128) {
        return 0;
    }
    const ToneMap map{.table = StaircaseTable(params.levels), .channel = params.channel};
    // All channels at once take whole rows: what a source holds in its padding is reduced too.
    const ToneMapHabits habits{.mapsPadding = params.channel == ZQ_CHANNEL_RGB};
    return RunKernel(source, Depths::PaletteAware,
                     [&](const KernelRun& run) { return ApplyToneMap(run, map, habits); });
}
