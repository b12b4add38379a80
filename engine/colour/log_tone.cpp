// Lifts the shadows along the logarithm of the tone.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>
#include <cmath>

namespace {

u8 LogOfTone(i32 tone) {
    const double lifted = 255 * std::log(tone + 1.0) / std::log(256.0) + 0.5;
    return static_cast<u8>(std::clamp(static_cast<i32>(lifted), 0, 255));
}

} // namespace

DibHandle LogTone(DibHandle source) {
    return RunKernel(source, Depths::PaletteAware, [](const KernelRun& run) {
        // Each entry of the table is preceded by a question of its own, before the usual ones.
        ByteTable table;
        for (i32 tone = 0; tone < 256; ++tone) {
            if (!run.GoOn()) {
                return WorkEnd::Stopped;
            }
            table[static_cast<std::size_t>(tone)] = LogOfTone(tone);
        }
        return ApplyToneMap(run, {.table = table});
    });
}
