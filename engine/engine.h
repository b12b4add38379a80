// The effect engine: one dispatcher, the kernels behind it, and the services that kernels call.
// The dispatcher and the hooks are declared in the public header.
#pragma once

#include "platform/types.h"
#include <zq/engine.h>

#include <cstddef>

// Calls `progressHook` with the percent done if there is one and `progressEnabled` is non-zero.
void ReportProgress(i32 percent);

// Non-zero when the running kernel is to stop: the answer of `abortHook`, or without one whether
// Escape was pressed, held or not. Always 0 with `abortEnabled` 0.
i32 ShouldAbort();

// The next number, 0 to 32767, of this thread's stream: state = state * 214013 + 2531011 mod 2^32,
// bits 16 to 30, from state 1. The stream is never seeded and runs on from kernel to kernel, so a
// preview and the later run of the same effect see different numbers. A program's engine and the
// library's draw from one stream.
i32 EngineRandom();

// The next `count` numbers at once. The first leaves the stream where it is.
void PeekRandom(u16* numbers, std::size_t count);
void TakeRandom(u16* numbers, std::size_t count);
// Passes over `count` numbers.
void SkipRandom(std::size_t count);
