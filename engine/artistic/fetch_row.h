// Rows whose pixels come from anywhere in the source.
#pragma once

#include "engine/pixel.h"
#include "engine/vector/row_map.h"

// Writes a row of the result: the pixel at x is the one that lies offsetOf(x) bytes behind the
// source's first. Columns are asked for from left to right.
template <std::size_t bytes, class OffsetOf>
void FetchRow(const DibView& source, u8* to, const OffsetOf& offsetOf) {
    constexpr i32 kColumns = 256; // at a time
    std::ptrdiff_t offsets[kColumns];
    for (i32 left = 0; left < source.width; left += kColumns) {
        const i32 count = std::min(kColumns, source.width - left);
        for (i32 i = 0; i < count; ++i) {
            offsets[i] = static_cast<std::ptrdiff_t>(offsetOf(left + i));
        }
        CopyPixelsAt<bytes>(source.Row(0), offsets, static_cast<std::size_t>(count),
                            to + static_cast<std::size_t>(left) * bytes);
    }
}

// The offset of the row at y, or of the nearest one.
inline std::ptrdiff_t NearestRow(const DibView& source, i64 y) {
    return static_cast<std::ptrdiff_t>(std::clamp<i64>(y, 0, source.height - 1)) *
           static_cast<std::ptrdiff_t>(source.stride);
}

// The offset in a row of the column at x, or of the nearest one.
template <std::size_t bytes>
std::ptrdiff_t NearestColumn(const DibView& source, i64 x) {
    return static_cast<std::ptrdiff_t>(std::clamp<i64>(x, 0, source.width - 1)) *
           static_cast<std::ptrdiff_t>(bytes);
}
