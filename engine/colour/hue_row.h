// The pixels of a turned hue and a moved saturation.
#pragma once

#include "engine/vector/stores.h"

// What a saturation in percent does: a channel becomes (128 * channel + pull(largest channel) -
// pull(channel)) / 128, pull(tone) being (128 * tone * percent + 50) / 100 without its fraction.
// That is tone * 1.28 * percent, rounded; below 0 one less far, except for tone 0.
struct Saturation {
    explicit Saturation(i32 percent);

    u16 whole; // of 1.28 times the percent, as a positive number
    u16 part;  // in 1/65536, rounded up, which is exact enough for every tone
    u16 isBelow;
};

struct HueTurn {
    u16 sectors; // whole steps of sixty degrees, 0 to 5
    u16 degrees; // and the rest, 0 to 59
};

// Changes 24-bit pixels: first the hue, then the saturation. A grey stays as it is.
void TurnPixels(const u8* from, u8* to, std::size_t pixels, const HueTurn& turn,
                const Saturation& saturation, Stores stores);
