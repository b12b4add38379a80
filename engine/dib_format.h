// The packed DIB as bytes: strides, offsets, the grey rule, and the view that kernels work on.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

constexpr u32 kDibHeaderBytes = sizeof(DibHeader);
constexpr u32 kPaletteEntryBytes = 4;
constexpr u32 kGreyPaletteEntries = 256;

enum class ImageClass : i32 {
    None = 0,
    Grey = 1,
    Colour = 2,
    Palette8 = 3,
    Palette4 = 4,
    Mono = 5
};

// Bytes of a row with its padding to a multiple of 4.
constexpr u64 RowStride(u32 width, u32 bits) {
    return (static_cast<u64>(width) * bits + 31) / 32 * 4;
}

// A checked view of a DIB in a locked block: every row and palette entry that it names lies inside
// the block.
struct DibView {
    const u8* block = nullptr;
    i32 width = 0;
    i32 height = 0;
    u32 bits = 0;
    ImageClass imageClass = ImageClass::None;
    u32 paletteEntries = 0;   // 0 at 24 bits
    std::size_t head = 0;     // bytes in front of the pixels
    std::size_t stride = 0;   // bytes from row to row
    std::size_t rowBytes = 0; // bytes of a row that hold pixels
    std::size_t size = 0;     // bytes of head and rows

    const u8* Palette() const { return block + kDibHeaderBytes; }
    const u8* Row(i32 y) const { return block + head + static_cast<std::size_t>(y) * stride; }
};

// Views the `blockBytes` bytes at `block`. False for a block that lies: a length of header other
// than 40, a size below 1, a depth other than 24, 8, 4 or 1, or rows or palette beyond the block's
// end.
bool ViewDib(const u8* block, std::size_t blockBytes, DibView& view);

// The image class of a header with its palette in a block of `blockBytes` bytes: grey is an 8-bit
// picture of exactly 256 entries with entry i being (i, i, i), whatever its reserved bytes hold.
ImageClass ClassifyDibBytes(const u8* block, std::size_t blockBytes);
