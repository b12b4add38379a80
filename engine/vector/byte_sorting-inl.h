// Sorting networks on vectors of bytes, compiled for each instruction set: lists of vectors, entry
// k of a list being the k-th smallest byte of each lane. To be included after <hwy/highway.h>,
// outside of all namespaces.
#if defined(ZQ_BYTE_SORTING_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_BYTE_SORTING_INL_H
#undef ZQ_BYTE_SORTING_INL_H
#else
#define ZQ_BYTE_SORTING_INL_H
#endif

#include "engine/vector/bytes-inl.h"

#include <algorithm>
#include <array>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

template <std::size_t count>
using Sorted = std::array<Vec, count>;

// Every second entry, from the first or the second on.
template <std::size_t start, std::size_t count>
HWY_INLINE auto EverySecond(const Sorted<count>& all) {
    Sorted<(count + 1 - start) / 2> half;
    for (std::size_t i = 0; i < half.size(); ++i) {
        half[i] = all[2 * i + start];
    }
    return half;
}

// Batcher's merge of two sorted lists.
template <std::size_t m, std::size_t n>
HWY_INLINE Sorted<m + n> Merge(const Sorted<m>& a, const Sorted<n>& b) {
    if constexpr (m == 0) {
        return b;
    } else if constexpr (n == 0) {
        return a;
    } else if constexpr (m == 1 && n == 1) {
        return {Min(a[0], b[0]), Max(a[0], b[0])};
    } else {
        const auto even = Merge(EverySecond<0>(a), EverySecond<0>(b));
        const auto odd = Merge(EverySecond<1>(a), EverySecond<1>(b));
        Sorted<m + n> merged;
        merged[0] = even[0];
        for (std::size_t i = 1; i + 1 < m + n; i += 2) {
            merged[i] = Min(odd[i / 2], even[i / 2 + 1]);
            merged[i + 1] = Max(odd[i / 2], even[i / 2 + 1]);
        }
        if constexpr ((m + n) % 2 == 0) {
            merged[m + n - 1] = m % 2 == 0 ? odd.back() : even.back();
        }
        return merged;
    }
}

template <std::size_t count>
HWY_INLINE Sorted<count> Sort(const Sorted<count>& all) {
    if constexpr (count < 2) {
        return all;
    } else {
        return Merge(Sort(EverySecond<0>(all)), Sort(EverySecond<1>(all)));
    }
}

// Entry `rank`, counted from 0, of two sorted lists together: the least of the ways to take
// rank + 1 entries from their beginnings, a way being as large as the last entry that it takes.
template <std::size_t rank, std::size_t m, std::size_t n>
HWY_INLINE Vec EntryOfBoth(const Sorted<m>& a, const Sorted<n>& b) {
    constexpr std::size_t taken = rank + 1;
    const auto way = [&](std::size_t fromA) {
        const std::size_t fromB = taken - fromA;
        return fromA == 0   ? b[fromB - 1]
               : fromB == 0 ? a[fromA - 1]
                            : Max(a[fromA - 1], b[fromB - 1]);
    };
    Vec least = way(taken > n ? taken - n : 0);
    for (std::size_t fromA = (taken > n ? taken - n : 0) + 1; fromA <= std::min(m, taken);
         ++fromA) {
        least = Min(least, way(fromA));
    }
    return least;
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
