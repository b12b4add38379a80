#include "image/masked_effect.h"

#include "engine/block_copy.h"
#include "engine/dib_format.h"
#include "engine/engine.h"

#include <algorithm>
#include <array>

namespace {

// The effects that move or mix pixels: a pixel that the mask hides must not bleed into its
// neighbours, so these work on the image multiplied by the mask, and on the mask as well.
constexpr EffectId kMaskedRoadEffects[] = {9, 17, 18, 19, 52, 53, 56, 57, 64, 65, 66};

// n / m for n up to 255 * 255 is n * kReciprocals[m] >> 24, exactly.
constexpr std::array<u32, 256> kReciprocals = [] {
    std::array<u32, 256> reciprocals = {};
    for (u32 m = 1; m < 256; ++m) {
        reciprocals[m] = ((1u << 24) + m - 1) / m;
    }
    return reciprocals;
}();

struct Pixels {
    u8* first = nullptr;
    std::size_t stride = 0;
    i32 width = 0;
    i32 height = 0;
    u32 bits = 0;
};

// Pixels start behind `biClrUsed` palette entries here, also at 24 bits. False for a depth other
// than 24 or 8 and for rows that do not lie inside the block.
bool FindPixels(const BlockLock& lock, std::size_t blockBytes, Pixels& pixels) {
    if (!lock || blockBytes < kDibHeaderBytes) {
        return false;
    }
    const auto& header = *reinterpret_cast<const DibHeader*>(lock.Bytes());
    if (header.biWidth < 1 || header.biHeight < 1 ||
        (header.biBitCount != 24 && header.biBitCount != 8)) {
        return false;
    }
    const u64 head = kDibHeaderBytes + u64{header.biClrUsed} * kPaletteEntryBytes;
    const u64 stride = RowStride(static_cast<u32>(header.biWidth), header.biBitCount);
    if (head + stride * static_cast<u64>(header.biHeight) > blockBytes) {
        return false;
    }
    pixels = {lock.Bytes() + head, static_cast<std::size_t>(stride), header.biWidth,
              header.biHeight, header.biBitCount};
    return true;
}

// Calls `onPixel(bytes, count, m)` for each pixel of `image` with its mask byte. False, with
// nothing called, when the two do not fit.
template <class OnPixel>
bool WalkWithMask(DibHandle image, DibHandle mask, OnPixel onPixel) {
    const BlockLock imageLock(image);
    const BlockLock maskLock(mask);
    Pixels to;
    Pixels by;
    if (!FindPixels(imageLock, BlockSize(image), to) ||
        !FindPixels(maskLock, BlockSize(mask), by) || by.bits != 8 || to.width != by.width ||
        to.height != by.height) {
        return false;
    }
    const u32 bytesPerPixel = to.bits / 8;
    for (i32 y = 0; y < to.height; ++y) {
        u8* pixel = to.first + static_cast<std::size_t>(y) * to.stride;
        const u8* m = by.first + static_cast<std::size_t>(y) * by.stride;
        for (i32 x = 0; x < to.width; ++x, pixel += bytesPerPixel, ++m) {
            onPixel(pixel, bytesPerPixel, *m);
        }
    }
    return true;
}

} // namespace

u8 ApplyEffectToLayer(LayerEntry* entry, EffectId id, const void* params, u8 keepOriginal,
                      u8 ignoreMask) {
    if (std::find(std::begin(kMaskedRoadEffects), std::end(kMaskedRoadEffects), id) !=
        std::end(kMaskedRoadEffects)) {
        return ApplyEffectMasked(entry, id, params, keepOriginal, ignoreMask);
    }
    return ApplyEffectPlain(entry, id, params, keepOriginal);
}

u8 ApplyEffectPlain(LayerEntry* entry, EffectId id, const void* params, u8 keepOriginal) {
    if (entry == nullptr || entry->image == 0) {
        return 0;
    }
    const DibHandle changed = RunEffect(entry->image, id, params);
    if (changed == 0) {
        return 0;
    }
    if (keepOriginal == 0) {
        FreeBlock(entry->image);
    }
    entry->image = changed;
    return 1;
}

u8 ApplyEffectMasked(LayerEntry* entry, EffectId id, const void* params, u8 keepOriginal,
                     u8 ignoreMask) {
    if (entry == nullptr) {
        return 0;
    }
    if (entry->image == 0 || entry->mask == 0) {
        return 1;
    }
    if (ignoreMask != 0) {
        return ApplyEffectPlain(entry, id, params, keepOriginal);
    }
    const OwnedBlock premultiplied(PremultiplyByMask(entry->image, entry->mask));
    if (!premultiplied) {
        return 1;
    }
    OwnedBlock image(RunEffect(premultiplied.Handle(), id, params));
    if (!image) {
        return 1;
    }
    OwnedBlock mask(RunEffect(entry->mask, id, params));
    if (!mask) {
        return 1;
    }
    DivideByMask(image.Handle(), mask.Handle());
    if (keepOriginal == 0) {
        FreeBlock(entry->image);
        FreeBlock(entry->mask);
    }
    entry->image = image.HandOver();
    entry->mask = mask.HandOver();
    return 1;
}

DibHandle PremultiplyByMask(DibHandle image, DibHandle mask) {
    OwnedBlock copy = CopyBlock(image);
    const bool fits = WalkWithMask(copy.Handle(), mask, [](u8* pixel, u32 bytes, u32 m) {
        for (u32 i = 0; i < bytes; ++i) {
            pixel[i] = static_cast<u8>(pixel[i] * m / 255);
        }
    });
    return fits ? copy.HandOver() : 0;
}

i32 DivideByMask(DibHandle image, DibHandle mask) {
    return WalkWithMask(image, mask, [](u8* pixel, u32 bytes, u32 m) {
        if (m == 0) {
            return; // hidden: the colour stays what the effect made of it
        }
        for (u32 i = 0; i < bytes; ++i) {
            // A colour above its mask byte wraps, not clamps: only the low 8 bits are kept.
            pixel[i] = static_cast<u8>(u64{pixel[i]} * 255 * kReciprocals[m] >> 24);
        }
    });
}
