// Rows of bytes: copied, inverted, added to.
#pragma once

#include "engine/vector/row_pattern.h"
#include "engine/vector/stores.h"

void CopyBytes(const u8* from, u8* to, std::size_t count, Stores stores);

// 255 less each byte.
void InvertBytes(const u8* from, u8* to, std::size_t count, Stores stores);

// from + up - down, kept between 0 and 255. At each place one of the two patterns is 0.
void AddPattern(const u8* from, u8* to, std::size_t count, const RowPattern& up,
                const RowPattern& down, Stores stores);

// ground + high - low, kept between 0 and 255.
void AddDifference(const u8* high, const u8* low, u8* to, std::size_t count,
                   const RowPattern& ground, Stores stores);
