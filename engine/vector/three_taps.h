// Weighted sums of three bytes, the outer two of which weigh the same: of the smallest windows.
#pragma once

#include "engine/vector/stores.h"

#include <cstddef>

struct ThreeRows {
    const u8* before;
    const u8* centre;
    const u8* behind;
};

// With weights that add up to 1, a sum is the centre and an outer weight's share of what both
// neighbours differ from it. A row that is its own neighbour differs by nothing.
struct OuterWeight {
    static constexpr i32 kBits = 15;

    i16 value;

    constexpr i32 ShareOf(i32 difference) const {
        return (difference * value + (1 << (kBits - 1))) >> kBits;
    }
};

// `weight` of 1 << bits as an outer weight.
constexpr OuterWeight RoundedOuterWeight(i32 weight, i32 bits) {
    const i32 left = bits - OuterWeight::kBits;
    return {static_cast<i16>((weight + (1 << (left - 1))) >> left)};
}

// Whether the rounded weight gives every share of up to `most` as `weight` itself does.
constexpr bool IsExactUpTo(i32 most, i32 weight, i32 bits) {
    const OuterWeight rounded = RoundedOuterWeight(weight, bits);
    for (i32 difference = -most; difference <= most; ++difference) {
        const i32 share = (difference * weight + (1 << (bits - 1))) >> bits;
        if (rounded.ShareOf(difference) != share) {
            return false;
        }
    }
    return true;
}

// Sums for every i below `count`, rounded to nearest and halves up.
void WeighThreeRows(const ThreeRows& rows, OuterWeight weight, u8* to, std::size_t count,
                    Stores stores);
