#include <zq/memory.h>

#include "platform/base/large_block.h"
#include "platform/base/memory_testing.h"
#include "platform/base/unfilled_block.h"
#include "platform/types.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
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
    std::size_t allocatedBytes = 0;
    std::size_t failingAllocation = 0;
    std::size_t largestBlock = kLargestBlock;
    bool spoilsUnfilled = false;
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
    table.allocatedBytes += std::min(bytes, SIZE_MAX - table.allocatedBytes);
    return table.allocations != table.failingAllocation && bytes <= table.largestBlock;
}

enum class Content { Zero, Anything };

bool Spoils(Content content) {
    const std::lock_guard hold(table.mutex);
    return content == Content::Anything && table.spoilsUnfilled;
}

// Null for no bytes at all, and when memory is short.
void* TakeBytes(std::size_t bytes, Content content) {
    void* address = nullptr;
    if (IsLargeBlock(bytes)) {
        const LargeBlock block = TakeLargeBlock(bytes);
        address = block.address;
        if (content == Content::Zero && !block.isZero) {
            std::memset(address, 0, bytes);
        }
    } else if (bytes != 0) {
        address = content == Content::Zero ? std::calloc(bytes, 1) : std::malloc(bytes);
    }
    if (address != nullptr && Spoils(content)) {
        constexpr int kSpoiltByte = 0xA5;
        std::memset(address, kSpoiltByte, bytes);
    }
    return address;
}

void GiveBytes(void* address, std::size_t bytes) {
    if (address != nullptr && IsLargeBlock(bytes)) {
        GiveLargeBlock(address, bytes);
    } else {
        std::free(address);
    }
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

HGLOBAL Allocate(std::size_t bytes, Content content) {
    if (!MayAllocate(bytes)) {
        return nullptr;
    }
    void* const address = TakeBytes(bytes, content);
    if (address == nullptr && bytes != 0) {
        return nullptr;
    }
    HGLOBAL block = EnterBlock(address, bytes);
    if (block == nullptr) {
        GiveBytes(address, bytes);
    }
    return block;
}

} // namespace

extern "C" {

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    return flags == (GMEM_MOVEABLE | GMEM_ZEROINIT) ? Allocate(bytes, Content::Zero) : nullptr;
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
    std::size_t bytes = 0;
    {
        const std::lock_guard hold(table.mutex);
        Slot* slot = FindSlot(block);
        if (slot == nullptr) {
            return block;
        }
        address = slot->address;
        bytes = slot->bytes;
        table.liveLocks -= slot->lockCount;
        --table.liveBlocks;
        slot->address = nullptr;
        slot->used = false;
        slot->generation = static_cast<u16>(slot->generation % UINT16_MAX + 1);
        GiveSlotBack(static_cast<u32>(slot - slots));
    }
    GiveBytes(address, bytes);
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

HGLOBAL AllocateUnfilled(std::size_t bytes) {
    return Allocate(bytes, Content::Anything);
}

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
    table.allocatedBytes = 0;
    table.failingAllocation = n;
}

std::size_t AllocationCount() {
    const std::lock_guard hold(table.mutex);
    return table.allocations;
}

std::size_t AllocatedBytes() {
    const std::lock_guard hold(table.mutex);
    return table.allocatedBytes;
}

void LimitAllocations(std::size_t bytes) {
    const std::lock_guard hold(table.mutex);
    table.largestBlock = bytes == 0 ? kLargestBlock : bytes;
}

void SpoilUnfilledBlocks(bool spoil) {
    const std::lock_guard hold(table.mutex);
    table.spoilsUnfilled = spoil;
}
