#include "pictures/layer_files.h"

#include <algorithm>
#include <vector>

namespace {

bool HasGreyPalette(const DibView& view) {
    const u8* entry = view.Palette();
    const u8* end = entry + std::size_t{view.paletteEntries} * kPaletteEntryBytes;
    for (; entry != end; entry += kPaletteEntryBytes) {
        if (entry[0] != entry[1] || entry[1] != entry[2]) {
            return false;
        }
    }
    return true;
}

// The weights of the channels in a colour's brightness, in 256ths.
u8 Brightness(const u8* bgr) {
    return static_cast<u8>((bgr[0] * 29 + bgr[1] * 150 + bgr[2] * 77) / 256);
}

// A new picture of the same size, grey or 24-bit.
PictureResult Convert(const OwnedBlock& source, bool grey, OwnedBlock& converted) {
    const BlockLock from(source.Handle());
    DibView view;
    if (!from || !ViewDib(from.Bytes(), BlockSize(source.Handle()), view)) {
        return PictureResult::NoPicture;
    }
    const auto width = static_cast<u32>(view.width);
    const auto height = static_cast<u32>(view.height);
    OwnedBlock made;
    const PictureResult result =
        grey ? NewGreyDib(width, height, made) : NewDib(width, height, 24, 0, made);
    if (result != PictureResult::Ok) {
        return result;
    }
    const BlockLock to(made.Handle());
    DibView target;
    if (!to || !ViewDib(to.Bytes(), BlockSize(made.Handle()), target)) {
        return PictureResult::TooLarge;
    }
    std::vector<u8> bgr(grey ? std::size_t{width} * 3 : 0);
    u8* row = to.Bytes() + target.head;
    for (i32 y = 0; y < view.height; ++y, row += target.stride) {
        ReadRowAsBgr(view, y, grey ? bgr.data() : row);
        for (u32 x = 0; grey && x < width; ++x) {
            row[x] = Brightness(bgr.data() + std::size_t{x} * 3);
        }
    }
    converted = std::move(made);
    return PictureResult::Ok;
}

bool ViewOf(const OwnedBlock& dib, const BlockLock& lock, DibView& view) {
    return lock && ViewDib(lock.Bytes(), BlockSize(dib.Handle()), view);
}

PictureResult ReadBoth(const char* path, OwnedBlock& image, OwnedBlock& alpha) {
    DibHandle dib = 0;
    DibHandle transparency = 0;
    const PictureResult result = ReadPicture(path, dib, &transparency);
    image = OwnedBlock(dib);
    alpha = OwnedBlock(transparency);
    return result;
}

} // namespace

PictureResult NewWhiteMask(u32 width, u32 height, OwnedBlock& mask) {
    const PictureResult result = NewGreyDib(width, height, mask);
    if (result == PictureResult::Ok) {
        const BlockLock lock(mask.Handle());
        DibView view;
        if (!ViewOf(mask, lock, view)) {
            return PictureResult::TooLarge;
        }
        u8* row = lock.Bytes() + view.head;
        for (u32 y = 0; y < height; ++y, row += view.stride) {
            std::fill_n(row, width, u8{255});
        }
    }
    return result;
}

PictureResult ReadLayer(const char* path, OwnedBlock& image, OwnedBlock& mask) {
    OwnedBlock picture;
    OwnedBlock alpha;
    PictureResult result = ReadBoth(path, picture, alpha);
    if (result != PictureResult::Ok) {
        return result;
    }
    BlockLock lock(picture.Handle());
    DibView view;
    if (!ViewOf(picture, lock, view)) {
        return PictureResult::Damaged;
    }
    if (!alpha) {
        result = NewWhiteMask(static_cast<u32>(view.width), static_cast<u32>(view.height), alpha);
    }
    const bool hasIndices =
        view.imageClass != ImageClass::Grey && view.imageClass != ImageClass::Colour;
    if (result == PictureResult::Ok && hasIndices) {
        result = Convert(picture, HasGreyPalette(view), picture);
    }
    lock.Release();
    if (result == PictureResult::Ok) {
        image = std::move(picture);
        mask = std::move(alpha);
    }
    return result;
}

PictureResult ReadMask(const char* path, OwnedBlock& mask) {
    OwnedBlock picture;
    OwnedBlock alpha;
    PictureResult result = ReadBoth(path, picture, alpha);
    if (result != PictureResult::Ok) {
        return result;
    }
    if (!alpha) {
        result = Convert(picture, true, alpha);
    }
    if (result == PictureResult::Ok) {
        mask = std::move(alpha);
    }
    return result;
}
