// BMP files of 1, 4, 8 and 24 bits, uncompressed, without any change of palette or depth.
#include "pictures/formats.h"
#include "pictures/whole_file.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr u32 kFileHeaderBytes = 14;
constexpr u32 kCoreHeaderBytes = 12;
// Headers of later versions begin with the 40 bytes of the first and add fields behind them.
constexpr u32 kHeaderSizes[] = {kDibHeaderBytes, 52, 56, 108, 124};

// A file's head in one shape, whatever header it carries.
struct BmpHead {
    DibHeader header = {}; // with the real count of palette entries
    u32 paletteOffset = 0; // in the file
    u32 paletteEntryBytes = 0;
    u32 pixelOffset = 0; // in the file
    u32 height = 0;
    bool topDown = false;
};

template <class Value>
Value FieldAt(const u8* bytes, std::size_t offset) {
    Value value;
    std::memcpy(&value, bytes + offset, sizeof value);
    return value;
}

bool ReadAt(std::FILE* stream, u64 offset, void* bytes, std::size_t count) {
    return fseeko(stream, static_cast<off_t>(offset), SEEK_SET) == 0 &&
           std::fread(bytes, 1, count, stream) == count;
}

PictureResult ReadHeader(const PictureFile& file, u32 headerBytes, BmpHead& head) {
    if (headerBytes == kCoreHeaderBytes) {
        u8 core[kCoreHeaderBytes];
        if (!ReadAt(file.stream, kFileHeaderBytes, core, sizeof core)) {
            return ReadFailure(file.stream);
        }
        head.header.biWidth = FieldAt<u16>(core, 4);
        head.header.biHeight = FieldAt<u16>(core, 6);
        head.header.biBitCount = FieldAt<u16>(core, 10);
        head.paletteEntryBytes = 3;
        return PictureResult::Ok;
    }
    if (std::find(std::begin(kHeaderSizes), std::end(kHeaderSizes), headerBytes) ==
        std::end(kHeaderSizes)) {
        return PictureResult::UnsupportedKind;
    }
    if (!ReadAt(file.stream, kFileHeaderBytes, &head.header, sizeof head.header)) {
        return ReadFailure(file.stream);
    }
    head.paletteEntryBytes = kPaletteEntryBytes;
    return PictureResult::Ok;
}

PictureResult CheckHeader(BmpHead& head) {
    DibHeader& header = head.header;
    const u32 bits = header.biBitCount;
    if (bits == 16 || bits == 32 || bits == 2) {
        return PictureResult::UnsupportedBmpDepth;
    }
    if (header.biCompression != 0) {
        return PictureResult::CompressedBmp;
    }
    if (bits != 1 && bits != 4 && bits != 8 && bits != 24) {
        return PictureResult::Damaged;
    }
    head.topDown = header.biHeight < 0;
    head.height =
        head.topDown ? 0u - static_cast<u32>(header.biHeight) : static_cast<u32>(header.biHeight);
    if (header.biWidth <= 0 || head.height == 0 || head.height > INT32_MAX) {
        return PictureResult::Damaged;
    }
    const u32 full = 1u << bits;
    if (bits == 24) {
        header.biClrUsed = 0; // a palette here is only a hint for small displays
    } else if (header.biClrUsed == 0 || header.biClrUsed > full) {
        header.biClrUsed = full;
    }
    return PictureResult::Ok;
}

PictureResult ReadHead(const PictureFile& file, BmpHead& head) {
    u8 start[kFileHeaderBytes + 4];
    if (!ReadAt(file.stream, 0, start, sizeof start)) {
        return ReadFailure(file.stream);
    }
    head.pixelOffset = FieldAt<u32>(start, 10);
    const auto headerBytes = FieldAt<u32>(start, kFileHeaderBytes);
    PictureResult result = ReadHeader(file, headerBytes, head);
    if (result == PictureResult::Ok) {
        result = CheckHeader(head);
    }
    if (result != PictureResult::Ok) {
        return result;
    }
    head.paletteOffset = kFileHeaderBytes + headerBytes;
    const u64 headEnd = head.paletteOffset + u64{head.header.biClrUsed} * head.paletteEntryBytes;
    if (head.pixelOffset < headEnd) {
        return PictureResult::Damaged;
    }
    const u64 stride = RowStride(static_cast<u32>(head.header.biWidth), head.header.biBitCount);
    const bool whole =
        head.pixelOffset <= file.bytes && stride <= (file.bytes - head.pixelOffset) / head.height;
    return whole ? PictureResult::Ok : PictureResult::Truncated;
}

bool ReadPalette(const PictureFile& file, const BmpHead& head, u8* palette) {
    const u32 entries = head.header.biClrUsed;
    u8 bytes[256 * kPaletteEntryBytes];
    if (entries == 0) {
        return true;
    }
    if (!ReadAt(file.stream, head.paletteOffset, bytes,
                std::size_t{entries} * head.paletteEntryBytes)) {
        return false;
    }
    for (u32 entry = 0; entry < entries; ++entry) {
        std::memcpy(palette + entry * kPaletteEntryBytes, bytes + entry * head.paletteEntryBytes,
                    head.paletteEntryBytes);
    }
    return true;
}

// Turns the rows of a top-down picture and clears what a file may have left in their padding.
void TidyRows(const DibView& view, u8* rows, bool topDown) {
    const auto height = static_cast<u32>(view.height);
    for (u32 y = 0; topDown && y < height / 2; ++y) {
        u8* upper = rows + y * view.stride;
        std::swap_ranges(upper, upper + view.stride, rows + (height - 1 - y) * view.stride);
    }
    for (u32 y = 0; y < height; ++y) {
        u8* row = rows + y * view.stride;
        std::fill(row + view.rowBytes, row + view.stride, u8{0});
    }
}

} // namespace

PictureResult ReadBmp(const PictureFile& file, OwnedBlock& dib) {
    BmpHead head;
    PictureResult result = ReadHead(file, head);
    if (result != PictureResult::Ok) {
        return result;
    }
    const DibHeader& found = head.header;
    OwnedBlock block;
    result = NewDib(static_cast<u32>(found.biWidth), head.height, found.biBitCount, found.biClrUsed,
                    block);
    if (result != PictureResult::Ok) {
        return result;
    }
    const BlockLock lock(block.Handle());
    auto* header = reinterpret_cast<DibHeader*>(lock.Bytes());
    header->biXPelsPerMeter = found.biXPelsPerMeter;
    header->biYPelsPerMeter = found.biYPelsPerMeter;
    header->biClrImportant = found.biBitCount == 24 ? 0 : found.biClrImportant;
    DibView view;
    if (!ViewDib(lock.Bytes(), BlockSize(block.Handle()), view)) {
        return PictureResult::Damaged;
    }
    u8* rows = lock.Bytes() + view.head;
    if (!ReadPalette(file, head, lock.Bytes() + kDibHeaderBytes) ||
        !ReadAt(file.stream, head.pixelOffset, rows, view.size - view.head)) {
        return ReadFailure(file.stream);
    }
    TidyRows(view, rows, head.topDown);
    dib = std::move(block);
    return PictureResult::Ok;
}

PictureResult WriteBmp(std::FILE* stream, const DibView& view) {
    const FilePalette palette = view.bits == 24 ? FilePalette{} : PaletteForFile(view);
    const u32 paletteBytes = palette.count * kPaletteEntryBytes;
    const std::size_t pixels = view.size - view.head;
    const u32 pixelOffset = kFileHeaderBytes + kDibHeaderBytes + paletteBytes;

    // Sizes beyond 32 bits are written as 0, which readers take from the picture's width and
    // height.
    const u64 fileBytes = u64{pixelOffset} + pixels;
    const u32 size = fileBytes > UINT32_MAX ? 0 : static_cast<u32>(fileBytes);
    u8 fileHeader[kFileHeaderBytes] = {'B', 'M'};
    std::memcpy(fileHeader + 2, &size, sizeof size);
    std::memcpy(fileHeader + 10, &pixelOffset, sizeof pixelOffset);

    auto header = FieldAt<DibHeader>(view.block, 0);
    header.biPlanes = 1;
    header.biCompression = 0;
    header.biSizeImage = fileBytes > UINT32_MAX ? 0 : static_cast<u32>(pixels);
    header.biClrUsed = palette.count;

    const bool written =
        std::fwrite(fileHeader, 1, sizeof fileHeader, stream) == sizeof fileHeader &&
        std::fwrite(&header, 1, sizeof header, stream) == sizeof header &&
        std::fwrite(palette.entries.data(), 1, paletteBytes, stream) == paletteBytes &&
        std::fwrite(view.Row(0), 1, pixels, stream) == pixels;
    return written ? PictureResult::Ok : FileFailure(PictureResult::CannotWrite);
}
