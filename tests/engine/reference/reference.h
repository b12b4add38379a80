// A second implementation of every effect, written for being obviously right and nothing else: no
// sliding sums, no fast roads. The engine is compared with it.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

#include <span>
#include <vector>

struct ReferenceResult {
    std::vector<u8> block;  // empty: the answer 0
    std::vector<i32> trace; // questions, reports and cursors as EngineProbe records them
    u32 randomState;        // of EngineRandom after the run
};

// Runs effect `id` on the bytes of a packed DIB. Question `stopAtQuestion`, counted from 1, is
// answered with yes; 0 answers none so.
ReferenceResult RunReference(std::span<const u8> block, EffectId id, const void* params,
                             i64 stopAtQuestion, u32 randomState);
