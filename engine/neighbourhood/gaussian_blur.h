// The weights of the Gaussian blur.
#pragma once

#include "platform/types.h"

#include <array>

constexpr i32 kGaussianLargest = 32;

// The weights of the `size` taps, 2 to 32, the tap at size / 2 being the pixel itself. They add up
// to exactly 2^20; entries beyond `size` are 0.
std::array<i32, kGaussianLargest> GaussianWeights(i32 size);
