// For tests only: how many blocks live, and allocations that fail on purpose.
#pragma once

#include "platform/types.h"
#include <zq/platform.h>

// Blocks that were taken and not given back, on all threads.
ZQ_API std::size_t LiveBlockCount();

// The sum of the lock counts of all live blocks.
ZQ_API std::size_t LiveLockCount();

// Lets the n-th allocation from now on fail, counted from 1 on all threads, and all others succeed;
// 0 ends it.
ZQ_API void FailAllocation(std::size_t n);

// Allocations asked for since the last FailAllocation call, failed ones included.
ZQ_API std::size_t AllocationCount();

// The bytes asked for since then; those of failed allocations count, and of given back ones.
ZQ_API std::size_t AllocatedBytes();

// Lets every allocation of more than `bytes` bytes fail from now on, so that a size that nobody has
// memory for fails on every machine; 0 ends it.
ZQ_API void LimitAllocations(std::size_t bytes);

// Fills every block that need not be zero with other bytes from now on, so that whoever leaves one
// unwritten is found out.
ZQ_API void SpoilUnfilledBlocks(bool spoil);
