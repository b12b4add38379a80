// Pictures made for tests, and a look at the bytes of one.
#pragma once

#include "engine/block.h"
#include "engine/dib_format.h"

#include <array>
#include <vector>

constexpr u32 kFullPalette = ~0u;

struct DibOptions {
    u32 seed = 1;                      // the same seed gives the same bytes
    u32 paletteEntries = kFullPalette; // of palette, 4-bit and 1-bit pictures
    bool randomPadding = false;        // else the rows' padding is zero
};

// A picture of random pixels. A grey one has the grey palette with random reserved bytes; in a
// palette all four bytes of an entry are random. Pixels may be indices beyond a short palette.
// The carried words of the header are random as well.
OwnedBlock MakeDib(ImageClass kind, i32 width, i32 height, DibOptions options = {});

// A picture with all pixels 0, and a palette of zeros, or of the grey ramp for a grey one.
OwnedBlock MakeBlankDib(ImageClass kind, i32 width, i32 height, u32 paletteEntries = kFullPalette);

using Bgr = std::array<u8, 3>;

// Pictures of given pixels, row 0 first; the height follows from their number.
OwnedBlock MakeGreyDib(i32 width, const std::vector<u8>& levels);
OwnedBlock MakeColourDib(i32 width, const std::vector<Bgr>& pixels);

// A block that holds these bytes.
OwnedBlock MakeBlock(const std::vector<u8>& bytes);

// All bytes of a block; none for a block that cannot be locked.
std::vector<u8> BytesOf(u32 block);

// Locks a block and hands its header to `edit`.
template <class Edit>
void EditHeader(DibHandle dib, Edit edit) {
    const BlockLock lock(dib);
    edit(*reinterpret_cast<DibHeader*>(lock.Bytes()));
}

// A copy of a picture, for looking at. `At` gives byte `channel` of a 24-bit pixel, else the
// pixel's index or level.
class DibCopy {
public:
    explicit DibCopy(DibHandle dib);

    // False when the block held no valid picture; then nothing below may be used.
    bool Valid() const { return valid_; }
    const std::vector<u8>& Bytes() const { return bytes_; }
    const DibView& View() const { return view_; }
    DibHeader Header() const;
    u32 At(i32 x, i32 y, u32 channel = 0) const;
    Bgr ColourAt(i32 x, i32 y) const;
    Bgr PaletteAt(u32 index) const;
    // The levels or indices of row y, or its bytes at 24 bits, without padding.
    std::vector<u8> Row(i32 y) const;

    DibCopy(const DibCopy&) = delete;
    DibCopy& operator=(const DibCopy&) = delete;

private:
    std::vector<u8> bytes_;
    DibView view_;
    bool valid_;
};
