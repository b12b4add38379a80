#include "platform/base/resource_dib.h"

#include "platform/win32.h"

namespace {

constexpr i32 kLargestSize = 256;

u32 Bgr(std::span<const u8> bytes) {
    return static_cast<u32>(bytes[0] | bytes[1] << 8 | bytes[2] << 16);
}

bool IsKnownDepth(unsigned bits) {
    return bits == 1 || bits == 4 || bits == 8 || bits == 24 || bits == 32;
}

std::span<const u8> RowAt(const ResourceDib& dib, std::size_t y) {
    return dib.colours.subspan(y * RowBytes(dib));
}

} // namespace

std::optional<ResourceDib> ReadResourceDib(ByteReader& reader, i32 timesCounted) {
    const u32 headerBytes = reader.U32();
    ResourceDib dib{};
    dib.width = reader.I32();
    dib.height = reader.I32() / timesCounted;
    reader.U16();
    dib.bits = reader.U16();
    const u32 compression = reader.U32();
    reader.Take(3 * sizeof(u32));
    const u32 coloursUsed = reader.U32();
    reader.U32();
    if (headerBytes != sizeof(BITMAPINFOHEADER) || compression != 0 || !IsKnownDepth(dib.bits) ||
        dib.width < 1 || dib.width > kLargestSize || dib.height < 1 || dib.height > kLargestSize) {
        return std::nullopt;
    }
    const u64 entries = coloursUsed == 0 && dib.bits <= 8 ? 1u << dib.bits : coloursUsed;
    dib.palette = reader.Take(entries * 4);
    dib.colours = reader.Take(static_cast<std::size_t>(dib.height) * RowBytes(dib));
    if (reader.Failed()) {
        return std::nullopt;
    }
    return dib;
}

std::size_t RowBytes(const ResourceDib& dib) {
    return (static_cast<std::size_t>(dib.width) * dib.bits + 31) / 32 * 4;
}

unsigned PackedFieldAt(const ResourceDib& dib, std::size_t x, std::size_t y) {
    const std::size_t bit = x * dib.bits;
    const unsigned byte = RowAt(dib, y)[bit / 8];
    return byte >> (8 - dib.bits - bit % 8) & ((1u << dib.bits) - 1);
}

u32 ColourAt(const ResourceDib& dib, std::size_t x, std::size_t y) {
    if (dib.bits >= 24) {
        const std::size_t bytes = dib.bits / 8;
        const auto pixel = RowAt(dib, y).subspan(x * bytes, bytes);
        return Bgr(pixel) | (bytes == 4 ? static_cast<u32>(pixel[3]) << 24 : 0);
    }
    const std::size_t entry = PackedFieldAt(dib, x, y) * std::size_t{4};
    return entry + 4 <= dib.palette.size() ? Bgr(dib.palette.subspan(entry, 4)) : 0;
}
