// Bytes through tables of 256 bytes.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

using ByteTable = std::array<u8, 256>;

// Sends `count` bytes through one table.
void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table);
