/** @file
 *  Moveable memory blocks: the five operations that carry every DIB and document, and the way from
 *  a block to the 32-bit handle that the records hold.
 *
 *  On Windows these are the system's own. Elsewhere the library `zqbase` has them, and a host and
 *  the library share one table of blocks. All of them may be called from any thread.
 *  Valid C and C++.
 */
#ifndef ZQ_MEMORY_H
#define ZQ_MEMORY_H

#include <zq/platform.h>

#ifndef _WIN32

/** GlobalAlloc flag: the block is moveable, its handle is not its address. */
#define GMEM_MOVEABLE 0x0002u
/** GlobalAlloc flag: every byte of the new block is zero. */
#define GMEM_ZEROINIT 0x0040u
/** GlobalFlags: mask of the lock count in the answer. */
#define GMEM_LOCKCOUNT 0x00FFu
/** GlobalFlags: the answer for a handle that names no block. */
#define GMEM_INVALID_HANDLE 0x8000u

ZQ_EXTERN_C_BEGIN

/** Takes a block, all zero. Only moveable, zero-filled blocks exist.
 *  @param flags  GMEM_MOVEABLE | GMEM_ZEROINIT (66)
 *  @param bytes  the block's size
 *  @return its handle, whose value fits 32 bits; null when memory is short or flags differ */
ZQ_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);

/** Adds one lock.
 *  @param block  the block's handle
 *  @return the address of the block's first byte, good until the lock goes; null for a null, stale
 *          or wrong handle, for a block of 0 bytes, and when the lock count is at its end (255) */
ZQ_API void* GlobalLock(HGLOBAL block);

/** Takes one lock off.
 *  @param block  the block's handle
 *  @return non-zero while locks remain; 0 when the last lock went, when there was none, and for a
 *          null, stale or wrong handle */
ZQ_API BOOL GlobalUnlock(HGLOBAL block);

/** Gives a block back, locked or not.
 *  @param block  the block's handle
 *  @return null; the handle itself when it names no block */
ZQ_API HGLOBAL GlobalFree(HGLOBAL block);

/** Tells how large a block is.
 *  @param block  the block's handle
 *  @return the size that was asked for, in bytes; 0 for a null, stale or wrong handle */
ZQ_API SIZE_T GlobalSize(HGLOBAL block);

/** Tells whether a block is locked.
 *  @param block  the block's handle
 *  @return the lock count in the low 8 bits; GMEM_INVALID_HANDLE for a null, stale or wrong handle
 */
ZQ_API UINT GlobalFlags(HGLOBAL block);

ZQ_EXTERN_C_END

#endif

/** Gives a block's handle as records and documents hold it.
 *  @param block  the block's handle, or null
 *  @return the same in 32 bits; 0 for null */
static inline uint32_t ZqHandleOfBlock(HGLOBAL block) {
    return (uint32_t)(uintptr_t)block;
}

/** Gives the block that a record or a document names.
 *  @param handle  the 32-bit handle, or 0
 *  @return the handle that the memory operations take; null for 0 */
static inline HGLOBAL ZqBlockOfHandle(uint32_t handle) {
    return (HGLOBAL)(uintptr_t)handle;
}

#endif
