// The uncompressed DIBs in resources, without a file's header: bitmaps, and the images of cursors.
#pragma once

#include "platform/base/byte_reader.h"

#include <optional>
#include <span>

struct ResourceDib {
    std::span<const u8> palette, colours; // the bottom row first
    i32 width, height;
    unsigned bits; // a pixel: 1, 4, 8, 24 or 32
};

// Reads header, palette and rows. The header counts each row `timesCounted` times. Nothing when the
// bytes do not hold what the header claims, or for a picture larger than any of ours.
std::optional<ResourceDib> ReadResourceDib(ByteReader& reader, i32 timesCounted);

std::size_t RowBytes(const ResourceDib& dib);

// The field of 1, 4 or 8 bits at a place; the leftmost lies in a byte's high bits.
unsigned PackedFieldAt(const ResourceDib& dib, std::size_t x, std::size_t y);

// 0xAARRGGBB, with an A of 0 below 32 bits. An index beyond the palette is black.
u32 ColourAt(const ResourceDib& dib, std::size_t x, std::size_t y);
