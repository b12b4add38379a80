// Black and white: what is brighter than the level becomes white. A tone at the level is black.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/threshold_row.h"
#include "engine/colour/tone_map.h"

namespace {

ByteTable BlackOrWhiteTable(i32 level) {
    ByteTable table;
    for (i32 tone = 0; tone < 256; ++tone) {
        table[static_cast<std::size_t>(tone)] = level < tone ? 255 : 0;
    }
    return table;
}

} // namespace

DibHandle Threshold(DibHandle source, const ThresholdParams& params) {
    if (params.level < 0 || params.level > 255) {
        return 0;
    }
    const auto level = static_cast<u8>(params.level);
    return RunKernel(source, Depths::PaletteAware, [&](const KernelRun& run) {
        if (run.source.imageClass == ImageClass::Grey) {
            return ApplyToneMap(run, {.table = BlackOrWhiteTable(level)});
        }
        run.CopyHead();
        if (run.source.imageClass == ImageClass::Colour) {
            const auto width = static_cast<std::size_t>(run.source.width);
            const Stores stores = StoresFor(run.source);
            return run.ForEachRow(
                [&](const u8* from, u8* to) { ThresholdPixels(from, to, width, level, stores); });
        }
        ForEachPaletteColour(run, [&](const u8* from, u8* to) {
            ThresholdPixels(from, to, 1, level, Stores::Cached);
        });
        return CopyRows(run);
    });
}
