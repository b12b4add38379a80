// Bytes through tables of 256 bytes.
#pragma once

#include "engine/vector/stores.h"

#include <array>
#include <cstddef>

using ByteTable = std::array<u8, 256>;

// Sends `count` bytes through one table. `to` may be `from` itself.
void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table,
              Stores stores = Stores::Cached);

// Sends one byte of three, those at `channel`, `channel` + 3 and so on, through the table, and
// copies the others.
void MapChannel(const u8* from, u8* to, std::size_t count, std::size_t channel,
                const ByteTable& table, Stores stores);
