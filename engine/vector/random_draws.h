// Random draws in bulk, and what is made of them.
#pragma once

#include "engine/vector/stores.h"

#include <cstddef>

// Writes the next `count` numbers of a stream in `state`, as EngineRandom gives them one by one,
// and gives the state after them.
u32 DrawNumbers(u32 state, u16* numbers, std::size_t count);

// The state after `count` draws.
u32 StateAfterDraws(u32 state, std::size_t count);

// Replaces numbers of 0 to 32767 by their remainders. 1 <= divisor <= 32767
void TakeRemainders(u16* numbers, std::size_t count, u16 divisor);

// Writes a bit for each number, lowest bit first, 1 where it is below `limit`.
void MarkBelow(const u16* numbers, std::size_t count, u16 limit, u8* marks);

// Writes `top` less each number, a shift of -128 to 127, for each of its pixel's channels, 1 or 3.
void SpreadShifts(const u16* numbers, std::size_t count, i16 top, std::size_t channels, i8* shifts);

// Adds to each sample its shift; sums stop at 0 and 255.
void AddToSamples(const u8* from, u8* to, const i8* shifts, std::size_t count, Stores stores);
