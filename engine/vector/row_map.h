// Rows whose pixels come from elsewhere in a row, at the same places for all rows.
#pragma once

#include "engine/block.h"

#include <algorithm>
#include <cstring>

// Copies the pixels that lie base + offsets[i] bytes behind `pixels` to a run of `count` pixels at
// `to`.
//
// Pixels of three bytes go four bytes at a time, the last one first: each brings along the byte in
// front of it, and the next one puts that right. So there must be a byte in front of `pixels`.
template <std::size_t bytes, class Offset>
void CopyPixelsAt(const u8* pixels, const Offset* offsets, std::size_t count, u8* to,
                  Offset base = 0) {
    if constexpr (bytes == 1) {
        for (std::size_t i = 0; i < count; ++i) {
            to[i] = pixels[base + offsets[i]];
        }
    } else {
        const auto copy = [=](std::size_t i) {
            std::memcpy(to + i * bytes - 1, pixels + (base + offsets[i]) - 1, 4);
        };
        std::size_t i = count;
        for (; i > 4; i -= 4) {
            copy(i - 1);
            copy(i - 2);
            copy(i - 3);
            copy(i - 4);
        }
        for (; i > 1; --i) {
            copy(i - 1);
        }
        if (count != 0) {
            std::memcpy(to, pixels + (base + offsets[0]), bytes);
        }
    }
}

// Which column each column comes from.
class RowMap {
public:
    // For rows of `width` pixels of 1 or 3 bytes; all columns come from column 0 at first.
    RowMap(i32 width, std::size_t pixelBytes);

    // False when memory was short.
    explicit operator bool() const { return offsets_ && blocks_; }

    void Set(i32 column, i32 fromColumn) const {
        offsets_[static_cast<std::size_t>(column)] =
            static_cast<std::size_t>(fromColumn) * pixelBytes_;
    }

    // To be called when all columns are set.
    void Finish() const;

    // Writes a row. There is a byte in front of `from`.
    void Fetch(const u8* from, u8* to) const;

    // Writes a row in which each pixel is mixed with the one `next` bytes behind it in `from`, 0 or
    // a pixel's bytes: (one * (256 - share) + other * share) / 256, a byte's share being
    // `shares[i]`.
    void FetchMixed(const u8* from, std::size_t next, const u8* shares, u8* to) const;

    // What the vector code works on: blocks of four parts of whole pixels each, of 16 bytes or one
    // less. Where each part's pixels lie within twice as many bytes, these are loaded and shuffled.
    static constexpr std::size_t kParts = 4;
    static constexpr std::size_t kPartBytes = 16;
    static constexpr std::size_t kBlockBytes = kParts * kPartBytes;
    static constexpr u8 kSecond = 0x80;
    struct Block {
        bool isNear;
        std::size_t begins[kParts];
        // Of each byte in what is loaded for its part: in the first 16, or in the second with
        // kSecond added.
        u8 places[kBlockBytes];
    };
    std::size_t PixelBytes() const { return pixelBytes_; }
    std::size_t Width() const { return width_; }
    std::size_t PartPixels() const { return partPixels_; }
    std::size_t BlockPixels() const { return kParts * partPixels_; }
    const Block* Blocks() const { return blocks_.Entries(); }
    // Copies `count` pixels from `x` on one by one.
    void CopyPixels(const u8* from, std::size_t x, std::size_t count, u8* to) const;

private:
    bool SetPart(const std::size_t* offsets, std::size_t& begin, u8* places) const;

    const std::size_t width_;
    const std::size_t pixelBytes_;
    const std::size_t partPixels_;
    const BlockTable<std::size_t> offsets_;
    const BlockTable<Block> blocks_;
};
