// Levels: black point, white point and gamma of one tone curve.
#include "engine/colour/tone_adjustment.h"

#include "engine/colour/colour_kernels.h"

#include <algorithm>
#include <cmath>

std::array<u8, 256> BuildToneTable(i32 highlight, i32 midtone, i32 shadow) {
    const i64 h = highlight;
    const i64 s = shadow;
    const double gamma = midtone >= 0 ? 1 - midtone * 0.0045 : 1 - midtone * 0.035;
    const i64 lowIn = std::max<i64>(-s, 0);
    const i64 lowOut = std::max<i64>(s, 0);
    const i64 highIn = 255 - std::max<i64>(h, 0);
    const i64 spanOut = 255 - std::max<i64>(-h, 0) - lowOut;
    const auto spanIn = static_cast<double>(std::max<i64>(highIn - lowIn, 1));

    std::array<u8, 256> table;
    for (i64 tone = 0; tone < 256; ++tone) {
        double value = 0;
        if (tone <= lowIn) {
            value = 0;
        } else if (tone >= highIn) {
            value = 255;
        } else if (spanOut <= 0) {
            value = static_cast<double>(lowOut);
        } else {
            const double bent = std::pow(static_cast<double>(tone - lowIn) / spanIn, gamma);
            value =
                std::trunc(bent * static_cast<double>(spanOut) + 0.5) + static_cast<double>(lowOut);
        }
        table[static_cast<std::size_t>(tone)] = static_cast<u8>(std::clamp(value, 0.0, 255.0));
    }
    return table;
}

DibHandle ToneAdjustment(DibHandle source, const ToneAdjustmentParams& params) {
    ToneTableParams table{};
    table.channel = params.channel;
    std::ranges::copy(BuildToneTable(params.highlight, params.midtone, params.shadow), table.table);
    return ToneTable(source, table);
}
