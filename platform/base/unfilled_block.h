// Blocks for those who write every byte themselves.
#pragma once

#include <zq/memory.h>

#include <cstddef>

// Like GlobalAlloc, but the block's bytes may be anything.
#ifdef _WIN32
inline HGLOBAL AllocateUnfilled(std::size_t bytes) {
    return GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
}
#else
ZQ_API HGLOBAL AllocateUnfilled(std::size_t bytes);
#endif
