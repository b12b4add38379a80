#include "engine/dib_format.h"

#include <cstring>

namespace {

constexpr u32 kHeaderLength = 40;
constexpr std::size_t kGreyHead = kDibHeaderBytes + kGreyPaletteEntries * kPaletteEntryBytes;

bool ReadHeader(const u8* block, std::size_t blockBytes, DibHeader& header) {
    if (block == nullptr || blockBytes < kDibHeaderBytes) {
        return false;
    }
    std::memcpy(&header, block, sizeof header);
    return true;
}

bool HasGreyPalette(const u8* block, std::size_t blockBytes, const DibHeader& header) {
    if (header.biClrUsed != kGreyPaletteEntries || blockBytes < kGreyHead) {
        return false;
    }
    const u8* entry = block + kDibHeaderBytes;
    for (u32 i = 0; i < kGreyPaletteEntries; ++i, entry += kPaletteEntryBytes) {
        if (entry[0] != i || entry[1] != i || entry[2] != i) {
            return false;
        }
    }
    return true;
}

ImageClass ClassOf(const u8* block, std::size_t blockBytes, const DibHeader& header) {
    switch (header.biBitCount) {
    case 24:
        return ImageClass::Colour;
    case 8:
        return HasGreyPalette(block, blockBytes, header) ? ImageClass::Grey : ImageClass::Palette8;
    case 4:
        return ImageClass::Palette4;
    case 1:
        return ImageClass::Mono;
    default:
        return ImageClass::None;
    }
}

} // namespace

bool ViewDib(const u8* block, std::size_t blockBytes, DibView& view) {
    DibHeader header;
    if (!ReadHeader(block, blockBytes, header) || header.biSize != kHeaderLength ||
        header.biWidth < 1 || header.biHeight < 1) {
        return false;
    }
    const ImageClass imageClass = ClassOf(block, blockBytes, header);
    if (imageClass == ImageClass::None) {
        return false;
    }
    // None of these overflows 64 bits, whatever the header holds.
    const u32 bits = header.biBitCount;
    const u32 paletteEntries = imageClass == ImageClass::Colour ? 0 : header.biClrUsed;
    const u64 head = kDibHeaderBytes + u64{paletteEntries} * kPaletteEntryBytes;
    const u64 stride = RowStride(static_cast<u32>(header.biWidth), bits);
    const u64 size = head + stride * static_cast<u64>(header.biHeight);
    if (size > blockBytes) {
        return false;
    }
    view.block = block;
    view.width = header.biWidth;
    view.height = header.biHeight;
    view.bits = bits;
    view.imageClass = imageClass;
    view.paletteEntries = paletteEntries;
    view.head = static_cast<std::size_t>(head);
    view.stride = static_cast<std::size_t>(stride);
    view.rowBytes = static_cast<std::size_t>((static_cast<u64>(header.biWidth) * bits + 7) / 8);
    view.size = static_cast<std::size_t>(size);
    return true;
}

ImageClass ClassifyDibBytes(const u8* block, std::size_t blockBytes) {
    DibHeader header;
    return ReadHeader(block, blockBytes, header) ? ClassOf(block, blockBytes, header)
                                                 : ImageClass::None;
}
