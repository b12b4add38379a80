// Sums of blocks of pixels.
#pragma once

#include "platform/types.h"

#include <cstddef>

// So many rows fit the sums of AddRow.
constexpr i32 kMostAddedRows = 257;

// Adds a row to the sums of its columns.
void AddRow(const u8* row, u16* sums, std::size_t count);
