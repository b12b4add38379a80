// The runs of pixels that the motion blur averages.
#pragma once

#include "engine/frame.h"

#include <array>

constexpr i32 kLongestRun = 32;

// From each pixel of a run to the next.
struct Step {
    i32 x;
    i32 y;
};

// Divides the sum of a run by its length, truncating. The factor is too large by 1 at most, and the
// quotient by 32 * 255 / 2^18, which is below 1 / 32: it never reaches the next whole number.
constexpr u32 kMeanBits = 18;
constexpr auto kMeanFactors = [] {
    std::array<u32, kLongestRun + 1> factors{};
    for (u32 count = 1; count < factors.size(); ++count) {
        factors[count] = (1u << kMeanBits) / count + 1;
    }
    return factors;
}();

inline u8 MeanOfRun(u32 sum, i32 count) {
    return static_cast<u8>(sum * kMeanFactors[static_cast<std::size_t>(count)] >> kMeanBits);
}

// The rows in the order in which a run meets them.
class WalkedRows {
public:
    WalkedRows(const KernelRun& run, i32 stepY) : run_(run), downward_(stepY < 0) {}

    const u8* From(i32 index) const { return run_.source.Row(RowAt(index)); }
    u8* To(i32 index) const { return run_.ResultRow(RowAt(index)); }

private:
    i32 RowAt(i32 index) const { return downward_ ? run_.source.height - 1 - index : index; }

    const KernelRun& run_;
    const bool downward_;
};
