// Guards for moveable blocks: what locks also unlocks, what takes also gives back.
#pragma once

#include "platform/types.h"
#include <zq/memory.h>

#include <utility>

// Flags of every block of this system: moveable, filled with zero bytes.
constexpr UINT kBlockFlags = GMEM_MOVEABLE | GMEM_ZEROINIT;

// A new zero-filled block, or 0 when memory is short or `bytes` is more than the platform can
// count.
inline u32 AllocateBlock(u64 bytes) {
    if (bytes > SIZE_MAX) {
        return 0;
    }
    return ZqHandleOfBlock(GlobalAlloc(kBlockFlags, static_cast<std::size_t>(bytes)));
}

inline void FreeBlock(u32 handle) {
    if (handle != 0) {
        GlobalFree(ZqBlockOfHandle(handle));
    }
}

inline std::size_t BlockSize(u32 handle) {
    return handle == 0 ? 0 : GlobalSize(ZqBlockOfHandle(handle));
}

// A block that is locked as long as this lives. False when there was nothing to lock.
class BlockLock {
public:
    BlockLock() = default;
    explicit BlockLock(u32 handle)
        : handle_(handle),
          address_(handle == 0 ? nullptr : static_cast<u8*>(GlobalLock(ZqBlockOfHandle(handle)))) {}
    BlockLock(BlockLock&& other) noexcept
        : handle_(other.handle_), address_(std::exchange(other.address_, nullptr)) {}
    BlockLock& operator=(BlockLock&& other) noexcept {
        if (this != &other) {
            Release();
            handle_ = other.handle_;
            address_ = std::exchange(other.address_, nullptr);
        }
        return *this;
    }
    ~BlockLock() { Release(); }

    explicit operator bool() const { return address_ != nullptr; }
    u8* Bytes() const { return address_; }

    // Unlocks now, not at the end of the scope.
    void Release() {
        if (address_ != nullptr) {
            GlobalUnlock(ZqBlockOfHandle(handle_));
            address_ = nullptr;
        }
    }

private:
    u32 handle_ = 0;
    u8* address_ = nullptr;
};

// A block that is freed at the end of the scope unless it is handed on.
class OwnedBlock {
public:
    OwnedBlock() = default;
    explicit OwnedBlock(u32 handle) : handle_(handle) {}
    OwnedBlock(OwnedBlock&& other) noexcept : handle_(other.HandOver()) {}
    OwnedBlock& operator=(OwnedBlock&& other) noexcept {
        if (this != &other) {
            FreeBlock(std::exchange(handle_, other.HandOver()));
        }
        return *this;
    }
    ~OwnedBlock() { FreeBlock(handle_); }

    explicit operator bool() const { return handle_ != 0; }
    u32 Handle() const { return handle_; }
    u32 HandOver() { return std::exchange(handle_, 0u); }

private:
    u32 handle_ = 0;
};

// A zero-filled working table of `count` entries in a block of its own. False when memory was
// short, and for one that was never made.
template <class Entry>
class BlockTable {
public:
    BlockTable() = default;
    explicit BlockTable(u64 count)
        : block_(AllocateBlock(count * sizeof(Entry))), lock_(block_.Handle()) {}

    explicit operator bool() const { return static_cast<bool>(lock_); }
    Entry* Entries() const { return reinterpret_cast<Entry*>(lock_.Bytes()); }
    Entry& operator[](std::size_t index) const { return Entries()[index]; }

private:
    OwnedBlock block_;
    BlockLock lock_;
};
