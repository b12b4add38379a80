// Memory for blocks of several megabytes: pages of the system's largest kind, used again.
#pragma once

#include "platform/types.h"

#include <cstddef>

// Whether a block of that size comes from here. Under the address sanitizer none does, so that it
// sees exactly where each block ends.
bool IsLargeBlock(std::size_t bytes);

struct LargeBlock {
    void* address; // null when memory is short
    bool isZero;   // else it holds what somebody left in it
};

LargeBlock TakeLargeBlock(std::size_t bytes);

// Gives back what was taken as `bytes` bytes.
void GiveLargeBlock(void* address, std::size_t bytes);
