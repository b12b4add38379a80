// Making DIBs, and their rows in one shape whatever their depth.
#pragma once

#include "engine/block.h"
#include "engine/dib_format.h"
#include "pictures/pictures.h"

#include <array>

// False when a block of `bytes` bytes is more than this machine's memory, whatever its allocator
// promises.
bool FitsMemory(u64 bytes);

// A new DIB with its header filled and zeroes for palette and pixels.
PictureResult NewDib(u64 width, u64 height, u32 bits, u32 paletteEntries, OwnedBlock& dib);

// The same with 8 bits and the grey palette.
PictureResult NewGreyDib(u64 width, u64 height, OwnedBlock& dib);

// The palette as a file needs it: an entry for every index that the pixels hold, black where the
// DIB has none, and never empty.
struct FilePalette {
    u32 count = 0;
    std::array<u8, 256 * kPaletteEntryBytes> entries = {};
};
FilePalette PaletteForFile(const DibView& view);

// Row `y` as blue, green, red for each pixel: 3 x width bytes. An index beyond the palette is
// black.
void ReadRowAsBgr(const DibView& view, i32 y, u8* bgr);
