// The rows of the enhancement.
#pragma once

#include "platform/types.h"

#include <cstddef>

// How far each channel of a 24-bit pixel is below the strongest one. `tones` may be read two bytes
// beyond both ends.
void FindDistances(const u8* tones, u8* distances, std::size_t count);

// Takes steps from tones, down to black.
void Lower(const u8* steps, u8* tones, std::size_t count);

// A difference is at most 2040, and its product with this has 16 bits.
constexpr i32 kLargestSharpening = 32;

// Adds boost / 800 of the difference between eight times a sample and the sum of its neighbours,
// the boost being 0 to kLargestSharpening. The rows have a pixel of `step` bytes more at both ends.
void SharpenRow(const u8* below, const u8* here, const u8* above, std::size_t step, i32 boost,
                u8* to, std::size_t count);
