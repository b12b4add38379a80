// Rows of the largest or smallest samples of windows.
#pragma once

#include "platform/types.h"

#include <cstddef>

enum class Extreme { Smallest, Largest };

// The extremes of windows of `size` samples, 2 to 32, that stand `step` bytes apart, 1 or 3. The
// first of `count` windows begins at samples[0], the last one ends at
// samples[count - 1 + (size - 1) * step].
void ExtremesAlongRow(Extreme which, const u8* samples, i32 size, std::size_t step, u8* extremes,
                      std::size_t count);

// Makes each sample of `kept` the extreme of itself and the one of `row`.
void KeepExtremes(Extreme which, const u8* row, u8* kept, std::size_t count);

// The same, and writes the extremes of what is kept then and `other`.
void KeepAndJoinExtremes(Extreme which, const u8* row, u8* kept, const u8* other, u8* to,
                         std::size_t count);
