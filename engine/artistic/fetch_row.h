// Rows whose pixels come from anywhere in the source.
#pragma once

#include "engine/pixel.h"
#include "engine/vector/row_map.h"

// Writes columns `left` to `right` - 1 of a row of the result, `to` being its first column: the
// pixel at x is the one that lies offsetOf(x) bytes behind the source's first. Columns are asked
// for from left to right.
template <std::size_t bytes, class OffsetOf>
void FetchColumns(const DibView& source, i32 left, i32 right, u8* to, const OffsetOf& offsetOf) {
    constexpr i32 kColumns = 256; // at a time
    std::ptrdiff_t offsets[kColumns];
    for (i32 x = left; x < right;) {
        const i32 count = std::min(kColumns, right - x);
        for (i32 i = 0; i < count; ++i) {
            offsets[i] = static_cast<std::ptrdiff_t>(offsetOf(x + i));
        }
        CopyPixelsAt<bytes>(source.Row(0), offsets, static_cast<std::size_t>(count),
                            to + static_cast<std::size_t>(x) * bytes);
        x += count;
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
