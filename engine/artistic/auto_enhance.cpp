// Brightens, saturates and sharpens a picture at one stroke.
//
// It works in place on a copy of the whole block, outside the frame of the other kernels: nothing
// is asked or reported and the cursor stays. 8-bit pictures are taken with any palette, and their
// bytes treated as tones. The intensity is not checked: a value out of the dialog's range gives an
// odd picture, whose tables keep the low bytes of what does not fit.
#include "engine/artistic/artistic_kernels.h"
#include "engine/block_copy.h"
#include "engine/pixel.h"

#include <cmath>

namespace {

using ByteTable = std::array<u8, 256>;

// Everything up to lowCut becomes black, everything from highCut on white; between them the curve
// is that of the full range, so that it leaves black with a jump.
ByteTable ToneCurve(i32 intensity) {
    const i32 highCut = 255 - intensity / 5;
    const i32 lowCut = intensity / 25;
    const double exponent = (1.0 - lowCut * 0.06) * (1000.0 - intensity) * 0.001;
    ByteTable curve;
    for (i32 i = 0; i < 256; ++i) {
        i32 tone = 255;
        if (i <= lowCut) {
            tone = 0;
        } else if (i < highCut) {
            tone = static_cast<i32>(std::pow(static_cast<double>(i) / highCut, exponent) * 255.0 +
                                    0.5);
        }
        curve[static_cast<std::size_t>(i)] = static_cast<u8>(tone);
    }
    return curve;
}

// How far a channel moves away from the strongest one, by its distance from it.
ByteTable SaturationTable(i64 boost) {
    ByteTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<u8>((50 + static_cast<i64>(i) * boost) / 100);
    }
    return table;
}

void Saturate(u8* pixel, const ByteTable& table) {
    const u8 strongest = std::max({pixel[0], pixel[1], pixel[2]});
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const i32 tone = pixel[channel];
        pixel[channel] = ClampToByte(tone - table[static_cast<std::size_t>(strongest - tone)]);
    }
}

// What the sharpening adds for a difference of -2040 to 2040 between eight times a sample and the
// sum of its neighbours.
class SharpenTable {
public:
    explicit SharpenTable(i64 boost) {
        for (std::size_t i = 0; i < gain_.size(); ++i) {
            gain_[i] = static_cast<i32>((static_cast<i64>(i) - kReach) * boost / 800);
        }
    }

    u8 Sharpen(u8 sample, i32 difference) const {
        return ClampToByte(i64{sample} + gain_[static_cast<std::size_t>(difference + kReach)]);
    }

private:
    static constexpr i32 kReach = 8 * 255;
    std::array<i32, 2 * kReach + 1> gain_;
};

// Three rows as they were before the sharpening; outside the picture stands the nearest pixel.
template <std::size_t bytes>
void SharpenRow(u8* to, const u8* below, const u8* here, const u8* above, std::size_t rowBytes,
                const SharpenTable& table) {
    const auto sharpen = [&](std::size_t left, std::size_t i, std::size_t right) {
        const i32 sum = below[left] + below[i] + below[right] + here[left] + here[right] +
                        above[left] + above[i] + above[right];
        to[i] = table.Sharpen(here[i], 8 * here[i] - sum);
    };
    const std::size_t last = rowBytes - bytes;
    for (std::size_t i = 0; i < bytes; ++i) {
        sharpen(i, i, i + bytes);
    }
    for (std::size_t i = bytes; i < last; ++i) {
        sharpen(i - bytes, i, i + bytes);
    }
    for (std::size_t i = last; i < rowBytes; ++i) {
        sharpen(i - bytes, i, i);
    }
}

// False when memory was short. Two rows are kept as they were; the next one is still untouched.
bool SharpenPicture(const DibView& picture, u8* pixels, i32 boost) {
    const std::size_t rowBytes = picture.rowBytes;
    const BlockTable<u8> keptRows(u64{2} * rowBytes);
    if (!keptRows) {
        return false;
    }
    u8* below = keptRows.Entries();
    u8* here = below + rowBytes;
    const SharpenTable table(boost);
    std::memcpy(below, pixels, rowBytes);
    for (i32 y = 0; y < picture.height; ++y, pixels += picture.stride) {
        std::memcpy(here, pixels, rowBytes);
        const u8* above = y + 1 < picture.height ? pixels + picture.stride : here;
        WithPixelBytes(picture, [&](auto bytes) {
            SharpenRow<bytes>(pixels, below, here, above, rowBytes, table);
        });
        std::swap(below, here);
    }
    return true;
}

void MapTones(const DibView& picture, u8* pixels, i32 intensity, i32 boost) {
    const ByteTable curve = ToneCurve(intensity);
    const ByteTable saturation = SaturationTable(boost);
    const bool saturates = picture.bits == 24 && boost != 0;
    for (i32 y = 0; y < picture.height; ++y, pixels += picture.stride) {
        for (std::size_t i = 0; i < picture.rowBytes; ++i) {
            pixels[i] = curve[pixels[i]];
        }
        for (std::size_t i = 0; saturates && i < picture.rowBytes; i += 3) {
            Saturate(pixels + i, saturation);
        }
    }
}

} // namespace

DibHandle AutoEnhance(DibHandle source, i32 intensity) {
    OwnedBlock copy = CopyBlock(source);
    BlockLock lock(copy.Handle());
    DibView picture;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(copy.Handle()), picture) ||
        (picture.bits != 24 && picture.bits != 8)) {
        return 0;
    }
    u8* pixels = lock.Bytes() + picture.head;
    const i32 boost = intensity / 5;
    MapTones(picture, pixels, intensity, boost);
    if (boost != 0 && picture.width >= 3 && picture.height >= 3 &&
        !SharpenPicture(picture, pixels, boost)) {
        return 0;
    }
    lock.Release();
    return copy.HandOver();
}
