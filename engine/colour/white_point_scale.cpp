// Scales all tones so that `gain` becomes white, or, with a gain of 0 or below, white becomes
// -gain.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>

namespace {

ByteTable ScaleTable(i64 gain) {
    ByteTable table;
    for (i64 tone = 0; tone < 256; ++tone) {
        const i64 scaled = gain > 0 ? (gain / 2 + 255 * tone) / gain : (127 - tone * gain) / 255;
        table[static_cast<std::size_t>(tone)] = static_cast<u8>(std::min<i64>(scaled, 255));
    }
    return table;
}

} // namespace

DibHandle WhitePointScale(DibHandle source, i32 gain) {
    const ToneMap map{.table = ScaleTable(gain)};
    return RunKernel(
        source, Depths::GreyOrColour, [&](const KernelRun& run) { return ApplyToneMap(run, map); },
        BusyCursor::LeftAlone);
}
