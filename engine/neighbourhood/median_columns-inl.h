// Sorted lists of the samples in columns of a median's windows, compiled for each instruction set.
// To be included after <hwy/highway.h>, outside of all namespaces.
//
// The samples that the windows of two rows share in a column are sorted first, then the one that
// only one of them has is added. Columns are merged to pairs, pairs to fours; a list that several
// windows need is made once.
#if defined(ZQ_MEDIAN_COLUMNS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_COLUMNS_INL_H
#undef ZQ_MEDIAN_COLUMNS_INL_H
#else
#define ZQ_MEDIAN_COLUMNS_INL_H
#endif

#include "engine/neighbourhood/median_rows.h"
#include "engine/vector/byte_sorting-inl.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// Rows are worked on in pieces of so many samples, so that all lists stay in the nearest cache.
inline constexpr std::size_t kPiece = 1152;
inline constexpr std::size_t kAlignment = 64;
inline constexpr std::size_t kRoom = kPiece + 128; // windows reach over the end, and so do vectors

// A sorted list for each sample of a piece.
template <std::size_t count>
struct Lists {
    alignas(kAlignment) u8 entries[count][kRoom];

    HWY_INLINE Sorted<count> At(std::size_t i) const {
        Sorted<count> list;
        for (std::size_t k = 0; k < count; ++k) {
            list[k] = Load(entries[k] + i);
        }
        return list;
    }
    HWY_INLINE void Put(std::size_t i, const Sorted<count>& list) {
        for (std::size_t k = 0; k < count; ++k) {
            Store(list[k], entries[k] + i);
        }
    }
};

// The rows of the windows of kSortedRows rows, and which samples of them a piece needs.
struct Windows {
    std::array<const u8*, kLargestSortedSize + kSortedRows - 1> rows;
    std::size_t rowBytes;
    std::size_t channels;
    std::size_t half; // columns left of the middle one

    Windows(const DibView& source, i32 size, i32 y)
        : rows{}, rowBytes(source.rowBytes), channels(source.bits / 8),
          half(static_cast<std::size_t>(size / 2)) {
        i64 from = i64{y} - size / 2;
        for (const u8*& row : rows) {
            row = source.Row(static_cast<i32>(std::clamp<i64>(from++, 0, source.height - 1)));
        }
    }
};

HWY_INLINE Vec LoadAtMost(const u8* from, std::size_t count) {
    if (count >= kLanes) {
        return Load(from);
    }
    u8 rest[kLanes] = {};
    std::memcpy(rest, from, count);
    return Load(rest);
}

// The lists of single columns; list 0 is that of the sample `half` columns in front of `begin`.
template <std::size_t size>
using Columns = std::array<Lists<size>, kSortedRows>;

// Samples `first` and on of the picture, to list `at` and on.
template <std::size_t size>
void SortColumns(const Windows& windows, std::size_t first, std::size_t count, std::size_t at,
                 Columns<size>& columns) {
    static_assert(kSortedRows == 2);
    for (std::size_t i = 0; i < count; i += kLanes) {
        const auto sample = [&](std::size_t row) {
            return LoadAtMost(windows.rows[row] + first + i, count - i);
        };
        Sorted<size - 1> shared;
        for (std::size_t k = 0; k < size - 1; ++k) {
            shared[k] = sample(k + 1);
        }
        shared = Sort(shared);
        columns[0].Put(at + i, Merge(shared, Sorted<1>{sample(0)}));
        columns[1].Put(at + i, Merge(shared, Sorted<1>{sample(size)}));
    }
}

template <std::size_t size>
void MakeColumns(const Windows& windows, std::size_t begin, std::size_t count,
                 Columns<size>& columns) {
    const std::size_t margin = windows.half * windows.channels;
    const std::size_t left = margin - std::min(margin, begin); // lists outside the picture
    const std::size_t first = begin + left - margin;
    const std::size_t end = count + (size - 1) * windows.channels;
    const std::size_t inside = std::min(end - left, windows.rowBytes - first);
    SortColumns<size>(windows, first, inside, left, columns);
    for (Lists<size>& lists : columns) {
        for (u8* entries : lists.entries) {
            for (std::size_t i = left; i-- > 0;) {
                entries[i] = entries[i + windows.channels];
            }
            for (std::size_t i = left + inside; i < end; ++i) {
                entries[i] = entries[i - windows.channels];
            }
        }
    }
}

// The lists of one column, of two side by side and so on, up to the widest that windows of `size`
// use more than once.
template <std::size_t size, std::size_t columns = std::bit_floor(size / 2)>
struct ColumnLists {
    using Narrower = ColumnLists<size, columns / 2>;
    const Narrower narrower;
    Lists<size * columns> lists;

    HWY_INLINE ColumnLists(const Lists<size>& single, std::size_t channels, std::size_t count)
        : narrower(single, channels, count) {
        const std::size_t end = count + (size - columns) * channels;
        for (std::size_t i = 0; i < end; i += kLanes) {
            lists.Put(i, Merge(narrower.template At<columns / 2>(i),
                               narrower.template At<columns / 2>(i + columns / 2 * channels)));
        }
    }
    template <std::size_t wanted>
    HWY_INLINE Sorted<size * wanted> At(std::size_t i) const {
        if constexpr (wanted == columns) {
            return lists.At(i);
        } else {
            return narrower.template At<wanted>(i);
        }
    }
};
template <std::size_t size>
struct ColumnLists<size, 1> {
    const Lists<size>& lists;

    HWY_INLINE ColumnLists(const Lists<size>& single, std::size_t, std::size_t) : lists(single) {}
    template <std::size_t wanted>
    HWY_INLINE Sorted<size> At(std::size_t i) const {
        return lists.At(i);
    }
};

// The list of `columns` columns from list i on.
template <std::size_t columns, std::size_t size>
HWY_INLINE Sorted<size * columns> ListOf(const ColumnLists<size>& all, std::size_t i,
                                         std::size_t channels) {
    if constexpr (columns <= std::bit_floor(size / 2)) {
        return all.template At<columns>(i);
    } else {
        constexpr std::size_t first = std::bit_floor(columns - 1);
        return Merge(ListOf<first, size>(all, i, channels),
                     ListOf<columns - first, size>(all, i + first * channels, channels));
    }
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
