// Brightens, saturates and sharpens a picture at one stroke.
//
// It works outside the frame of the other kernels: nothing is asked or reported, the cursor stays,
// and what stands between and behind the rows comes along. 8-bit pictures are taken with any
// palette, and their bytes treated as tones. The intensity is not checked: a value out of the
// dialog's range gives an odd picture, whose tables keep the low bytes of what does not fit.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/enhance_rows.h"
#include "engine/pixel.h"
#include "engine/row_table.h"
#include "engine/vector/map_bytes.h"
#include "platform/base/unfilled_block.h"

#include <cmath>

namespace {

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

// The same as SharpenRow with any boost, by what it adds for a difference of -2040 to 2040.
class WildSharpening {
public:
    explicit WildSharpening(i64 boost) {
        for (std::size_t i = 0; i < gain_.size(); ++i) {
            gain_[i] = static_cast<i32>((static_cast<i64>(i) - kReach) * boost / 800);
        }
    }

    void SharpenRow(const u8* below, const u8* here, const u8* above, std::size_t step, u8* to,
                    std::size_t count) const {
        for (std::size_t left = 0; left < count; ++left) {
            const std::size_t i = left + step;
            const std::size_t right = i + step;
            const i32 sum = below[left] + below[i] + below[right] + here[left] + here[i] +
                            here[right] + above[left] + above[i] + above[right];
            const auto entry = static_cast<std::size_t>(9 * here[i] - sum + kReach);
            to[left] = ClampToByte(i64{here[i]} + gain_[entry]);
        }
    }

private:
    static constexpr i32 kReach = 8 * 255;
    std::array<i32, 2 * kReach + 1> gain_;
};

// Curve and saturation for one row after the other.
class Toning {
public:
    Toning(const DibView& picture, i32 intensity, i32 boost)
        : curve_(ToneCurve(intensity)), saturation_(SaturationTable(boost)),
          saturates_(picture.bits == 24 && boost != 0), bytes_(picture.rowBytes),
          distances_(1, bytes_) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(distances_); }

    // `to` may be read two bytes beyond both ends.
    void ToneRow(const u8* from, u8* to) const {
        MapBytes(from, to, bytes_, curve_);
        if (saturates_) {
            u8* distances = distances_.Row(0);
            FindDistances(to, distances, bytes_);
            MapBytes(distances, distances, bytes_, saturation_);
            Lower(distances, to, bytes_);
        }
    }

private:
    const ByteTable curve_;
    const ByteTable saturation_;
    const bool saturates_;
    const std::size_t bytes_;
    const RowTable<u8> distances_;
};

// Three toned rows, each with a pixel more at both ends.
class TonedRows {
public:
    explicit TonedRows(const DibView& picture)
        : bytes_(picture.rowBytes), pixel_(PixelBytes(picture)), rows_(3, bytes_ + 2 * pixel_) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }

    u8* Extended(i32 y) const { return rows_.Row(static_cast<std::size_t>(y % 3)); }
    u8* Pixels(i32 y) const { return Extended(y) + pixel_; }

    // Repeats the ends.
    void Extend(i32 y) const {
        std::memcpy(Extended(y), Pixels(y), pixel_);
        std::memcpy(Pixels(y) + bytes_, Pixels(y) + bytes_ - pixel_, pixel_);
    }

private:
    const std::size_t bytes_;
    const std::size_t pixel_;
    const RowTable<u8> rows_;
};

void Tone(const DibView& source, const Toning& toning, const TonedRows& rows, u8* to) {
    for (i32 y = 0; y < source.height; ++y, to += source.stride) {
        toning.ToneRow(source.Row(y), rows.Pixels(y));
        std::memcpy(to, rows.Pixels(y), source.rowBytes);
    }
}

// Beyond the lower and upper edge the edge row stands again.
void ToneAndSharpen(const DibView& source, const Toning& toning, const TonedRows& rows, i32 boost,
                    u8* to) {
    const bool wild = boost < 0 || boost > kLargestSharpening;
    const WildSharpening wildSharpening(wild ? boost : 0);
    const std::size_t step = PixelBytes(source);
    const i32 top = source.height - 1;
    for (i32 y = -1; y <= top; ++y) {
        if (y < top) {
            toning.ToneRow(source.Row(y + 1), rows.Pixels(y + 1));
            rows.Extend(y + 1);
        }
        if (y < 0) {
            continue;
        }
        const u8* below = rows.Extended(std::max(y - 1, 0));
        const u8* here = rows.Extended(y);
        const u8* above = rows.Extended(std::min(y + 1, top));
        if (wild) {
            wildSharpening.SharpenRow(below, here, above, step, to, source.rowBytes);
        } else {
            SharpenRow(below, here, above, step, boost, to, source.rowBytes);
        }
        to += source.stride;
    }
}

void CopyBetweenRows(const DibView& source, u8* to) {
    const std::size_t gap = source.stride - source.rowBytes;
    for (i32 y = 0; gap != 0 && y < source.height; ++y, to += source.stride) {
        std::memcpy(to + source.rowBytes, source.Row(y) + source.rowBytes, gap);
    }
}

} // namespace

DibHandle AutoEnhance(DibHandle source, i32 intensity) {
    const BlockLock sourceLock(source);
    const std::size_t size = BlockSize(source);
    DibView picture;
    if (!sourceLock || !ViewDib(sourceLock.Bytes(), size, picture) ||
        (picture.bits != 24 && picture.bits != 8)) {
        return 0;
    }
    const i32 boost = intensity / 5;
    const Toning toning(picture, intensity, boost);
    const TonedRows rows(picture);
    OwnedBlock result(ZqHandleOfBlock(AllocateUnfilled(size)));
    BlockLock lock(result.Handle());
    if (!toning || !rows || !lock) {
        return 0;
    }
    std::memcpy(lock.Bytes(), picture.block, picture.head);
    std::memcpy(lock.Bytes() + picture.size, picture.block + picture.size, size - picture.size);
    u8* to = lock.Bytes() + picture.head;
    if (boost == 0 || picture.width < 3 || picture.height < 3) {
        Tone(picture, toning, rows, to);
    } else {
        ToneAndSharpen(picture, toning, rows, boost, to);
    }
    CopyBetweenRows(picture, to);
    lock.Release();
    return result.HandOver();
}
