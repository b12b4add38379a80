#include "platform/base/byte_reader.h"
#include "platform/base/resource_file.h"

#include <cstdlib>
#include <tuple>

namespace {

constexpr u16 kCursorGroup = 2;
constexpr int kUsualSize = 32;
constexpr i32 kLargestSize = 256;
constexpr u32 kOpaque = 0xFF000000;

struct DecodedCursor {
    CursorImage image;
    unsigned bits = 0;
};

struct Pixels {
    std::span<const u8> palette, colours, mask;
    i32 width, height;
    unsigned bits;
};

std::size_t RowBytes(i32 width, unsigned bits) {
    return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
}

u32 Bgr(std::span<const u8> bytes) {
    return static_cast<u32>(bytes[0] | bytes[1] << 8 | bytes[2] << 16);
}

// The field of 1, 4 or 8 bits with number `x` in a row; the leftmost lies in a byte's high bits.
unsigned PackedField(std::span<const u8> row, std::size_t x, unsigned bits) {
    const std::size_t bit = x * bits;
    return static_cast<unsigned>(row[bit / 8] >> (8 - bits - bit % 8)) & ((1u << bits) - 1);
}

u32 ColourAt(const Pixels& pixels, std::size_t x, std::size_t y) {
    const auto row = pixels.colours.subspan(y * RowBytes(pixels.width, pixels.bits));
    if (pixels.bits >= 24) {
        const std::size_t bytes = pixels.bits / 8;
        const auto pixel = row.subspan(x * bytes, bytes);
        return Bgr(pixel) | (bytes == 4 ? static_cast<u32>(pixel[3]) << 24 : 0);
    }
    const std::size_t entry = PackedField(row, x, pixels.bits) * std::size_t{4};
    return entry + 4 <= pixels.palette.size() ? Bgr(pixels.palette.subspan(entry, 4)) : 0;
}

bool HasAlpha(const Pixels& pixels) {
    if (pixels.bits != 32) {
        return false;
    }
    for (std::size_t i = 3; i < pixels.colours.size(); i += 4) {
        if (pixels.colours[i] != 0) {
            return true;
        }
    }
    return false;
}

// Masked pixels are transparent. Those that would invert the screen are black instead.
u32 MaskedPixel(const Pixels& pixels, std::size_t x, std::size_t y) {
    const u32 colour = ColourAt(pixels, x, y) & ~kOpaque;
    const auto row = pixels.mask.subspan(y * RowBytes(pixels.width, 1));
    if (PackedField(row, x, 1) == 0) {
        return kOpaque | colour;
    }
    return colour == 0 ? 0 : kOpaque;
}

void ComposePixels(const Pixels& pixels, std::vector<u32>& argb) {
    const bool alpha = HasAlpha(pixels);
    const auto width = static_cast<std::size_t>(pixels.width);
    argb.reserve(width * static_cast<std::size_t>(pixels.height));
    for (auto y = static_cast<std::size_t>(pixels.height); y-- > 0;) {
        for (std::size_t x = 0; x < width; ++x) {
            argb.push_back(alpha ? ColourAt(pixels, x, y) : MaskedPixel(pixels, x, y));
        }
    }
}

std::optional<DecodedCursor> DecodeCursor(std::span<const u8> resource) {
    ByteReader reader(resource);
    DecodedCursor cursor{};
    cursor.image.hotX = reader.U16();
    cursor.image.hotY = reader.U16();
    const u32 headerBytes = reader.U32();
    Pixels pixels{};
    pixels.width = reader.I32();
    const i32 bothHeights = reader.I32(); // the colours' rows and the mask's
    reader.U16();
    pixels.bits = reader.U16();
    const u32 compression = reader.U32();
    reader.Take(3 * sizeof(u32));
    const u32 coloursUsed = reader.U32();
    reader.U32();

    pixels.height = bothHeights / 2;
    const bool depthKnown = pixels.bits == 1 || pixels.bits == 4 || pixels.bits == 8 ||
                            pixels.bits == 24 || pixels.bits == 32;
    if (headerBytes != sizeof(BITMAPINFOHEADER) || compression != 0 || !depthKnown ||
        pixels.width < 1 || pixels.width > kLargestSize || pixels.height < 1 ||
        pixels.height > kLargestSize) {
        return std::nullopt;
    }
    const u64 entries = coloursUsed == 0 && pixels.bits <= 8 ? 1u << pixels.bits : coloursUsed;
    const auto rows = static_cast<std::size_t>(pixels.height);
    pixels.palette = reader.Take(entries * 4);
    pixels.colours = reader.Take(rows * RowBytes(pixels.width, pixels.bits));
    pixels.mask = reader.Take(rows * RowBytes(pixels.width, 1));
    if (reader.Failed()) {
        return std::nullopt;
    }
    cursor.bits = pixels.bits;
    cursor.image.width = pixels.width;
    cursor.image.height = pixels.height;
    ComposePixels(pixels, cursor.image.argb);
    return cursor;
}

// Nearest to the usual size first, then most colours.
bool IsBetter(const DecodedCursor& one, const DecodedCursor& other) {
    const auto rank = [](const DecodedCursor& cursor) {
        return std::tuple(std::abs(cursor.image.width - kUsualSize), 32 - cursor.bits);
    };
    return rank(one) < rank(other);
}

} // namespace

std::optional<CursorImage> LoadCursorImage(HINSTANCE module, u16 id) {
    ByteReader group(FindResourceBytes(module, kResourceGroupCursor, id));
    group.U16();
    if (group.U16() != kCursorGroup) {
        return std::nullopt;
    }
    std::optional<DecodedCursor> best;
    for (u16 count = group.U16(); count > 0; --count) {
        group.Take(12); // size, depth and length, which the image tells again
        const u16 imageId = group.U16();
        if (group.Failed()) {
            break;
        }
        auto cursor = DecodeCursor(FindResourceBytes(module, kResourceCursor, imageId));
        if (cursor && (!best || IsBetter(*cursor, *best))) {
            best = std::move(cursor);
        }
    }
    if (!best) {
        return std::nullopt;
    }
    return std::move(best->image);
}
