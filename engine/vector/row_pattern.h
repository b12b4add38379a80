// Bytes that repeat along a row.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

// Repeats after 192 bytes, and so holds whole pixels of one or three bytes in cells of up to 64
// pixels. From each of its places on it goes on for a vector's length.
class RowPattern {
public:
    static constexpr std::size_t kPeriod = 192;

    // `byteAt(i)` gives byte i of the row.
    template <class ByteAt>
    explicit RowPattern(const ByteAt& byteAt) {
        for (std::size_t i = 0; i < bytes_.size(); ++i) {
            bytes_[i] = i < kPeriod ? byteAt(i) : bytes_[i - kPeriod];
        }
    }

    const u8* At(std::size_t i) const { return &bytes_[i % kPeriod]; }

private:
    static constexpr std::size_t kLargestVector = 64;
    std::array<u8, kPeriod + kLargestVector> bytes_;
};
