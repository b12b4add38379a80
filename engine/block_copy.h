// A second block with the bytes of a first.
#pragma once

#include "engine/block.h"

#include <cstring>

// Nothing when memory is short or there is no block to copy.
inline OwnedBlock CopyBlock(u32 block) {
    OwnedBlock copy(AllocateBlock(BlockSize(block)));
    const BlockLock from(block);
    const BlockLock to(copy.Handle());
    if (!from || !to) {
        return OwnedBlock();
    }
    std::memcpy(to.Bytes(), from.Bytes(), BlockSize(block));
    return copy;
}
