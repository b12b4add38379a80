// Folds the upper half of the tones back down: 128 falls to 127, white to black.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>

namespace {

ByteTable FoldTable() {
    ByteTable table;
    for (i32 tone = 0; tone < 256; ++tone) {
        table[static_cast<std::size_t>(tone)] = static_cast<u8>(std::min(tone, 255 - tone));
    }
    return table;
}

} // namespace

DibHandle ToneFold(DibHandle source) {
    return RunKernel(source, Depths::PaletteAware, [](const KernelRun& run) {
        return ApplyToneMap(run, {.table = FoldTable()});
    });
}
