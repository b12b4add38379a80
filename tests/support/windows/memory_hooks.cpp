// Blocks counted, and allocations that fail on purpose.
#include "platform/base/memory_testing.h"
#include "tests/support/windows/import_hooks.h"

#include <mutex>
#include <set>

namespace {

struct Blocks {
    std::mutex mutex;
    std::set<HGLOBAL> live;
    std::size_t allocations = 0;
    std::size_t allocatedBytes = 0;
    std::size_t failing = 0;
    std::size_t largest = SIZE_MAX;
};

Blocks& AllBlocks() {
    static Blocks blocks;
    return blocks;
}

bool MayAllocate(std::size_t bytes) {
    Blocks& blocks = AllBlocks();
    const std::lock_guard hold(blocks.mutex);
    blocks.allocatedBytes += bytes;
    return ++blocks.allocations != blocks.failing && bytes <= blocks.largest;
}

HGLOBAL WINAPI HookedGlobalAlloc(UINT flags, SIZE_T bytes);
HGLOBAL WINAPI HookedGlobalFree(HGLOBAL block);

HOOK_IMPORT("kernel32", GlobalAlloc, 8)
HOOK_IMPORT("kernel32", GlobalFree, 4)

HGLOBAL WINAPI HookedGlobalAlloc(UINT flags, SIZE_T bytes) {
    const HGLOBAL block = MayAllocate(bytes) ? SystemGlobalAlloc(flags, bytes) : nullptr;
    if (block != nullptr) {
        const std::lock_guard hold(AllBlocks().mutex);
        AllBlocks().live.insert(block);
    }
    return block;
}

HGLOBAL WINAPI HookedGlobalFree(HGLOBAL block) {
    {
        const std::lock_guard hold(AllBlocks().mutex);
        AllBlocks().live.erase(block);
    }
    return SystemGlobalFree(block);
}

} // namespace

std::size_t LiveBlockCount() {
    const std::lock_guard hold(AllBlocks().mutex);
    return AllBlocks().live.size();
}

std::size_t LiveLockCount() {
    const std::lock_guard hold(AllBlocks().mutex);
    std::size_t locks = 0;
    for (const HGLOBAL block : AllBlocks().live) {
        locks += GlobalFlags(block) & GMEM_LOCKCOUNT;
    }
    return locks;
}

void FailAllocation(std::size_t n) {
    const std::lock_guard hold(AllBlocks().mutex);
    AllBlocks().allocations = 0;
    AllBlocks().allocatedBytes = 0;
    AllBlocks().failing = n;
}

std::size_t AllocationCount() {
    const std::lock_guard hold(AllBlocks().mutex);
    return AllBlocks().allocations;
}

std::size_t AllocatedBytes() {
    const std::lock_guard hold(AllBlocks().mutex);
    return AllBlocks().allocatedBytes;
}

void LimitAllocations(std::size_t bytes) {
    const std::lock_guard hold(AllBlocks().mutex);
    AllBlocks().largest = bytes == 0 ? SIZE_MAX : bytes;
}

// All blocks are zero at the start.
void SpoilUnfilledBlocks(bool) {}
