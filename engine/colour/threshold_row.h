// The pixels of the black and white of a colour picture.
#pragma once

#include "engine/vector/stores.h"

// A pixel becomes white when its luminance is above `level`, else black.
void ThresholdPixels(const u8* from, u8* to, std::size_t pixels, u8 level, Stores stores);
