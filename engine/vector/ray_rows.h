// Rows of sums along rays of up to 129 samples.
#pragma once

#include "engine/vector/box_rows.h"
#include "platform/types.h"

#include <cstddef>

// Lets sums slide on: from `before` to `sums`, with the samples that enter and leave. Each entry of
// `least` becomes the smaller one of itself and the sum.
void SlideRays(const u16* before, const u8* entering, const u8* leaving, u16* sums, u16* least,
               std::size_t count);

// Each entry of `least` becomes the smaller one of itself and the sum.
void KeepLeast(const u16* sums, u16* least, std::size_t count);

// The means that the least sums make; black stays black.
void FadeRow(const u8* samples, const u16* least, const RoundedDivision& mean, u8* to,
             std::size_t count);
