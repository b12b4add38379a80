// Random draws in bulk, and what is made of them.
#pragma once

#include "platform/types.h"

#include <cstddef>

// Writes the next `count` numbers of a stream in `state`, as EngineRandom gives them one by one,
// and gives the state after them.
u32 DrawNumbers(u32 state, u16* numbers, std::size_t count);

// The state after `count` draws.
u32 StateAfterDraws(u32 state, std::size_t count);

// Replaces numbers of 0 to 32767 by their remainders. 1 <= divisor <= 32767
void TakeRemainders(u16* numbers, std::size_t count, u16 divisor);

// Adds to all channels of each pixel its shift; sums stop at 0 and 255. `channels` is 1 or 3.
void AddToPixels(const u8* from, u8* to, const i8* shifts, std::size_t pixels,
                 std::size_t channels);
