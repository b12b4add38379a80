#include "tests/engine/reference/reference_kernels.h"

#include <cmath>
#include <cstring>
#include <numeric>

namespace {

using Table = std::array<u8, 256>;

template <class Value>
Table MakeTable(Value value) {
    Table table;
    for (i32 i = 0; i < 256; ++i) {
        table[static_cast<std::size_t>(i)] = static_cast<u8>(value(i));
    }
    return table;
}

i32 Look(const Table& table, i32 value) {
    return table[static_cast<std::size_t>(value)];
}

// Channel 1 is red, the last byte of a pixel; 0 is all three.
Pixel MapChannel(const Table& table, i32 channel, Pixel pixel) {
    for (i32 c = 0; c < 3; ++c) {
        i32& value = pixel[static_cast<std::size_t>(c)];
        value = channel == 0 || c == 3 - channel ? Look(table, value) : value;
    }
    return pixel;
}

bool TakesPalettes(const ReferenceRun& run) {
    return run.IsGreyOrColour() || run.IsPalette();
}

} // namespace

bool BrightnessContrastReference(ReferenceRun& run, const BrightnessContrastParams& params) {
    const i32 b = Clamp(params.brightness, -128, 127);
    const i32 c = Clamp(params.contrast, -128, 127);
    const i32 channel = params.channel >= 0 && params.channel <= 2 ? params.channel : 3;
    if ((b == 0 && c == 0) || !TakesPalettes(run)) {
        return false;
    }
    const Table table = MakeTable([=](i32 i) {
        const i32 x = i + b;
        return x < c         ? 0
               : x > 255 - c ? 255
                             : ClampByte(((x - c) * 255 + (255 - 2 * c) / 2) / (255 - 2 * c));
    });
    run.MapTones([&](Pixel p) { return MapChannel(table, channel, p); },
                 [&](i32 v) { return channel <= 1 ? Look(table, v) : v; }, 32, false);
    return true;
}

bool ToneTableReference(ReferenceRun& run, const ToneTableParams& params) {
    if (params.channel < 0 || params.channel > 3 || !TakesPalettes(run)) {
        return false;
    }
    const Table table = MakeTable([&](i32 i) { return params.table[i]; });
    run.MapTones([&](Pixel p) { return MapChannel(table, params.channel, p); },
                 [&](i32 v) { return Look(table, v); });
    return true;
}

bool ColorReductionReference(ReferenceRun& run, const ColorReductionParams& params) {
    if (params.levels < 2 || params.levels > 128) {
        return false;
    }
    const i32 step = ((params.levels - 1) / 2 + 255) / (params.levels - 1);
    ToneTableParams tone = {params.channel, {}};
    for (i32 i = 0; i < 256; ++i) {
        tone.table[i] = static_cast<u8>(std::min((i + step / 2) / step * step, 255));
    }
    if (!ToneTableReference(run, tone)) {
        return false;
    }
    // With all channels a colour row goes through the table with its padding.
    for (i32 y = 0; y < run.h && run.kind == ImageClass::Colour && params.channel == 0; ++y) {
        for (std::size_t at = run.Offset(run.w, y, 0); at < run.Offset(0, y + 1, 0); ++at) {
            run.result[at] = tone.table[run.block[at]];
        }
    }
    return true;
}
