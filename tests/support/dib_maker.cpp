#include "tests/support/dib_maker.h"

#include <cstring>
#include <random>

namespace {

u16 BitsOf(ImageClass kind) {
    switch (kind) {
    case ImageClass::Colour:
        return 24;
    case ImageClass::Palette4:
        return 4;
    case ImageClass::Mono:
        return 1;
    default:
        return 8;
    }
}

u32 EntriesOf(ImageClass kind, u32 asked) {
    if (kind == ImageClass::Colour) {
        return 0;
    }
    const bool full = kind == ImageClass::Grey || asked == kFullPalette;
    return full ? 1u << BitsOf(kind) : asked;
}

std::vector<u8> BlankBytes(ImageClass kind, i32 width, i32 height, u32 paletteEntries) {
    const u32 entries = EntriesOf(kind, paletteEntries);
    const std::size_t head = kDibHeaderBytes + std::size_t{entries} * kPaletteEntryBytes;
    const auto stride = static_cast<std::size_t>(RowStride(static_cast<u32>(width), BitsOf(kind)));
    const std::size_t pixels = stride * static_cast<std::size_t>(height);
    std::vector<u8> bytes(head + pixels);
    DibHeader header = {};
    header.biSize = kDibHeaderBytes;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = BitsOf(kind);
    header.biClrUsed = entries;
    std::memcpy(bytes.data(), &header, sizeof header);
    for (u32 i = 0; kind == ImageClass::Grey && i < entries; ++i) {
        std::memset(bytes.data() + kDibHeaderBytes + std::size_t{i} * kPaletteEntryBytes,
                    static_cast<int>(i), 3);
    }
    return bytes;
}

template <class Random>
void FillRandomly(u8* first, std::size_t count, Random& random) {
    for (std::size_t i = 0; i < count; ++i) {
        first[i] = static_cast<u8>(random());
    }
}

// The bits behind the last pixel of a row that ends within a byte.
void ClearUnusedBits(u8* row, const DibView& view) {
    const u32 used = static_cast<u32>(static_cast<u64>(view.width) * view.bits % 8);
    if (used != 0) {
        u8& last = row[view.rowBytes - 1];
        last = static_cast<u8>(last & (0xFF00u >> used));
    }
}

} // namespace

OwnedBlock MakeDib(ImageClass kind, i32 width, i32 height, DibOptions options) {
    std::vector<u8> bytes = BlankBytes(kind, width, height, options.paletteEntries);
    DibView view;
    if (!ViewDib(bytes.data(), bytes.size(), view)) {
        return OwnedBlock();
    }
    std::mt19937 random(options.seed);

    DibHeader header;
    std::memcpy(&header, bytes.data(), sizeof header);
    header.biPlanes = static_cast<u16>(random());
    header.biCompression = static_cast<u32>(random());
    header.biSizeImage = static_cast<u32>(random());
    header.biXPelsPerMeter = static_cast<i32>(random() >> 1);
    header.biYPelsPerMeter = static_cast<i32>(random() >> 1);
    header.biClrImportant = static_cast<u32>(random());
    std::memcpy(bytes.data(), &header, sizeof header);

    u8* palette = bytes.data() + kDibHeaderBytes;
    for (u32 i = 0; i < view.paletteEntries; ++i) {
        const u32 fixed = kind == ImageClass::Grey ? 3 : 0;
        FillRandomly(palette + std::size_t{i} * kPaletteEntryBytes + fixed,
                     kPaletteEntryBytes - fixed, random);
    }
    for (i32 y = 0; y < height; ++y) {
        u8* row = bytes.data() + (view.Row(y) - view.block);
        FillRandomly(row, options.randomPadding ? view.stride : view.rowBytes, random);
        if (!options.randomPadding) {
            ClearUnusedBits(row, view);
        }
    }
    return MakeBlock(bytes);
}

OwnedBlock MakeBlankDib(ImageClass kind, i32 width, i32 height, u32 paletteEntries) {
    return MakeBlock(BlankBytes(kind, width, height, paletteEntries));
}

OwnedBlock MakeGreyDib(i32 width, const std::vector<u8>& levels) {
    const std::size_t columns = static_cast<std::size_t>(width);
    const i32 height = static_cast<i32>(levels.size() / columns);
    OwnedBlock dib = MakeBlankDib(ImageClass::Grey, width, height);
    const BlockLock lock(dib.Handle());
    u8* row = lock.Bytes() + kDibHeaderBytes + kGreyPaletteEntries * kPaletteEntryBytes;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        row[i / columns * RowStride(static_cast<u32>(width), 8) + i % columns] = levels[i];
    }
    return dib;
}

OwnedBlock MakeColourDib(i32 width, const std::vector<Bgr>& pixels) {
    const std::size_t columns = static_cast<std::size_t>(width);
    const i32 height = static_cast<i32>(pixels.size() / columns);
    OwnedBlock dib = MakeBlankDib(ImageClass::Colour, width, height);
    const BlockLock lock(dib.Handle());
    u8* row = lock.Bytes() + kDibHeaderBytes;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        std::memcpy(row + i / columns * RowStride(static_cast<u32>(width), 24) + i % columns * 3,
                    pixels[i].data(), 3);
    }
    return dib;
}

OwnedBlock MakeBlock(const std::vector<u8>& bytes) {
    OwnedBlock block(AllocateBlock(bytes.size()));
    const BlockLock lock(block.Handle());
    if (lock) {
        std::memcpy(lock.Bytes(), bytes.data(), bytes.size());
    }
    return block;
}

std::vector<u8> BytesOf(u32 block) {
    const BlockLock lock(block);
    return lock ? std::vector<u8>(lock.Bytes(), lock.Bytes() + BlockSize(block))
                : std::vector<u8>();
}

DibCopy::DibCopy(DibHandle dib)
    : bytes_(BytesOf(dib)), valid_(ViewDib(bytes_.data(), bytes_.size(), view_)) {}

DibHeader DibCopy::Header() const {
    DibHeader header;
    std::memcpy(&header, bytes_.data(), sizeof header);
    return header;
}

u32 DibCopy::At(i32 x, i32 y, u32 channel) const {
    const u8* row = view_.Row(y);
    const std::size_t column = static_cast<std::size_t>(x);
    switch (view_.bits) {
    case 24:
        return row[column * 3 + channel];
    case 8:
        return row[column];
    case 4:
        return row[column / 2] >> (column % 2 == 0 ? 4 : 0) & 15;
    default:
        return row[column / 8] >> (7 - column % 8) & 1;
    }
}

Bgr DibCopy::ColourAt(i32 x, i32 y) const {
    return {static_cast<u8>(At(x, y, 0)), static_cast<u8>(At(x, y, 1)),
            static_cast<u8>(At(x, y, 2))};
}

Bgr DibCopy::PaletteAt(u32 index) const {
    const u8* entry = view_.Palette() + std::size_t{index} * kPaletteEntryBytes;
    return {entry[0], entry[1], entry[2]};
}

std::vector<u8> DibCopy::Row(i32 y) const {
    const u32 bytesPerPixel = view_.bits == 24 ? 3 : 1;
    std::vector<u8> row;
    for (i32 x = 0; x < view_.width; ++x) {
        for (u32 channel = 0; channel < bytesPerPixel; ++channel) {
            row.push_back(static_cast<u8>(At(x, y, channel)));
        }
    }
    return row;
}
