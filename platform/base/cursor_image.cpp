#include "platform/base/byte_reader.h"
#include "platform/base/resource_dib.h"
#include "platform/base/resource_file.h"

#include <cstdlib>
#include <tuple>

namespace {

constexpr u16 kCursorGroup = 2;
constexpr int kUsualSize = 32;
constexpr u32 kOpaque = 0xFF000000;

struct DecodedCursor {
    CursorImage image;
    unsigned bits = 0;
};

bool HasAlpha(const ResourceDib& pixels) {
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
u32 MaskedPixel(const ResourceDib& pixels, const ResourceDib& mask, std::size_t x, std::size_t y) {
    const u32 colour = ColourAt(pixels, x, y) & ~kOpaque;
    if (PackedFieldAt(mask, x, y) == 0) {
        return kOpaque | colour;
    }
    return colour == 0 ? 0 : kOpaque;
}

void ComposePixels(const ResourceDib& pixels, const ResourceDib& mask, std::vector<u32>& argb) {
    const bool alpha = HasAlpha(pixels);
    const auto width = static_cast<std::size_t>(pixels.width);
    argb.reserve(width * static_cast<std::size_t>(pixels.height));
    for (auto y = static_cast<std::size_t>(pixels.height); y-- > 0;) {
        for (std::size_t x = 0; x < width; ++x) {
            argb.push_back(alpha ? ColourAt(pixels, x, y) : MaskedPixel(pixels, mask, x, y));
        }
    }
}

std::optional<DecodedCursor> DecodeCursor(std::span<const u8> resource) {
    ByteReader reader(resource);
    DecodedCursor cursor{};
    cursor.image.hotX = reader.U16();
    cursor.image.hotY = reader.U16();
    const auto pixels = ReadResourceDib(reader, 2); // the colours' rows and the mask's
    if (!pixels) {
        return std::nullopt;
    }
    ResourceDib mask{{}, {}, pixels->width, pixels->height, 1};
    mask.colours = reader.Take(static_cast<std::size_t>(mask.height) * RowBytes(mask));
    if (reader.Failed()) {
        return std::nullopt;
    }
    cursor.bits = pixels->bits;
    cursor.image.width = pixels->width;
    cursor.image.height = pixels->height;
    ComposePixels(*pixels, mask, cursor.image.argb);
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
