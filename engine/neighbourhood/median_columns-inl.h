// Sorted lists of the samples in columns of a median's windows, compiled for each instruction set.
// To be included after <hwy/highway.h>, outside of all namespaces.
//
// Columns of the window are sorted first, then merged to pairs of columns, pairs to fours; a list
// that several windows need is made once.
#if defined(ZQ_MEDIAN_COLUMNS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_COLUMNS_INL_H
#undef ZQ_MEDIAN_COLUMNS_INL_H
#else
#define ZQ_MEDIAN_COLUMNS_INL_H
#endif

#include "engine/neighbourhood/median_rows.h"
#include "engine/vector/byte_sorting-inl.h"

#include <algorithm>
#include <bit>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// Rows are worked on in pieces of so many samples, so that all lists stay in the nearest cache.
constexpr std::size_t kPiece = 1152;
constexpr std::size_t kAlignment = 64;
constexpr std::size_t kReach = 3 * kLargestSortedSize;
constexpr std::size_t kRoom = kPiece + 128; // for kReach and vectors that run over the end

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

// The rows of a window that do not change along a row, and which samples of them a piece needs.
struct Window {
    const u8* rows[kLargestSortedSize];
    std::size_t rowBytes;
    std::size_t channels;
    std::size_t half; // columns left of the middle one

    Window(const DibView& source, i32 size, i64 y)
        : rows{}, rowBytes(source.rowBytes), channels(source.bits / 8),
          half(static_cast<std::size_t>(size / 2)) {
        for (i32 i = 0; i < size; ++i) {
            const i64 row = std::clamp<i64>(y - size / 2 + i, 0, source.height - 1);
            rows[i] = source.Row(static_cast<i32>(row));
        }
    }
};

// The lists of single columns; list 0 is that of the sample `half` columns in front of `begin`.
template <std::size_t size>
struct Columns {
    Lists<size> lists;

    void Make(const Window& window, std::size_t begin, std::size_t count) {
        const std::size_t margin = window.half * window.channels;
        const std::size_t left = margin - std::min(margin, begin); // lists outside the picture
        const std::size_t first = begin + left - margin;
        const std::size_t end = count + (size - 1) * window.channels;
        const std::size_t inside = std::min(end - left, window.rowBytes - first);
        SortColumns(window, first, inside, left);
        for (u8* entries : lists.entries) {
            for (std::size_t i = left; i-- > 0;) {
                entries[i] = entries[i + window.channels];
            }
            for (std::size_t i = left + inside; i < end; ++i) {
                entries[i] = entries[i - window.channels];
            }
        }
    }

    // Samples `first` and on of the picture, to list `at` and on.
    void SortColumns(const Window& window, std::size_t first, std::size_t count, std::size_t at) {
        Sorted<size> column;
        for (std::size_t i = 0; i < count; i += kLanes) {
            for (std::size_t k = 0; k < size; ++k) {
                column[k] = LoadAtMost(window.rows[k] + first + i, count - i);
            }
            lists.Put(at + i, Sort(column));
        }
    }

    static HWY_INLINE Vec LoadAtMost(const u8* from, std::size_t count) {
        if (count >= kLanes) {
            return Load(from);
        }
        u8 rest[kLanes] = {};
        std::memcpy(rest, from, count);
        return Load(rest);
    }
};

// The lists of one column, of two side by side and so on, up to the widest that windows of `size`
// use more than once.
template <std::size_t size, std::size_t columns = std::bit_floor(size / 2)>
struct ColumnLists : ColumnLists<size, columns / 2> {
    using Narrower = ColumnLists<size, columns / 2>;
    Lists<size * columns> lists;

    void Make(const Window& window, std::size_t begin, std::size_t count) {
        Narrower::Make(window, begin, count);
        const std::size_t end = count + (size - columns) * window.channels;
        for (std::size_t i = 0; i < end; i += kLanes) {
            lists.Put(i, Merge(Narrower::lists.At(i),
                               Narrower::lists.At(i + columns / 2 * window.channels)));
        }
    }
};
template <std::size_t size>
struct ColumnLists<size, 1> : Columns<size> {};

// The list of `columns` columns from list i on.
template <std::size_t columns, std::size_t size>
HWY_INLINE Sorted<size * columns> ListOf(const ColumnLists<size>& all, std::size_t i,
                                         std::size_t channels) {
    if constexpr (columns <= std::bit_floor(size / 2)) {
        return static_cast<const ColumnLists<size, columns>&>(all).lists.At(i);
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
