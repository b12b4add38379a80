#include "pictures/dib_rows.h"

#include "platform/system/system.h"

#include <algorithm>
#include <cstring>

namespace {

u32 PixelIndex(const u8* row, u32 bits, u32 x) {
    switch (bits) {
    case 1:
        return (row[x / 8] >> (7 - x % 8)) & 1u;
    case 4:
        return x % 2 == 0 ? row[x / 2] >> 4 : row[x / 2] & 15u;
    default:
        return row[x];
    }
}

u32 LargestIndex(const DibView& view) {
    u32 largest = 0;
    for (i32 y = 0; y < view.height; ++y) {
        for (i32 x = 0; x < view.width; ++x) {
            largest = std::max(largest, PixelIndex(view.Row(y), view.bits, static_cast<u32>(x)));
        }
    }
    return largest;
}

} // namespace

bool FitsMemory(u64 bytes) {
    return bytes < PhysicalMemory();
}

PictureResult NewDib(u64 width, u64 height, u32 bits, u32 paletteEntries, OwnedBlock& dib) {
    if (width == 0 || height == 0) {
        return PictureResult::Damaged;
    }
    if (width > INT32_MAX || height > INT32_MAX) {
        return PictureResult::TooLarge;
    }
    const u64 head = kDibHeaderBytes + u64{paletteEntries} * kPaletteEntryBytes;
    const u64 pixels = RowStride(static_cast<u32>(width), bits) * height;
    if (!FitsMemory(head + pixels)) {
        return PictureResult::TooLarge;
    }
    OwnedBlock block(AllocateBlock(head + pixels));
    const BlockLock lock(block.Handle());
    if (!lock) {
        return PictureResult::TooLarge;
    }
    DibHeader header = {};
    header.biSize = kDibHeaderBytes;
    header.biWidth = static_cast<i32>(width);
    header.biHeight = static_cast<i32>(height);
    header.biPlanes = 1;
    header.biBitCount = static_cast<u16>(bits);
    header.biSizeImage = pixels > UINT32_MAX ? 0 : static_cast<u32>(pixels);
    header.biClrUsed = paletteEntries;
    std::memcpy(lock.Bytes(), &header, sizeof header);
    dib = std::move(block);
    return PictureResult::Ok;
}

PictureResult NewGreyDib(u64 width, u64 height, OwnedBlock& dib) {
    const PictureResult result = NewDib(width, height, 8, kGreyPaletteEntries, dib);
    if (result == PictureResult::Ok) {
        const BlockLock lock(dib.Handle());
        u8* entry = lock.Bytes() + kDibHeaderBytes;
        for (u32 level = 0; level < kGreyPaletteEntries; ++level, entry += kPaletteEntryBytes) {
            std::fill_n(entry, 3, static_cast<u8>(level));
        }
    }
    return result;
}

FilePalette PaletteForFile(const DibView& view) {
    FilePalette palette;
    const u32 full = 1u << view.bits;
    const u32 present = std::min(view.paletteEntries, full);
    std::memcpy(palette.entries.data(), view.Palette(), std::size_t{present} * kPaletteEntryBytes);
    palette.count = present == full ? full : std::max(present, LargestIndex(view) + 1);
    return palette;
}

void ReadRowAsBgr(const DibView& view, i32 y, u8* bgr) {
    const u8* row = view.Row(y);
    if (view.bits == 24) {
        std::memcpy(bgr, row, view.rowBytes);
        return;
    }
    static constexpr u8 kBlack[3] = {};
    for (u32 x = 0; x < static_cast<u32>(view.width); ++x, bgr += 3) {
        const u32 index = PixelIndex(row, view.bits, x);
        const bool known = index < view.paletteEntries;
        std::memcpy(bgr, known ? view.Palette() + index * kPaletteEntryBytes : kBlack, 3);
    }
}
