// Working rows, each of which begins where a cache line does: vector code is faster on them.
#pragma once

#include "engine/block.h"

#include <cstddef>
#include <cstdint>

template <class Entry>
class RowTable {
public:
    // Zero-filled rows of `count` entries.
    RowTable(u64 rows, std::size_t count)
        : stride_((count * sizeof(Entry) + kLine - 1) / kLine * kLine),
          block_(rows * stride_ + kLine - 1) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(block_); }

    Entry* Row(std::size_t index) const {
        const auto address = reinterpret_cast<std::uintptr_t>(block_.Entries());
        const std::size_t gap = (kLine - address % kLine) % kLine;
        return reinterpret_cast<Entry*>(block_.Entries() + gap + index * stride_);
    }

private:
    static constexpr std::size_t kLine = 64;

    const std::size_t stride_;
    const BlockTable<u8> block_;
};
