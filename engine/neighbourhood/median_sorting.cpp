// Medians of small windows by sorting networks: no branch depends on a sample, and every operation
// works on whole vectors of samples.
#include "engine/neighbourhood/median_rows.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/median_sorting.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/neighbourhood/median_columns-inl.h"
#include "engine/neighbourhood/median_walk-inl.h"
#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// The two samples in the middle of a window.
struct Middle {
    Vec low; // the rank-th
    Vec next;
};

// Of the last merge only these two are made; the compiler drops what nobody asks for.
template <std::size_t size>
HWY_INLINE Middle MiddleOf(const ColumnLists<size>& lists, std::size_t i, std::size_t channels) {
    constexpr std::size_t rank = (size * size + 1) / 2;
    constexpr std::size_t first = std::bit_floor(size - 1);
    const auto left = ListOf<first, size>(lists, i, channels);
    const auto right = ListOf<size - first, size>(lists, i + first * channels, channels);
    return {EntryOfBoth<rank - 1>(left, right), EntryOfBoth<rank>(left, right)};
}

template <std::size_t size, std::size_t channels>
void FindSteps(const Lists<size>& columns, std::size_t count, Steps& steps) {
    const ColumnLists<size> lists(columns, channels, count);
    for (std::size_t i = 0; i < count; i += kLanes) {
        const Middle middle = MiddleOf<size>(lists, i, channels);
        Store(middle.low, steps.Low(i));
        Store(LessOne(middle.next), steps.High(i));
    }
    steps.Join(count, channels);
}

template <std::size_t size, std::size_t channels>
void WriteRows(const DibView& source, i32 y, i32 rows, u8* to) {
    const Windows windows(source, size, y);
    Columns<size> columns;
    std::array<Steps, kSortedRows> steps;
    std::array<Walk<channels>, kSortedRows> walks;
    for (std::size_t begin = 0; begin < source.rowBytes; begin += kPiece) {
        const std::size_t count = std::min(kPiece, source.rowBytes - begin);
        MakeColumns<size>(windows, begin, count, columns);
        for (std::size_t row = 0; row < kSortedRows; ++row) {
            FindSteps<size, channels>(columns[row], count, steps[row]);
        }
        WalkRows(steps, count, walks);
        for (i32 row = 0; row < rows; ++row) {
            ForVectors(
                to + static_cast<std::size_t>(row) * source.stride + begin, count, Stores::Cached,
                [](std::size_t, ByteVector tones) { return tones; },
                walks[static_cast<std::size_t>(row)].tones);
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
