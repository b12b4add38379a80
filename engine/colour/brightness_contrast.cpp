// Shifts the tones by the brightness, then stretches (contrast above 0) or squeezes (below 0) them.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>

namespace {

// contrast..255 - contrast is spread over 0..255. The divisor 255 - 2 * contrast is odd, never 0.
ByteTable StretchTable(i32 brightness, i32 contrast) {
    const i32 span = 255 - 2 * contrast;
    ByteTable table;
    for (i32 i = 0; i < 256; ++i) {
        const i32 shifted = i + brightness;
        i32 tone = 0;
        if (shifted < contrast) {
            tone = 0;
        } else if (shifted > 255 - contrast) {
            tone = 255;
        } else {
            tone = ((shifted - contrast) * 255 + span / 2) / span;
        }
        table[static_cast<std::size_t>(i)] = static_cast<u8>(std::clamp(tone, 0, 255));
    }
    return table;
}

} // namespace

DibHandle BrightnessContrast(DibHandle source, const BrightnessContrastParams& params) {
    const i32 brightness = std::clamp(params.brightness, -128, 127);
    const i32 contrast = std::clamp(params.contrast, -128, 127);
    if (brightness == 0 && contrast == 0) {
        return 0;
    }
    // Grey documents offer no channels; one that is chosen all the same reaches a grey picture only
    // as red.
    const bool reachesGrey = params.channel == ZQ_CHANNEL_RGB || params.channel == ZQ_CHANNEL_RED;
    const ToneMap map{.table = StretchTable(brightness, contrast),
                      .channel = params.channel,
                      .leavesGrey = !reachesGrey};
    return RunKernel(source, Depths::PaletteAware, [&](const KernelRun& run) {
        return ApplyToneMap(run, map, {.clearsReservedByte = true, .asksRarely = true});
    });
}
