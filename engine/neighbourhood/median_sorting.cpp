// Medians of small windows by sorting networks: no branch depends on a sample, and every operation
// works on whole vectors of samples.
//
// Columns of the window are sorted first, then merged to pairs of columns, pairs to fours; a
// list that several windows need is made once. Of the last merge only the two samples in the middle
// are made, and the compiler drops what nobody asks for.
#include "engine/neighbourhood/median_rows.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/median_sorting.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/byte_sorting-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// Rows are worked on in pieces of so many samples, so that all lists stay in the nearest cache.
constexpr std::size_t kPiece = 1152;
constexpr std::size_t kReach = 3 * kLargestSortedSize;
constexpr std::size_t kRoom = kPiece + kReach + 64; // vectors may run over a piece's end

// A sorted list for each sample of a piece.
template <std::size_t count>
struct Lists {
    u8 entries[count][kRoom];

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

// Between which tones the walk along a row is held.
struct Bounds {
    u8 low[kRoom];
    u8 high[kRoom];
};

template <std::size_t size>
void FindBounds(const Window& window, std::size_t begin, std::size_t count, Bounds& bounds) {
    constexpr std::size_t rank = (size * size + 1) / 2;
    constexpr std::size_t first = std::bit_floor(size - 1);
    ColumnLists<size> lists;
    lists.Make(window, begin, count);
    for (std::size_t i = 0; i < count; i += kLanes) {
        const auto left = ListOf<first, size>(lists, i, window.channels);
        const auto right =
            ListOf<size - first, size>(lists, i + first * window.channels, window.channels);
        const Vec low = EntryOfBoth<rank - 1>(left, right);
        const Vec next = EntryOfBoth<rank>(left, right);
        Store(low, bounds.low + i);
        Store(Max(low, LessOne(next)), bounds.high + i);
    }
}

// A pixel in the walk of a row. Colour pixels are handled as four bytes, the last of them being the
// next pixel's first, which the next step overwrites.
#if HWY_TARGET == HWY_SCALAR
template <std::size_t bytes>
struct Walk {
    u8 tones[bytes] = {};

    HWY_INLINE void Step(const u8* low, const u8* high, u8* to) {
        for (std::size_t i = 0; i < bytes; ++i) {
            tones[i] = std::max(low[i], std::min(high[i], tones[i]));
        }
        std::memcpy(to, tones, bytes);
    }
};
#else
template <std::size_t bytes>
struct Walk {
    using Block = hn::Full128<u8>; // longer loads cost no more than those of a pixel
    using Pixel = hn::FixedTag<u8, bytes>;
    hn::Vec<Block> tones;

    HWY_INLINE Walk() : tones(hn::Zero(Block())) {}
    HWY_INLINE void Step(const u8* low, const u8* high, u8* to) {
        tones = Max(hn::LoadU(Block(), low), Min(hn::LoadU(Block(), high), tones));
        hn::StoreU(hn::Vec<Pixel>{tones.raw}, Pixel(), to);
    }
};
#endif

template <std::size_t size, std::size_t channels>
void WriteRows(const DibView& source, i32 y, i32 rows, u8* to) {
    Walk<channels == 3 ? 4 : 1> walks[kSortedRows];
    Bounds bounds[kSortedRows] = {};
    u8 tones[kSortedRows][kRoom];
    for (std::size_t begin = 0; begin < source.rowBytes; begin += kPiece) {
        const std::size_t count = std::min(kPiece, source.rowBytes - begin);
        for (i32 row = 0; row < kSortedRows; ++row) {
            FindBounds<size>(Window(source, size, i64{y} + row), begin, count, bounds[row]);
        }
        for (std::size_t i = 0; i < count; i += channels) {
            for (std::size_t row = 0; row < kSortedRows; ++row) {
                walks[row].Step(bounds[row].low + i, bounds[row].high + i, tones[row] + i);
            }
        }
        for (i32 row = 0; row < rows; ++row) {
            std::memcpy(to + static_cast<std::size_t>(row) * source.stride + begin, tones[row],
                        count);
        }
    }
}

template <std::size_t size>
void WriteRowsOfSize(const DibView& source, i32 y, i32 rows, u8* to) {
    return source.bits == 24 ? WriteRows<size, 3>(source, y, rows, to)
                             : WriteRows<size, 1>(source, y, rows, to);
}

} // namespace

void SortMedianRows(const DibView& source, i32 size, i32 y, i32 rows, u8* to) {
    switch (size) {
    case 2:
        return WriteRowsOfSize<2>(source, y, rows, to);
    case 3:
        return WriteRowsOfSize<3>(source, y, rows, to);
    case 4:
        return WriteRowsOfSize<4>(source, y, rows, to);
    default:
        return WriteRowsOfSize<5>(source, y, rows, to);
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(SortMedianRows);

void SortMedianRows(const DibView& source, i32 size, i32 y, i32 rows, u8* to) {
    HWY_DYNAMIC_DISPATCH(SortMedianRows)(source, size, y, rows, to);
}

#endif
