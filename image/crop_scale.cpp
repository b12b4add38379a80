// Point sampling with a two by two neighbourhood: positions start at the region's corner, not at
// pixel centres, so that a region of the target's size is copied exactly. Shrinking reads four
// source pixels for a target pixel and leaves out the rest.
#include "image/crop_scale.h"

#include "engine/block.h"
#include "engine/dib_format.h"
#include "engine/engine.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr u32 kWholeWeight = 8;

// Where a target column or row samples the source: between two neighbours, at weights in eighths.
struct Sample {
    std::size_t offset; // of the first neighbour: bytes, or pixels of a 1-bit row
    std::size_t next;   // from there to the second; 0 where the first has all the weight
    u32 weight;         // of the first
    bool inside;        // false: the target stays zero
};

struct Axis {
    i32 start;
    i32 regionLength;
    i32 targetLength;
    i32 sourceLength;
    std::size_t unit; // from one neighbour to the next
};

Sample SampleAt(double position, const Axis& axis) {
    const i64 index = static_cast<i64>(position);
    const i64 last = axis.sourceLength - 1;
    if (index < 0 || index >= last) {
        return {static_cast<std::size_t>(last) * axis.unit, 0, kWholeWeight, index == last};
    }
    const double share = (static_cast<double>(index + 1) - position) * 8.0 + 0.5;
    const u32 weight = std::min(static_cast<u32>(share), kWholeWeight);
    return {static_cast<std::size_t>(index) * axis.unit, weight == kWholeWeight ? 0 : axis.unit,
            weight, true};
}

void FillSamples(const Axis& axis, Sample* samples) {
    const double step = static_cast<double>(axis.regionLength) / axis.targetLength;
    double position = axis.start;
    for (i32 i = 0; i < axis.targetLength; ++i) {
        samples[i] = SampleAt(position, axis);
        position += step;
    }
}

// The target's columns that sample the source; positions grow, so they have no gap.
struct Columns {
    const Sample* samples;
    std::size_t begin;
    std::size_t end;
    bool adjacent; // one source column for each target column
};

Columns ColumnsInside(const Axis& axis, const Sample* samples) {
    const Sample* const end = samples + axis.targetLength;
    const auto isInside = [](const Sample& sample) { return sample.inside; };
    const Sample* const first = std::find_if(samples, end, isInside);
    const Sample* const beyond = std::find_if_not(first, end, isInside);
    return {samples, static_cast<std::size_t>(first - samples),
            static_cast<std::size_t>(beyond - samples), axis.regionLength == axis.targetLength};
}

template <std::size_t BytesPerPixel>
void MixRow(const Columns& columns, const u8* from, const Sample& row, u8* to) {
    const u8* const first = from;
    const u8* const second = from + row.next;
    const u32 upper = row.weight;
    const u32 lower = kWholeWeight - upper;
    u8* out = to + columns.begin * BytesPerPixel;
    for (std::size_t i = columns.begin; i < columns.end; ++i) {
        const Sample column = columns.samples[i];
        const u32 left = column.weight;
        const u32 right = kWholeWeight - left;
        const u8* const p = first + column.offset;
        const u8* const q = second + column.offset;
        for (std::size_t channel = 0; channel < BytesPerPixel; ++channel) {
            const u32 sum = upper * (left * p[channel] + right * p[column.next + channel]) +
                            lower * (left * q[channel] + right * q[column.next + channel]);
            *out++ = static_cast<u8>((32 + sum) >> 6);
        }
    }
}

template <std::size_t BytesPerPixel>
void ScaleRow(const Columns& columns, const u8* from, const Sample& row, u8* to) {
    if (columns.begin == columns.end) {
        return;
    }
    if (columns.adjacent && row.weight == kWholeWeight) {
        std::memcpy(to + columns.begin * BytesPerPixel,
                    from + columns.samples[columns.begin].offset,
                    (columns.end - columns.begin) * BytesPerPixel);
        return;
    }
    MixRow<BytesPerPixel>(columns, from, row, to);
}

void PickBits(const Columns& columns, const u8* from, const Sample&, u8* to) {
    for (std::size_t i = columns.begin; i < columns.end; ++i) {
        const std::size_t n = columns.samples[i].offset;
        if ((from[n / 8] & (0x80u >> n % 8)) != 0) {
            to[i / 8] = static_cast<u8>(to[i / 8] | (0x80u >> i % 8));
        }
    }
}

using RowScaler = void (*)(const Columns& columns, const u8* from, const Sample& row, u8* to);

RowScaler RowScalerFor(u32 bits) {
    switch (bits) {
    case 24:
        return ScaleRow<3>;
    case 8:
        return ScaleRow<1>;
    default:
        return PickBits;
    }
}

struct Target {
    u8* pixels;
    std::size_t stride;
    i32 height;
};

// False when the user stops it.
bool ScaleRows(const DibView& source, const Columns& columns, const Sample* rows,
               const Target& target) {
    const RowScaler scaleRow = RowScalerFor(source.bits);
    const u8* const pixels = source.Row(0);
    // Its answer is ignored: the question clears a press of Escape from before.
    ShouldAbort();
    for (i32 y = 0; y < target.height; ++y) {
        if (ShouldAbort() != 0) {
            return false;
        }
        if (y % 16 == 0) {
            ReportProgress(static_cast<i32>(i64{y} * 100 / target.height));
        }
        if (rows[y].inside) {
            scaleRow(columns, pixels + rows[y].offset, rows[y],
                     target.pixels + static_cast<std::size_t>(y) * target.stride);
        }
    }
    return true;
}

void CopyHead(const DibView& source, i32 targetWidth, i32 targetHeight, u64 pixelBytes, u8* block) {
    std::memcpy(block, source.block, source.head);
    auto& header = *reinterpret_cast<DibHeader*>(block);
    header.biWidth = targetWidth;
    header.biHeight = targetHeight;
    header.biSizeImage = static_cast<u32>(pixelBytes);
}

} // namespace

DibHandle CropAndScaleDib(DibHandle source, i32 x, i32 y, i32 regionWidth, i32 regionHeight,
                          i32 targetWidth, i32 targetHeight) {
    if (targetWidth < 1 || targetHeight < 1 || regionWidth < 1 || regionHeight < 1) {
        return 0;
    }
    BlockLock sourceLock(source);
    DibView view;
    if (!ViewDib(sourceLock.Bytes(), BlockSize(source), view) ||
        view.imageClass == ImageClass::Palette4) {
        return 0;
    }
    const u64 targetStride = RowStride(static_cast<u32>(targetWidth), view.bits);
    const u64 pixelBytes = targetStride * static_cast<u64>(targetHeight);
    OwnedBlock result(AllocateBlock(view.head + pixelBytes));
    bool finished = true;
    {
        const BlockLock resultLock(result.Handle());
        if (!resultLock) {
            return 0;
        }
        CopyHead(view, targetWidth, targetHeight, pixelBytes, resultLock.Bytes());
        // The levels between two palette indices mean nothing: such a picture is not scaled.
        if (view.imageClass != ImageClass::Palette8) {
            const BlockTable<Sample> columns(static_cast<u64>(targetWidth));
            const BlockTable<Sample> rows(static_cast<u64>(targetHeight));
            if (!columns || !rows) {
                return 0;
            }
            const std::size_t columnUnit = view.bits == 24 ? 3 : 1;
            const Axis across = {x, regionWidth, targetWidth, view.width, columnUnit};
            const Axis up = {y, regionHeight, targetHeight, view.height, view.stride};
            FillSamples(across, columns.Entries());
            FillSamples(up, rows.Entries());
            finished = ScaleRows(view, ColumnsInside(across, columns.Entries()), rows.Entries(),
                                 {resultLock.Bytes() + view.head,
                                  static_cast<std::size_t>(targetStride), targetHeight});
        }
    }
    sourceLock.Release();
    if (!finished) {
        result = OwnedBlock();
    }
    ReportProgress(100);
    return result.HandOver();
}
