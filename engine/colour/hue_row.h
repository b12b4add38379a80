// The pixels of a turned hue and a moved saturation.
#pragma once

#include "engine/vector/map_bytes.h"

// What a saturation in percent does to a channel, in 128ths: keep(channel) + pull(largest channel).
// Words in two halves; sums wrap around and end between -32,640 and 32,640.
struct SaturationTables {
    explicit SaturationTables(i32 percent);

    ByteTable keepLow;
    ByteTable keepHigh;
    ByteTable pullLow;
    ByteTable pullHigh;
};

struct HueTurn {
    u16 sectors; // whole steps of sixty degrees, 0 to 5
    u16 degrees; // and the rest, 0 to 59
};

// Changes 24-bit pixels: first the hue, then the saturation. A grey stays as it is.
void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const SaturationTables& saturation, Stores stores);
