// Rows of slopes without colour.
#pragma once

#include "platform/types.h"

#include <cstddef>

// The mean of the differences high - low of a pixel's three channels, truncated toward zero, added
// to 128 and written to all three.
void WriteMeanSlopes(const u8* high, const u8* low, u8* to, std::size_t pixels);

// The same added to the channels of `ground`.
void AddMeanSlopes(const u8* high, const u8* low, const u8* ground, u8* to, std::size_t pixels);
