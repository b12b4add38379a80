// Images and masks are paired as they are stored: pixel x of row y of one with pixel x of row y of
// the other, rows counted from the bottom. Where a mask is smaller than its image, the rest of the
// image does not show.
#include "engine/block.h"
#include "rkdll/canvas.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using PaletteTable = std::array<std::array<u8, 3>, 256>;

// A DIB that stays locked while it is looked at.
struct LockedDib {
    BlockLock lock;
    DibView view;
    bool valid;

    explicit LockedDib(DibHandle dib)
        : lock(dib), valid(lock && ViewDib(lock.Bytes(), BlockSize(dib), view)) {}
};

struct Range {
    i32 begin, end;
};

// Part of a line of `length` pixels at `place` that falls on a canvas of `canvasLength` pixels.
Range VisibleRange(i64 place, i32 length, i32 canvasLength) {
    return {static_cast<i32>(std::clamp<i64>(-place, 0, length)),
            static_cast<i32>(std::clamp<i64>(canvasLength - place, 0, length))};
}

// Indices beyond the palette are black.
PaletteTable ReadPalette(const DibView& view) {
    PaletteTable table{};
    const std::size_t entries = std::min<std::size_t>(view.paletteEntries, table.size());
    for (std::size_t i = 0; i < entries; ++i) {
        std::memcpy(table[i].data(), view.Palette() + i * kPaletteEntryBytes, 3);
    }
    return table;
}

std::size_t IndexAt(const u8* row, std::size_t x, u32 bits) {
    const std::size_t bit = x * bits;
    return row[bit / 8] >> (8 - bits - bit % 8) & ((1u << bits) - 1);
}

u8 Blend(u32 over, u32 under, u32 coverage) {
    return static_cast<u8>((over * coverage + under * (255 - coverage) + 127) / 255);
}

// `colorAt` gives the three bytes of pixel x. A null mask is opaque.
template <class ColorAt>
void BlendRow(ColorAt colorAt, const u8* mask, Range columns, u8* out) {
    for (i32 x = columns.begin; x < columns.end; ++x, out += 3) {
        const u8* color = colorAt(static_cast<std::size_t>(x));
        const u32 coverage = mask == nullptr ? 255 : mask[x];
        for (int channel = 0; channel < 3; ++channel) {
            out[channel] = Blend(color[channel], out[channel], coverage);
        }
    }
}

} // namespace

void BlendLayer(const Canvas& canvas, const LayerEntry& layer) {
    const LockedDib image(layer.image);
    const LockedDib mask(layer.mask);
    if (!image.valid) {
        return;
    }
    const DibView& view = image.view;
    const bool masked = mask.valid && mask.view.bits == 8;
    const i64 bottom = i64{canvas.height} - layer.top - view.height;
    Range rows = VisibleRange(bottom, view.height, canvas.height);
    Range columns = VisibleRange(layer.left, view.width, canvas.width);
    if (masked) {
        rows.end = std::min(rows.end, mask.view.height);
        columns.end = std::min(columns.end, mask.view.width);
    }
    if (columns.begin >= columns.end) {
        return;
    }
    const PaletteTable palette = ReadPalette(view);
    const std::size_t firstByte = static_cast<std::size_t>(i64{layer.left} + columns.begin) * 3;
    for (i32 y = rows.begin; y < rows.end; ++y) {
        const u8* row = view.Row(y);
        const u8* coverage = masked ? mask.view.Row(y) : nullptr;
        u8* out = canvas.Row(static_cast<i32>(bottom + y)) + firstByte;
        if (view.bits == 24) {
            BlendRow([row](std::size_t x) { return row + 3 * x; }, coverage, columns, out);
        } else {
            const auto colorAt = [&](std::size_t x) {
                return palette[IndexAt(row, x, view.bits)].data();
            };
            BlendRow(colorAt, coverage, columns, out);
        }
    }
}
