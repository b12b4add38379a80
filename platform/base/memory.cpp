#include <zq/memory.h>

#include "platform/base/memory_testing.h"
#include "platform/types.h"

#include <cstdlib>
#include <mutex>
#include <type_traits>

namespace {

// A handle is a generation in the upper and a slot in the lower 16 bits. Generations run from 1, so
// that no handle is 0 and no small number is a handle; a slot's generation changes when its block
// goes, so that handles kept too long name nothing.
constexpr u32 kSlots = 0x10000;
constexpr u32 kNoSlot = kSlots;
constexpr u32 kLargestLockCount = GMEM_LOCKCOUNT;
constexpr std::size_t kLargestBlock = PTRDIFF_MAX;

struct Slot {
    void* address;
    std::size_t bytes;
    u32 nextFree;
    u16 generation;
    u8 lockCount;
    bool used;
};

struct Table {
    std::mutex mutex;
    u32 fresh = 0; // slots from here on were never used
    // Freed slots wait in a queue: the one that is reused is the one that was freed first.
    u32 firstFree = kNoSlot;
    u32 lastFree = kNoSlot;
    std::size_t liveBlocks = 0;
    std::size_t liveLocks = 0;
    std::size_t allocations = 0;
    std::size_t failingAllocation = 0;
    std::size_t largestBlock = kLargestBlock;
};
static_assert(std::is_trivially_destructible_v<Table>); // it lives as long as the process

constinit Table table;
// All zero at the start, so that slots never used take no memory.
constinit Slot slots[kSlots] = {};

u32 TakeSlot() {
    if (table.firstFree == kNoSlot) {
        return table.fresh < kSlots ? table.fresh++ : kNoSlot;
    }
    const u32 index = table.firstFree;
    table.firstFree = slots[index].nextFree;
    if (table.firstFree == kNoSlot) {
        table.lastFree = kNoSlot;
    }
    return index;
}

void GiveSlotBack(u32 index) {
    slots[index].nextFree = kNoSlot;
    if (table.lastFree == kNoSlot) {
        table.firstFree = index;
    } else {
        slots[table.lastFree].nextFree = index;
    }
    table.lastFree = index;
}

// The slot of a live block, or null. The table's mutex is held.
Slot* FindSlot(HGLOBAL block) {
    const auto handle = reinterpret_cast<std::uintptr_t>(block);
    if (handle > UINT32_MAX) {
        return nullptr;
    }
    Slot& slot = slots[handle % kSlots];
    return slot.used && slot.generation == handle / kSlots ? &slot : nullptr;
}

bool MayAllocate(std::size_t bytes) {
    const std::lock_guard hold(table.mutex);
    ++table.allocations;
    return table.allocations != table.failingAllocation && bytes <= table.largestBlock;
}

HGLOBAL EnterBlock(void* address, std::size_t bytes) {
    const std::lock_guard hold(table.mutex);
    const u32 index = TakeSlot();
    if (index == kNoSlot) {
        return nullptr;
    }
    Slot& slot = slots[index];
    slot.address = address;
    slot.bytes = bytes;
    slot.lockCount = 0;
    slot.used = true;
    if (slot.generation == 0) {
        slot.generation = 1;
    }
    ++table.liveBlocks;
    return reinterpret_cast<HGLOBAL>(std::uintptr_t{slot.generation} * kSlots + index);
}

} // namespace

extern "C" {

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    if (flags != (GMEM_MOVEABLE | GMEM_ZEROINIT) || !MayAllocate(bytes)) {
        return nullptr;
    }
    void* address = nullptr;
    if (bytes != 0) {
        address = std::calloc(bytes, 1);
        if (address == nullptr) {
            return nullptr;
        }
    }
    HGLOBAL block = EnterBlock(address, bytes);
    if (block == nullptr) {
        std::free(address);
    }
    return block;
}

void* GlobalLock(HGLOBAL block) {
    const std::lock_guard hold(table.mutex);
    Slot* slot = FindSlot(block);
    if (slot == nullptr || slot->address == nullptr || slot->lockCount == kLargestLockCount) {
        return nullptr;
    }
    ++slot->lockCount;
    ++table.liveLocks;
    return slot->address;
}

BOOL GlobalUnlock(HGLOBAL block) {
    const std::lock_guard hold(table.mutex);
    Slot* slot = FindSlot(block);
    if (slot == nullptr || slot->lockCount == 0) {
        return 0;
    }
    --slot->lockCount;
    --table.liveLocks;
    return slot->lockCount != 0;
}

HGLOBAL GlobalFree(HGLOBAL block) {
    void* address = nullptr;
    {
        const std::lock_guard hold(table.mutex);
        Slot* slot = FindSlot(block);
        if (slot == nullptr) {
            return block;
        }
        address = slot->address;
        table.liveLocks -= slot->lockCount;
        --table.liveBlocks;
        slot->address = nullptr;
        slot->used = false;
        slot->generation = static_cast<u16>(slot->generation % UINT16_MAX + 1);
        GiveSlotBack(static_cast<u32>(slot - slots));
    }
    std::free(address);
    return nullptr;
}

SIZE_T GlobalSize(HGLOBAL block) {
    const std::lock_guard hold(table.mutex);
    const Slot* slot = FindSlot(block);
    return slot == nullptr ? 0 : slot->bytes;
}

UINT GlobalFlags(HGLOBAL block) {
    const std::lock_guard hold(table.mutex);
    const Slot* slot = FindSlot(block);
    return slot == nullptr ? GMEM_INVALID_HANDLE : slot->lockCount;
}

} // extern "C"

std::size_t LiveBlockCount() {
    const std::lock_guard hold(table.mutex);
    return table.liveBlocks;
}

std::size_t LiveLockCount() {
    const std::lock_guard hold(table.mutex);
    return table.liveLocks;
}

void FailAllocation(std::size_t n) {
    const std::lock_guard hold(table.mutex);
    table.allocations = 0;
    table.failingAllocation = n;
}

std::size_t AllocationCount() {
    const std::lock_guard hold(table.mutex);
    return table.allocations;
}

void LimitAllocations(std::size_t bytes) {
    const std::lock_guard hold(table.mutex);
    table.largestBlock = bytes == 0 ? kLargestBlock : bytes;
}
