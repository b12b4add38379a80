// How often each tone occurs in a picture, and how tall its bar stands in a graph.
#pragma once

#include "engine/block.h"
#include <zq/document.h>

constexpr std::size_t kTones = 256;

using CountTable = BlockTable<u32>;
using BarTable = BlockTable<u16>;

// All channels together, then red, green and blue, as a dialog numbers its channels.
constexpr std::size_t kChannels = 4;

// A picture of a grey document has the first table alone. None is there when memory was short.
struct Histogram {
    CountTable channels[kChannels];
};

// Counts every pixel of a picture. Of a grey document only 8 bits are counted, by the blue bytes of
// the palette; of any other 24, 8 and 4 bits. The tables of other pictures, and of a block that
// holds none, stay zero.
Histogram CountTones(DibHandle picture, bool isGrey);

// The y at which the bar of each tone begins, in a graph whose inside is `height` pixels high.
// About 39 percent of the height is the bar of each of n equally frequent tones, whatever n. The
// tallest bars are cut 4 pixels below the top. None for no counts and when memory is short.
BarTable MakeBars(const CountTable& counts, i32 height);
